"""The menu's commands that show a dialog, a box or a page, and a person who sees to what they show.

Without a screen (svp), yet not --headless, which shows no dialog and answers every box by itself."""

import os
import pathlib
import shutil
import socket
import tempfile
import threading
import time
import unittest

from office import EXTENSION, Office, as_stored, be_asked, macros, notes_in
from support import BUILD, StandIn

HERE = pathlib.Path(__file__).parent
IDLE = "settings=True start=True stop=False status=True [] help=True"


class Mute:
    """Takes connections on a port of this machine, answers nothing, and makes a file for each: "asked 1" ..."""

    def __init__(self, folder):
        self.folder = folder
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        self.taken = []

    def __enter__(self):
        threading.Thread(target=self._take, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.listener.close()

    def _take(self):
        while True:
            try:
                self.taken.append(self.listener.accept()[0])
            except OSError:  # it is over
                return
            (self.folder / f"asked {len(self.taken)}").touch()


class Dialogs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        cls.folder = folder = pathlib.Path(home.name)
        opener = folder / "bin" / "xdg-open"  # by which desktops open what they have programs for
        opener.parent.mkdir()
        opener.write_text('#!/bin/sh\nprintf "%s" "$1" > "$MIRELO_FOLDER/opened"\n')
        opener.chmod(0o700)
        environment = {"PATH": f"{opener.parent}:{os.environ['PATH']}", "HOME": home.name, "MIRELO_FOLDER": home.name}
        environment["PYTHONDONTWRITEBYTECODE"] = "1"
        scripts = folder / "profile" / "user" / "Scripts" / "python"
        scripts.mkdir(parents=True)
        shutil.copy(HERE / "dialog_person.py", scripts)
        with StandIn(BUILD / "bin") as tracker, Mute(folder) as mute:
            be_asked(tracker, environment)
            office = Office(folder, {**environment, "MIRELO_MUTE_PORT": str(as_stored(mute.port))}, headless=False)
            office.install()
            office.add_macros(Tests=macros("Dialogs"))
            cls.code = office.run("Tests.Dialogs.Main")
        cls.left = time.time()
        cls.log = office.log()
        cls.notes = notes_in(folder)
        opened = folder / "opened"
        cls.opened = opened.read_text() if opened.exists() else None
        cls.extension = folder / "extensions" / EXTENSION.name

    def test_reach_their_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None, self.notes)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("mirelo", self.log)

    def test_help_opens_the_guide_that_came_with_the_extension(self):
        self.assertEqual(self.opened, (self.extension / "docs" / "guide.md").as_uri())

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

    def test_a_dialog_that_waits_for_an_answer_can_be_cancelled(self):
        self.assertEqual(self.notes["cancelled in time"], "True")
        self.assertEqual(self.notes["states behind cancelling"], IDLE)

    def test_an_office_that_was_to_end_beside_a_dialog_outlives_it(self):
        self.assertEqual(self.notes["ends beside a dialog that asks"], "False")

    def test_an_office_ends_while_cells_wait_for_an_answer(self):
        self.assertEqual(self.notes["ends while cells ask"], "True")
        self.assertLess(self.left - (self.folder / "leaves").stat().st_mtime, 20)  # seconds; the request would wait longer


if __name__ == "__main__":
    unittest.main()
