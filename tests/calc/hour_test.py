"""An hour at the window of LibreOffice while quotes come: somebody types, formats, undoes, saves and moves sheets about.

It takes some seconds; with MIRELO_LONG_HOUR in the environment so many. The screen is a virtual one; keys come from the
X server, as those of a keyboard do."""

import os
import pathlib
import subprocess
import tempfile
import threading
import time
import unittest

from office import PATIENCE, Office, be_asked, build_tables, macros
from support import BUILD, StandIn

SECONDS = int(os.environ.get("MIRELO_LONG_HOUR", "5"))


class Screen:
    """A virtual one, on a display that the server chose; ends with the with statement."""

    def __enter__(self):
        reading, writing = os.pipe()
        words = ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24", "-nolisten", "tcp"]
        self.server = subprocess.Popen(words, pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as number:
            self.display = ":" + number.readline().strip()
        if self.display == ":":
            raise AssertionError("the virtual screen does not come up")
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


class Person(threading.Thread):
    """Does at the keyboard of a display what is wished for by a file, and removes the file then."""

    def __init__(self, display, wish):
        super().__init__(daemon=True)
        self.environment = {"PATH": os.environ["PATH"], "DISPLAY": display}
        self.wish = wish
        self.leaves = threading.Event()

    def run(self):
        while not self.leaves.is_set():
            if self.wish.exists():
                what, _, text = self.wish.read_text().strip().partition(" ")
                if what == "stop":
                    return
                self._act(what, text)
                self.wish.unlink()
            time.sleep(0.02)

    # Nobody else says which window has the keyboard.
    def _act(self, what, text):
        if what == "escape":
            self._do("search", "--onlyvisible", "--name", f"^{text}$", "windowfocus", "--sync")
            self._do("key", "Escape")
        else:
            self._do("search", "--onlyvisible", "--name", " - LibreOffice Calc$", "windowfocus", "--sync")
            self._do(*(["type", "--delay", "60"] if what == "type" else ["key"]), text)

    def _do(self, *words):
        subprocess.run(["xdotool", *words], env=self.environment, timeout=20, check=True, stdout=subprocess.DEVNULL)


class Hour(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        environment = {
            "PATH": os.environ["PATH"],
            "HOME": home.name,
            "MIRELO_FOLDER": home.name,
            "MIRELO_SECONDS": str(SECONDS),
        }
        with StandIn(BUILD / "bin", "--rate", "20") as tracker, Screen() as screen:
            be_asked(tracker, environment)
            build_tables(folder / "quotes.xlsx", environment)
            office = Office(folder, {**environment, "DISPLAY": screen.display}, plugin="gen", headless=False)
            office.install()
            office.add_macros(Tests=macros("Hour"))
            person = Person(screen.display, folder / "wish")
            person.start()
            cls.code = office.run("Tests.Hour.Main", PATIENCE + SECONDS)
            person.leaves.set()
            person.join()
        cls.log = office.log()
        notes = folder / "notes"
        cls.notes = notes.read_text().splitlines() if notes.exists() else []

    def test_reaches_its_end_with_all_as_a_user_expects(self):
        self.assertEqual([note for note in self.notes if note.startswith(("not so", "failed"))], [], self.log)
        self.assertIn("end: reached", self.notes, self.log)
        self.assertIn("comes: True", self.notes)
        self.assertIn("comes in the end: True", self.notes)

    def test_leaves_the_office_well(self):
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("no more", self.log)


if __name__ == "__main__":
    unittest.main()
