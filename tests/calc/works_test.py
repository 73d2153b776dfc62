"""Quotes that come into a document of LibreOffice while that saves, sorts and calculates for long."""

import os
import pathlib
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor

import replays
from office import EndsWell, Office, await_note, be_asked, build_tables, macros, notes_in
from support import BUILD, StandIn, run

SECONDS = 100  # of the day that is replayed
SPEED = 10
A_SECOND = 6  # quotes of each ticker
TICKERS = ("MSFT", "IBM")
WORKS = ("saving ods", "sorting", "calculating", "saving xlsx")
CAPTIONS = 2  # rows of a history above its quotes


def write_day(file):
    """Quotes no two of which are alike. The last ones, by their tickers."""
    rows = []
    last = {}
    for number in range(SECONDS * A_SECOND):
        second = number // A_SECOND
        for place, ticker in enumerate(TICKERS):
            last[ticker] = f"{100 * (place + 1) + number % 97 / 8:g} {number + 1}"
            price = last[ticker].split()[0]
            time = f"09:{second // 60:02}:{second % 60:02}"
            rows.append(replays.row(ticker, time, price, number + 1))
    replays.write(file, rows)
    return last


class Works(EndsWell, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        cls.folder = folder = pathlib.Path(home.name)
        cls.environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_FOLDER": home.name}
        environment = {**cls.environment, "MIRELO_LAST_VOLUME": str(SECONDS * A_SECOND)}
        cls.last = write_day(folder / "day.csv")
        with StandIn(BUILD / "bin") as tracker:
            be_asked(tracker, environment)
            wishes = ["--history", "Last,Volume", "--set", "RowsLimit=0"]
            build_tables(folder / "quotes.xlsx", environment, *wishes, columns="Ticker,Last,Volume")
        office = Office(folder, environment)
        office.install()
        office.add_macros(Tests=macros("Works"))
        replay = ["--replay", folder / "day.csv", "--speed", str(SPEED), "--rate", "1000", "--kinds", "L1"]
        with ThreadPoolExecutor(1) as pool:
            running = pool.submit(office.run, "Tests.Works.Main")
            await_note(folder, "opened", running)  # what is due before the day begins does not come
            with StandIn(BUILD / "bin", *replay, ports=tracker.ports):
                (folder / "begin").touch()
                cls.code = running.result()
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_come_while_the_office_works(self):
        for work in WORKS:
            print(f"{work}: {self.notes[f'seconds of {work}']} s, quotes: {self.notes[f'comes behind {work}']}")
        self.assertEqual(self.notes[f"comes behind {WORKS[0]}"], "True")  # the others may take longer than the day

    def test_stand_in_the_table_as_the_last_ones_say(self):
        for ticker, last in self.last.items():
            self.assertEqual(self.notes[f"table of {ticker}"], last)

    def test_are_all_in_the_histories(self):
        rows = 0
        for ticker, last in self.last.items():
            self.assertEqual(self.notes[f"history of {ticker}"], last)
            rows += int(self.notes[f"rows of {ticker}"]) - CAPTIONS
        self.assertEqual(rows, int(self.notes["quotes"]))

    def test_leave_the_persons_steps(self):
        self.assertEqual(self.notes["steps"], "Sort")
        self.assertEqual(self.notes["behind a step back"], f"1 {self.last['MSFT']}")

    def test_leave_whole_files_behind(self):
        for kind in ("ods", "xlsx"):
            self.assertGreater((self.folder / f"saved.{kind}").stat().st_size, 0)
        shown = run(BUILD / "bin" / "mirelo", "show", self.folder / "saved.xlsx", "Quotes_Vertical(MSFT)", env=self.environment)
        self.assertGreater(len(shown.splitlines()), 20)


if __name__ == "__main__":
    unittest.main()
