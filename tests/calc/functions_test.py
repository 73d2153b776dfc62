"""The cell functions in a LibreOffice that has the extension, against a stand-in."""

import os
import pathlib
import tempfile
import threading
import unittest

from office import Office, macros, notes_in
from support import BUILD, SOURCE, StandIn, run



ESTABLISHED = "01"
BETWEEN_LOOKS = 0.05  # seconds


class CountedConnections:
    """Counts the connections to a port whenever its file is gone, and writes their number there: Basic reads no file whose size
    it is not told. To count is slow where a machine has room for many connections."""

    def __init__(self, port, file):
        self.remote = f":{int(port):04X}"
        self.file = file
        self.over = threading.Event()
        self.thread = threading.Thread(target=self._count_when_asked)

    def __enter__(self):
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.over.set()
        self.thread.join()

    def _count_when_asked(self):
        while not self.over.wait(BETWEEN_LOOKS):
            if not self.file.exists():
                self._count()

    def _count(self):
        rows = [line.split() for line in pathlib.Path("/proc/net/tcp").read_text().splitlines()[1:]]
        count = sum(row[2].endswith(self.remote) and row[3] == ESTABLISHED for row in rows)
        whole = self.file.with_suffix(".new")
        whole.write_text(f"{count}\n")
        whole.replace(self.file)


class Functions(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        notes = folder / "notes"
        with StandIn(BUILD / "bin", "--rate", "1000") as tracker:
            environment = {
                "PATH": os.environ["PATH"],
                "HOME": home.name,
                "MIRELO_NOTES": str(notes),
                "MIRELO_EXAMPLE": str(SOURCE / "examples/calc/functions.fods"),
                "MIRELO_CONNECTIONS": str(folder / "connections"),
            }
            office = Office(folder, environment)
            office.install()
            office.add_macros(Tests=macros("Functions"))
            mirelo = BUILD / "bin" / "mirelo"
            run(mirelo, "settings", "set", "SocketPort", tracker.stream_port, env=environment)
            run(mirelo, "settings", "set", "Seconds", "0", env=environment)
            run(mirelo, "credentials", "set", env=environment, input="MireloDemo\ndemo-secret\n")
            try:
                with CountedConnections(tracker.stream_port, folder / "connections"):
                    cls.code = office.run("Tests.Functions.Main")
            except AssertionError as failure:
                noted = notes.read_text() if notes.exists() else "nothing"
                raise AssertionError(f"{failure}\nnoted until then:\n{noted}") from None
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_reach_their_end_and_the_office_ends_well_while_quotes_come(self):
        self.assertEqual(self.notes.get("failed"), None)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("mirelo", self.log)

    def test_are_described_in_the_function_wizard(self):
        quote = self.notes["wizard QUOTE"]
        for text in ("market quote from QuoteTracker", "Ticker: The ticker", "Column: What to show"):
            self.assertIn(text, quote)
        add_ins = "11: "  # com.sun.star.sheet.FunctionCategory
        for name in ("QUOTE", "QUOTE_STATUS", "QUOTE_AGE"):
            self.assertTrue(self.notes[f"wizard {name}"].startswith(add_ins), name)
            self.assertIn("| Ticker: The ticker", self.notes[f"wizard {name}"])
        self.assertIn("| Column: The column", self.notes["wizard QUOTE_STATUS"])
        self.assertIn("Says why", self.notes["wizard QUOTE_STATUS"])
        self.assertIn("seconds", self.notes["wizard QUOTE_AGE"])

    def test_show_no_value_before_and_say_why(self):
        self.assertEqual(self.notes["before"], "#N/A 32767")
        self.assertNotEqual(self.notes["status before"], "Streaming")

    def test_show_values_that_change_as_quotes_come(self):
        self.assertGreater(float(self.notes["value"]), 0)
        self.assertEqual(self.notes["same"], "True")
        self.assertEqual(self.notes["changes"], "True")
        self.assertLess(float(self.notes["age"]), 5)
        self.assertEqual(self.notes["status"], "Streaming")
        self.assertEqual(self.notes["connections"], "1")

    def test_leave_the_document_and_its_undo_as_the_user_left_them(self):
        self.assertEqual(self.notes["modified by quotes"], "False")
        self.assertEqual(self.notes["undo steps of quotes"], "0")

    def test_say_what_is_wrong_with_their_arguments(self):
        self.assertIn('#N/A There is no column "LASST"', self.notes["wrong column"])
        self.assertEqual(self.notes["no ticker"], "#N/A No ticker is given")
        self.assertEqual(self.notes["empty column"], "True")
        several = "Several cells are given for the column; it is one cell or a name"
        self.assertEqual(self.notes["several columns"], f"#N/A {several}")
        self.assertEqual(self.notes["several columns in the formula"], several)
        self.assertRegex(self.notes["a range of one cell"], r'^There is no column "LASST".* True$')

    def test_take_tickers_of_cells_and_work_in_arrays_fills_and_anew(self):
        self.assertEqual(self.notes["array"], "True")
        self.assertEqual(self.notes["calculated anew"], "True")
        self.assertRegex(self.notes["filled"], r"D3\) True$")

    def test_are_found_again_in_files(self):
        for form in ("ods", "xlsx", "xls"):
            self.assertEqual(
                self.notes[f"from {form}"], '=QUOTE("MSFT","Last") True =QUOTE_AGE("MSFT") True', form
            )
            self.assertEqual(self.notes[f"follows from {form}"], "True", form)
            self.assertEqual(self.notes[f"modified in {form}"], "False -1", form)

    def test_fill_the_sheet_of_the_examples(self):
        self.assertRegex(
            self.notes["example"], r"^=QUOTE\(\$A2,B\$1\) True =QUOTE_AGE\(\$A3\) True \d\d:\d\d:\d\d Streaming$"
        )

    def test_end_with_the_last_cell_though_the_office_keeps_its_listeners(self):
        self.assertEqual(self.notes["on a sheet behind"], "True")
        self.assertEqual(self.notes["connections of one"], "1")
        self.assertEqual(self.notes["connections of none"], "0")
        self.assertEqual(self.notes["connections of another"], "1")
        self.assertEqual(self.notes["connections of no document"], "0")

    def test_are_asked_by_conditions_of_formats_too(self):
        self.assertEqual(self.notes["connections of a condition"], "1")
        self.assertEqual(self.notes["a condition by itself"], "True")
        self.assertEqual(self.notes["a condition by a cell"], "True")
        self.assertEqual(self.notes["connections behind conditions"], "0")

    def test_are_subscribed_together_by_the_thousand(self):
        self.assertEqual(self.notes["many"], "2000")
        self.assertEqual(self.notes["connections of many"], "1")


if __name__ == "__main__":
    unittest.main()
