"""The macros in Python of examples/calc, as they are, in a LibreOffice that has the extension, against a stand-in."""

import os
import pathlib
import shutil
import tempfile
import unittest

from office import Office, be_asked, macros, notes_in
from support import BUILD, SOURCE, StandIn
from written_quotes import WrittenQuotes

HERE = pathlib.Path(__file__).parent


class Python(WrittenQuotes, unittest.TestCase):
    separator = ","

    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        environment = {"PATH": os.environ["PATH"], "HOME": home.name, "PYTHONDONTWRITEBYTECODE": "1"}
        office = Office(folder, environment)
        office.install()
        office.add_macros(Tests=macros("Python"))
        scripts = folder / "profile" / "user" / "Scripts" / "python"
        scripts.mkdir(parents=True)
        shutil.copy(SOURCE / "examples/calc/quotes.py", scripts)
        shutil.copy(HERE / "members.py", scripts)
        with StandIn(BUILD / "bin") as tracker:
            be_asked(tracker, environment)
            cls.code = office.run("Tests.Python.Main")
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_reaches_its_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None, self.notes)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)

    def test_write_into_the_document_that_they_were_started_in(self):
        self.assertEqual(self.notes["another in front"], "True")
        self.assertEqual(self.notes["comes behind another"], "True")
        self.assertEqual(self.notes["cells of another"], "0")

    def test_leave_the_menu_free_when_they_are_done_and_when_their_document_is_closed(self):
        self.assertNotIn("A macro holds Mirelo", self.log)
        self.assertEqual(self.log.count("This document has no quote table"), 3, self.log)

    def test_holds_properties_methods_arrays_and_objects(self):
        self.assertEqual(self.notes["a list"], "('MSFT', 'IBM')")
        self.assertEqual(self.notes["a boolean"], "True")
        self.assertEqual(self.notes["a text"], "SWISS.SDF")
        self.assertEqual(self.notes["an object"], "0")
        self.assertEqual(self.notes["a method"], "12")
        self.assertIn("GetLastQuote", self.notes["members"])

    def test_sees_errors_with_number_and_text(self):
        self.assertEqual(self.notes["no such member"], "AttributeError NoSuchMember")
        self.assertIn("RuntimeException error 13: Type mismatch", self.notes["wrong type"])
        self.assertIn("error -2147221404: cQTDatas component failure", self.notes["an error of the library"])


if __name__ == "__main__":
    unittest.main()
