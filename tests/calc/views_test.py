"""The tests of views/, run by a LibreOffice in its own process.

Without a screen (svp), yet not --headless, which answers every box by itself and shows no dialog."""

import os
import pathlib
import tempfile
import unittest

from office import Office
from support import BUILD, StandIn

HERE = pathlib.Path(__file__).parent


class Views(unittest.TestCase):
    def test_show_forms_and_take_what_a_person_does(self):
        with tempfile.TemporaryDirectory(prefix="mirelo-") as home:
            folder = pathlib.Path(home)
            notes = folder / "notes"
            environment = {"PATH": os.environ["PATH"], "HOME": home, "MIRELO_NOTES": str(notes)}
            environment |= {name: os.environ[name] for name in ("MIRELO_FILTER",) if name in os.environ}
            office = Office(folder, environment, headless=False)
            office.install(BUILD / "tests" / "calc" / "view_tests")
            office.add_macros(Tests=HERE / "in_office" / "Driver.bas")
            with StandIn(BUILD / "bin") as tracker:
                office.environment["MIRELO_HTTP_PORT"] = str(tracker.http_port)
                code = office.run("Tests.Driver.Main")
            log = office.log()
            self.assertTrue(notes.exists(), log)
            self.assertEqual(notes.read_text(), "result: 0\n", log)
            self.assertEqual(code, 0, log)
            print(log)


if __name__ == "__main__":
    unittest.main()
