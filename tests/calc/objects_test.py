"""The spreadsheet's objects over documents, with tests/excel, run by a LibreOffice without a screen in its own process."""

import os
import pathlib
import tempfile
import unittest

from office import Office
from support import BUILD

PATIENCE = 270  # seconds: hundreds of tests, beside others

HERE = pathlib.Path(__file__).parent


class Objects(unittest.TestCase):
    def test_keep_what_the_port_promises(self):
        with tempfile.TemporaryDirectory(prefix="mirelo-") as home:
            folder = pathlib.Path(home)
            notes = folder / "notes"
            environment = {"PATH": os.environ["PATH"], "HOME": home, "MIRELO_NOTES": str(notes)}
            environment |= {name: os.environ[name] for name in ("MIRELO_FILTER",) if name in os.environ}
            office = Office(folder, environment)
            office.install(BUILD / "tests" / "calc" / "object_tests")
            office.add_macros(Tests=HERE / "in_office" / "Driver.bas")
            code = office.run("Tests.Driver.Main", patience=PATIENCE)
            log = office.log()
            self.assertTrue(notes.exists(), log)
            self.assertEqual(notes.read_text(), "result: 0\n", log)
            self.assertEqual(code, 0, log)
            print(log)


if __name__ == "__main__":
    unittest.main()
