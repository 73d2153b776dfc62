"""The macros of examples/calc, as they are, in a LibreOffice that has the extension, against a stand-in."""

import os
import pathlib
import shutil
import tempfile
import unittest

from office import Office, be_asked, build_tables, macros, notes_in
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
        environment["PYTHONDONTWRITEBYTECODE"] = "1"
        office = Office(folder, environment, headless=False)  # which shows no dialog
        office.install()
        office.add_macros(Examples=SOURCE / "examples/calc/Quotes.bas", Tests=macros("Driver"))
        scripts = folder / "profile" / "user" / "Scripts" / "python"
        scripts.mkdir(parents=True)
        shutil.copy(HERE / "person.py", scripts)
        with StandIn(BUILD / "bin") as tracker:
            be_asked(tracker, environment)
            build_tables(table, environment)
            try:
                cls.code = office.run("Tests.Driver.Main")
            except AssertionError as failure:
                raise AssertionError(f"{failure}\nnoted until then: {notes_in(folder)}") from None
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_reach_their_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("mirelo", self.log)

    def test_show_the_settings_dialog_and_go_on_only_where_go_was_pressed(self):
        self.assertEqual(self.notes["stays as it was when cancelled"], "True")

    def test_follow_the_dialogs_answer_whether_to_stream_or_to_ask(self):
        self.assertEqual(self.notes["streams behind Go"], "True")
        self.check_streamed("streamed behind Go")
        self.assertEqual(self.notes["no stream behind Go"], "True")
        self.check_asked("asked behind Go")

    def test_write_into_the_document_that_they_were_started_in(self):
        self.assertEqual(self.notes["another in front"], "True")
        self.assertEqual(self.notes["comes behind another"], "True")
        self.assertEqual(self.notes["sheets of another"], "Sheet1")

    def test_end_their_stream_when_its_document_is_closed(self):
        self.assertEqual(self.notes["stream of another"], "True")
        self.assertEqual(self.notes["ends with its document"], "True")

    def test_leave_the_menu_free_when_they_are_done(self):
        for what in ("asking", "the stream", "a closed document", "cancelling", "the settings"):
            self.assertIn("stop=True", self.notes[f"menu behind {what}"], what)

    def test_go_on_where_the_office_gets_another_locale_amid_a_request(self):
        self.assertEqual(self.notes["became German meanwhile"], "True")
        self.assertEqual(self.notes["asked while it became German"], "True")

    def test_write_numbers_where_people_write_them_with_a_comma(self):
        self.assertEqual(self.notes["in German"], "4,5 True")

    def test_write_no_formula_that_comes_from_outside_and_no_ticker_as_a_number(self):
        self.assertEqual(self.notes["a formula from outside"], "=1+1")
        self.assertEqual(self.notes["a ticker of digits"], "True")

    def test_take_a_document_for_a_spreadsheet_program(self):
        self.assertEqual(self.notes["read back"], "1234")
        self.assertEqual(self.notes["in the document"], "1234")
        self.assertEqual(self.notes["front sheet"], "Dovanta2_Quotes")

    def test_hand_over_tables_of_whole_numbers_and_of_booleans(self):
        self.assertEqual(self.notes["table of whole numbers"], "70000")
        self.assertEqual(self.notes["table of booleans"], "True")

    def test_see_errors_as_basic_has_them(self):
        self.assertIn("NoSuchMember", self.notes["no such member"])
        self.assertRegex(self.notes["argument left out"], "^449 .*Argument not optional")
        self.assertRegex(self.notes["wrong type"], "^13 .*Type mismatch")
        self.assertRegex(self.notes["unknown to Basic"], "^1 .*error -2147221404: cQTDatas component failure")

    def test_hold_one_object_for_one_of_the_library(self):
        self.assertEqual(self.notes["same object"], "True")


if __name__ == "__main__":
    unittest.main()
