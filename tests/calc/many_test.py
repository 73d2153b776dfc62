"""A day of many quotes in an open document of LibreOffice, as fast as they are read."""

import os
import pathlib
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor

import replays
from office import EndsWell, Office, await_note, be_asked, build_tables, macros, notes_in
from support import BUILD, StandIn

QUOTES = 100_000
TICKERS = ("MSFT", "IBM")
UNTIL_THEY_COME = 10  # seconds for the day to begin in

# KB, from the first tenth of the quotes to the last: with some 2000 of them it grows by the number of writes, which take
# many quotes each here. A quote that was kept would take several hundred bytes, and 80 of each are more than this.
MOST_GROWTH = 7000


def write_day(file):
    """The first quotes are due at once, and all others together. The last ones, by their tickers."""
    rows = []
    last = {}
    for quote in range(QUOTES):
        ticker = TICKERS[quote % len(TICKERS)]
        second = 0 if quote < len(TICKERS) else UNTIL_THEY_COME
        last[ticker] = f"{ticker} {10 + quote % 997 / 8:g} {quote + 1}"
        price = last[ticker].split()[1]
        rows.append(replays.row(ticker, f"09:00:{second:02}", price, quote + 1))
    replays.write(file, rows)
    return last


class Many(EndsWell, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_FOLDER": home.name, "MIRELO_QUOTES": str(QUOTES)}
        cls.last = write_day(folder / "day.csv")
        with StandIn(BUILD / "bin") as tracker:
            be_asked(tracker, environment)
            build_tables(folder / "quotes.xlsx", environment, "--history", "Last,Volume", columns="Ticker,Last,Volume")
        office = Office(folder, environment)
        office.install()
        office.add_macros(Tests=macros("Many"))
        replay = ["--replay", folder / "day.csv", "--rate", "max", "--kinds", "L1", "--count-quotes"]
        with ThreadPoolExecutor(1) as pool:
            running = pool.submit(office.run, "Tests.Many.Main")
            await_note(folder, "opened", running)  # what is due before the day begins does not come
            with StandIn(BUILD / "bin", *replay, ports=tracker.ports) as replayed:
                (folder / "begin").touch()
                cls.code = running.result()
                replayed.process.terminate()
                cls.streamed = replayed.process.stdout.read()
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_counts_all_quotes(self):
        self.assertEqual(self.notes["quotes"], str(QUOTES))
        self.assertEqual(self.streamed, f"quotes streamed {QUOTES}\n")

    def test_ends_with_the_last_quotes_in_table_and_histories(self):
        for ticker, last in self.last.items():
            self.assertEqual(self.notes[f"table of {ticker}"], last)
            self.assertEqual(self.notes[f"history of {ticker}"], last)

    def test_keeps_nothing_of_the_quotes_that_are_written(self):
        growth = int(self.notes["memory in the end"]) - int(self.notes["memory early"])
        print(f"memory grew by {growth} KB, from {self.notes['memory early']}")
        self.assertLess(growth, MOST_GROWTH, self.notes)


if __name__ == "__main__":
    unittest.main()
