"""What other threads of the office's process, as those of another process's calls are, ask of the menu and do to a day."""

import os
import pathlib
import shutil
import tempfile
import unittest

from office import Office, be_asked, build_tables, macros, notes_in
from support import BUILD, StandIn

HERE = pathlib.Path(__file__).parent


class Threads(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_FOLDER": home.name, "PYTHONDONTWRITEBYTECODE": "1"}
        office = Office(folder, environment)
        office.install()
        office.add_macros(Tests=macros("Threads"))
        scripts = folder / "profile" / "user" / "Scripts" / "python"
        scripts.mkdir(parents=True)
        shutil.copy(HERE / "threads.py", scripts)
        with StandIn(BUILD / "bin", "--rate", "40", "--kinds", "L1") as tracker:
            be_asked(tracker, environment)
            build_tables(folder / "quotes.xlsx", environment)
            cls.code = office.run("Tests.Threads.Main")
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_reaches_its_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None, self.notes)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("no more", self.log)

    def test_a_day_begins_and_ends_with_its_document_as_ever(self):
        self.assertEqual(self.notes["comes"], "True")
        self.assertEqual(self.notes["states behind closing"], "settings=True start=True stop=False status=True [] help=True")

    def test_what_another_thread_lets_go_of_last_is_in_no_ones_way(self):
        self.assertEqual(self.notes["let go of by another thread"], "True")
        self.assertEqual(self.notes["comes"], "True")
        self.assertNotIn("A macro holds Mirelo", self.log)

    def test_all_is_told_on_the_main_thread(self):
        self.assertEqual(self.notes["told on"], "main")


if __name__ == "__main__":
    unittest.main()
