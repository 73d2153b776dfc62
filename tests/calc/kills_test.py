"""Days in an open document of LibreOffice in the middle of which the stand-in, or the office, is killed."""

import os
import pathlib
import signal
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor

from office import Office, await_note, be_asked, build_tables, macros, notes_in
from support import BUILD, StandIn, run


class Kills(unittest.TestCase):
    def setUp(self):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        self.addCleanup(home.cleanup)
        self.folder = pathlib.Path(home.name)
        self.environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_FOLDER": home.name}
        self.office = Office(self.folder, self.environment)
        self.office.install()
        self.office.add_macros(Tests=macros("Kills"))

    def start_stand_in(self, **more):
        return StandIn(BUILD / "bin", "--rate", "40", "--kinds", "L1", **more)

    def build(self, tracker):
        be_asked(tracker, self.environment)
        build_tables(self.folder / "quotes.xlsx", self.environment)

    def assert_well(self, code, end):
        notes = notes_in(self.folder)
        self.assertEqual(notes.get("failed"), None, notes)
        self.assertEqual(notes.get(end), "reached", self.office.log())
        self.assertEqual(code, 0, self.office.log())
        return notes

    def test_a_day_goes_on_when_the_stand_in_is_killed_and_comes_back(self):
        with ThreadPoolExecutor(1) as pool:
            with self.start_stand_in() as tracker:
                self.build(tracker)
                running = pool.submit(self.office.run, "Tests.Kills.WithoutSender")
                await_note(self.folder, "kill the sender", running)
                tracker.process.kill()
                tracker.process.wait()
                (self.folder / "killed").touch()
            await_note(self.folder, "bring the sender back", running)
            with self.start_stand_in(ports=tracker.ports):
                (self.folder / "back").touch()
                code = running.result()
        notes = self.assert_well(code, "end")
        self.assertEqual((notes["comes"], notes["comes again"]), ("True", "True"))
        going_on = r"^settings=False start=False stop=True status=True \[Mirelo: "
        self.assertRegex(notes["without a sender"], going_on + r"\S+: .*; reconnecting in \d+ seconds? \(\d+ quotes?, ")
        self.assertRegex(notes["with the sender"], going_on + r"\d+ quotes?, ")
        self.assertRegex(self.office.log(), r"(?s)Last told:.*; reconnecting in \d+ seconds?")
        self.assertRegex(self.office.log(), r"Reconnected to QuoteTracker \d+ times?")
        self.assertNotIn("no more", self.office.log())

    def test_an_office_that_is_killed_leaves_the_file_whole_and_keeps_nobody_out(self):
        workbook = self.folder / "quotes.xlsx"
        with ThreadPoolExecutor(1) as pool, self.start_stand_in() as tracker:
            self.build(tracker)
            running = pool.submit(self.office.run, "Tests.Kills.Dying")
            await_note(self.folder, "kill the office", running)
            self.office.process.kill()
            self.assertEqual(running.result(), -signal.SIGKILL)
            self.assertIsNone(tracker.process.poll())
            self.assertEqual(list(self.folder.rglob("*mirelo-lock*")), [])
            self.assertIn("saved in the day", run(BUILD / "bin" / "mirelo", "show", workbook, env=self.environment))
            code = self.office.run("Tests.Kills.Behind")
            notes = self.assert_well(code, "end behind a kill")
            self.assertEqual(notes["kill the office"], "True")
            self.assertEqual(notes["read-only behind a kill"], "False")
            self.assertEqual(notes["saved before the kill"], "saved in the day")
            self.assertEqual(notes["comes behind a kill"], "True")


if __name__ == "__main__":
    unittest.main()
