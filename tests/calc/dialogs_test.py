"""The menu's commands that show a dialog, a box or a page, and a person who sees to what they show.

Without a screen (svp), yet not --headless, which shows no dialog and answers every box by itself."""

import os
import pathlib
import shutil
import tempfile
import unittest

from office import Office, be_asked, notes_in
from support import BUILD, StandIn

HERE = pathlib.Path(__file__).parent
IDLE = "settings=True start=True stop=False status=True [] help=True"


class Dialogs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        opener = folder / "bin" / "xdg-open"  # by which desktops open what they have programs for
        opener.parent.mkdir()
        opener.write_text('#!/bin/sh\nprintf "%s" "$1" > "$MIRELO_FOLDER/opened"\n')
        opener.chmod(0o700)
        environment = {"PATH": f"{opener.parent}:{os.environ['PATH']}", "HOME": home.name, "MIRELO_FOLDER": home.name}
        environment["PYTHONDONTWRITEBYTECODE"] = "1"
        scripts = folder / "profile" / "user" / "Scripts" / "python"
        scripts.mkdir(parents=True)
        shutil.copy(HERE / "dialog_person.py", scripts)
        with StandIn(BUILD / "bin") as tracker:
            be_asked(tracker, environment)
            office = Office(folder, environment, headless=False)
            office.install(BUILD / "mirelo.oxt")
            office.add_macros(Tests=[HERE / "Dialogs.bas", HERE / "Commands.bas", HERE / "Notes.bas"])
            cls.code = office.run("Tests.Dialogs.Main")
        cls.log = office.log()
        cls.notes = notes_in(folder)
        opened = folder / "opened"
        cls.opened = opened.read_text() if opened.exists() else None
        cls.extension = folder / "extensions" / "mirelo.oxt"

    def test_reach_their_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None, self.notes)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("mirelo", self.log)

    def test_help_opens_the_guide_that_came_with_the_extension(self):
        self.assertEqual(self.opened, (self.extension / "guide.md").as_uri())

    def test_a_document_with_a_box_above_it_is_closed_when_the_box_was_answered(self):
        self.assertEqual(self.notes["refuses below the box"], "True")
        self.assertEqual(self.notes["open behind the box"], "False")

    def test_settings_that_are_cancelled_leave_all_as_it_was(self):
        self.assertEqual(self.notes["seconds when cancelled"], "nothing")
        self.assertEqual(self.notes["table when cancelled"], "False")

    def test_settings_are_stored_as_typed_and_build_the_table_in_their_own_document(self):
        self.assertEqual(self.notes["seconds"], "1")
        self.assertEqual(self.notes["tickers"], "Ticker|MSFT|IBM||")
        self.assertEqual(self.notes["table in front"], "False")
        self.assertEqual(self.notes["refuses beside the dialog"], "False")
        self.assertEqual(self.notes["open beside the dialog"], "False")
        self.assertEqual(self.notes["states behind the dialog"], IDLE)

    def test_start_is_refused_beside_the_box_of_the_day_before_and_not_behind_it(self):
        self.assertIn("start=False stop=True status=True [Mirelo: ", self.notes["states behind the boxes"])


if __name__ == "__main__":
    unittest.main()
