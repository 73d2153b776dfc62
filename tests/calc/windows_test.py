"""Windows, previews and documents are opened and closed while quotes come or are waited for."""

import os
import pathlib
import shutil
import tempfile
import unittest

from office import EndsWell, Office, as_stored, be_asked, build_tables, macros, notes_in
from support import BUILD, StandIn

IDLE = "settings=True start=True stop=False status=True [] help=True"


class Windows(EndsWell, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_FOLDER": home.name}
        with StandIn(BUILD / "bin", "--rate", "40", "--kinds", "L1") as tracker, StandIn(
            BUILD / "bin", "--http-fault", "stall"
        ) as mute:
            be_asked(tracker, environment)
            build_tables(folder / "quotes.xlsx", environment)
            shutil.copy(folder / "quotes.xlsx", folder / "more.xlsx")
            office = Office(folder, {**environment, "MIRELO_MUTE_PORT": str(as_stored(mute.http_port))})
            office.install()
            office.add_macros(Tests=macros("Windows"))
            cls.code = office.run("Tests.Windows.Main")
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_a_day_goes_on_in_a_preview_and_while_it_is_printed(self):
        for where in ("in a preview", "behind a preview", "behind printing", "behind printing into a file"):
            self.assertEqual(self.notes[where], "True", where)
        for what in ("preview is there", "status in a preview", "printed", "printed into a file"):
            self.assertEqual(self.notes[what], "True", what)

    def test_a_day_goes_on_until_the_last_window_is_closed(self):
        self.assertEqual((self.notes["windows"], self.notes["windows left"]), ("2", "1"))
        self.assertEqual(self.notes["with two windows"], "True")
        self.assertEqual(self.notes["without the first window"], "True")
        self.assertIn("stop=True status=True [Mirelo: ", self.notes["states in the other window"])
        self.assertEqual(self.notes["states behind the last window"], IDLE)

    def test_documents_have_days_in_turn(self):
        for where in ("in the one document", "in the other document", "in the one again", "without the other"):
            self.assertEqual(self.notes[where], "True", where)
        self.assertEqual(self.notes["in the one no more"], "False")

    def test_a_macro_may_dispose_the_document(self):
        self.assertEqual(self.notes["before a macro disposes it"], "True")
        self.assertEqual(self.notes["states behind disposing"], IDLE)

    def test_a_document_that_is_open_for_reading_only_takes_no_quotes(self):
        self.assertEqual(self.notes["where one may only read"], "False")
        self.assertIn("stop=False status=True [Mirelo: quotes come no more: ", self.notes["states where one may only read"])
        self.assertIn("open for reading only", self.log)

    def test_a_document_can_be_closed_while_a_request_waits(self):
        self.assertEqual(self.notes["closed while a request waits"], "True")
        self.assertEqual(self.notes["hung up by closing"], "True")
        self.assertEqual(self.notes["states behind a request"], IDLE)

    def test_an_ended_day_says_nothing_more_and_others_do_beside_its_request(self):
        self.assertNotIn("Data retrieval error", self.log)
        self.assertEqual(self.log.count("The day before is still coming to its end. Try again."), 1, self.log)

    def test_a_request_does_not_hold_up_the_end_of_the_office(self):
        self.assertEqual(self.notes["hung up by leaving"], "True")


if __name__ == "__main__":
    unittest.main()
