"""The macros of examples/calc, as they are, in a LibreOffice that has the extension, against a stand-in."""

import os
import pathlib
import re
import tempfile
import unittest

from office import Office, be_asked, build_tables, notes_in
from support import BUILD, SOURCE, StandIn
from written_quotes import WrittenQuotes

HERE = pathlib.Path(__file__).parent


class Macros(WrittenQuotes, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        notes = folder / "notes"
        environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_NOTES": str(notes)}
        table = folder / "table.xlsx"
        environment["MIRELO_TABLE"] = str(table)
        office = Office(folder, environment)
        office.install(BUILD / "mirelo.oxt")
        office.add_macros(Examples=SOURCE / "examples/calc/Quotes.bas", Tests=[HERE / "Driver.bas", HERE / "Notes.bas"])
        with StandIn(BUILD / "bin") as tracker:
            be_asked(tracker, environment)
            build_tables(table, environment)
            cls.code = office.run("Tests.Driver.Main")
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_reach_their_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("mirelo", self.log)

    def test_show_the_settings_dialog_and_go_on_only_where_go_was_pressed(self):
        self.assertEqual(self.notes["stays as it was when cancelled"], "True")

    def test_take_a_document_for_a_spreadsheet_program(self):
        self.assertEqual(self.notes["read back"], "1234")
        self.assertEqual(self.notes["in the document"], "1234")
        self.assertEqual(self.notes["front sheet"], "Dovanta2_Quotes")

    def test_see_errors_as_basic_has_them(self):
        self.assertIn("NoSuchMember", self.notes["no such member"])
        self.assertRegex(self.notes["argument left out"], "^449 .*Argument not optional")
        self.assertRegex(self.notes["wrong type"], "^13 .*Type mismatch")
        self.assertRegex(self.notes["unknown to Basic"], "^1 .*error -2147221404: cQTDatas component failure")

    def test_hold_one_object_for_one_of_the_library(self):
        self.assertEqual(self.notes["same object"], "True")


if __name__ == "__main__":
    unittest.main()
