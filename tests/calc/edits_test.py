"""A day in an open document of LibreOffice whose tables are moved, sorted, merged, filtered and hidden meanwhile."""

import os
import pathlib
import tempfile
import unittest

import replays
from office import EndsWell, Office, be_asked, build_tables, macros, notes_in
from support import BUILD, StandIn

SECONDS = 4000
SPEED = 20
STEPS = "Show Sheet, Hide sheet, Filter, Filter, Copy, Delete, Split, Merge, Delete, Delete, Insert, Rename Sheet"
ALL = sorted(f"{ticker}.{caption}" for ticker in ("MSFT", "IBM") for caption in ("Last", "Bid", "Ask"))


def write_day(file):
    """Quotes whose whole parts say whose prices they are."""
    rows = []
    for second in range(SECONDS):
        cents = second % 97 / 100
        time = f"{9 + second // 3600:02}:{second // 60 % 60:02}:{second % 60:02}"
        for ticker, base in (("MSFT", 0), ("IBM", 100)):
            last, bid, ask = (f"{base + whole + cents:.2f}" for whole in (10, 20, 30))
            rows.append(replays.row(ticker, time, last, second + 1, bid, ask))
    replays.write(file, rows)


class Edits(EndsWell, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_FOLDER": home.name}
        write_day(folder / "day.csv")
        office = Office(folder, environment)
        office.install()
        office.add_macros(Tests=macros("Edits"))
        with StandIn(BUILD / "bin", "--replay", folder / "day.csv", "--speed", str(SPEED), "--rate", "40", "--kinds", "L1") as tracker:
            be_asked(tracker, environment)
            wishes = ["--history", "Last,Bid,Ask", "--charts", "--set", "RowsLimit=0"]
            build_tables(folder / "quotes.xlsx", environment, *wishes, columns="Ticker,Last,Bid,Ask")
            cls.code = office.run("Tests.Edits.Main")
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_fills_its_cells_wherever_they_are(self):
        for where in (
            "at first",
            "below inserted rows",
            "beside an inserted column",
            "in sorted rows",
            "behind undoing all that",
            "above a deleted row",
            "in merged cells",
            "in cells taken apart",
            "in emptied cells",
            "in cells that were pasted over",
            "in rows that are filtered away",
            "on a hidden sheet",
            "below frozen rows",
            "behind twenty steps back",
            "behind saving as another kind",
        ):
            self.assertEqual(sorted(self.notes[where].split()), ALL, where)
        self.assertEqual(self.notes["filtered away"], "False")

    def test_leaves_alone_what_is_the_persons_own(self):
        self.assertEqual(self.notes["my note"], "my note")
        self.assertEqual(sorted(self.notes["without a deleted column"].split()), ["IBM.Last", "MSFT.Last"])
        self.assertEqual(self.notes["my numbers"], "7 8")
        self.assertEqual(self.notes["without a ticker"], "MSFT.Last")

    def test_adds_to_histories_at_their_foot(self):
        for which in ("renamed history", "history below a row", "history without two rows", "history without a field"):
            self.assertEqual(self.notes[f"in a {which}"], "grows")

    def test_has_charts_follow_where_nobody_sees_them(self):
        self.assertRegex(self.notes["cells of charts"], r"Quotes_Vertical\(IBM\)'?\.\$A\$\d+:\$A\$\d+")
        self.assertEqual(self.notes["charts of a hidden history"], "True")
        self.assertEqual(self.notes["charts of a history that is seen again"], "True")

    def test_takes_back_the_persons_steps_alone(self):
        self.assertEqual(self.notes["steps taken back"], "9 0")
        self.assertEqual(self.notes["steps"], STEPS)


if __name__ == "__main__":
    unittest.main()
