"""A day in an open document of LibreOffice, against a stand-in, while somebody works in the document."""

import contextlib
import os
import pathlib
import shutil
import socket
import tempfile
import threading
import unittest

from office import Office, be_asked, build_tables, macros, notes_in
from relay import Relay
from support import BUILD, StandIn



def troublesome_streams(folder):
    """The ports of streams that bring no quotes, each for a reason of its own, and what keeps them."""
    kept = contextlib.ExitStack()
    secret = folder / "secret"
    secret.write_text("another one\n")
    strict = kept.enter_context(StandIn(BUILD / "bin", "--app-secret-file", secret))
    cut = kept.enter_context(StandIn(BUILD / "bin", "--stream-fault", "drop@quotes:40"))
    other = kept.enter_context(socket.create_server(("127.0.0.1", 0)))
    threading.Thread(target=greet_otherwise, args=(other,), daemon=True).start()
    with socket.create_server(("127.0.0.1", 0)) as closed:
        nobody = closed.getsockname()[1]
    ports = {"STRICT": strict.stream_port, "CUT": cut.stream_port, "OTHER": other.getsockname()[1], "NOBODY": nobody}
    return ports, kept


def greet_otherwise(listener):
    while True:
        try:
            client, _ = listener.accept()
        except OSError:  # it is over
            return
        with client:
            client.sendall(b"220 ready\r\n")
            client.recv(100)


class Day(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        environment = {
            "PATH": os.environ["PATH"],
            "HOME": home.name,
            "MIRELO_FOLDER": home.name,
            "MIRELO_PROGRAM": str(BUILD / "bin" / "mirelo"),
        }
        ports, troubles = troublesome_streams(folder)
        cls.addClassCleanup(troubles.close)
        cls.ports = ports
        with StandIn(BUILD / "bin") as tracker, Relay(tracker.stream_port) as relay:
            ports = {f"MIRELO_{name}": str(port) for name, port in {**ports, "RELAY": relay.port}.items()}
            office = Office(folder, {**environment, **ports})
            office.install()
            office.add_macros(Tests=macros("Day"))
            be_asked(tracker, environment, relay.port)
            build_tables(folder / "quotes.xlsx", environment)
            shutil.copy(folder / "quotes.xlsx", folder / "troubles.xlsx")
            cls.code = office.run("Tests.Day.Main")
        cls.sent = [bytes(sent) for sent in relay.sent]
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_reaches_its_end_and_the_office_ends_well_while_quotes_come(self):
        self.assertEqual(self.notes.get("failed"), None, self.notes)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.notes["comes before leaving"], "True")
        self.assertEqual(self.code, 0, self.log)

    def test_begins_by_the_settings_and_tells_what_comes(self):
        self.assertEqual(self.notes["comes"], "True")
        self.assertRegex(
            self.notes["states of a day"],
            r"^settings=False start=False stop=True status=True \[Mirelo: \d+ quotes?, [\d.]+ a second, the last [\d.]+ s ago\] help=True$",
        )
        self.assertEqual(self.notes["wide enough"], "True")

    def test_refuses_a_second_one_with_a_sentence(self):
        self.assertIn("Quotes are coming into quotes.xlsx", self.log)
        self.assertIn("press Stop first", self.log)

    def test_goes_on_while_one_types_and_keeps_the_steps_of_undo(self):
        self.assertEqual(self.notes["comes while one types"], "True")
        self.assertEqual(self.notes["typed"], "typed by hand")
        self.assertEqual(self.notes["in front"], "Own")
        self.assertEqual(self.notes["undone"], "")
        self.assertEqual(self.notes["comes behind undo"], "True")

    def test_goes_on_behind_a_save_and_under_another_name(self):
        self.assertEqual(self.notes["comes behind a save"], "True")
        self.assertEqual(self.notes["comes behind a save elsewhere"], "True")

    def test_goes_on_beside_cells_that_ask_for_quotes_themselves(self):
        self.assertEqual(self.notes["cells beside"], "True")
        self.assertEqual(self.notes["comes beside cells"], "True")

    def test_is_one_for_all_documents(self):
        self.assertEqual(self.notes["states in another"], "settings=False start=False stop=True status=True [] help=True")
        self.assertEqual(self.notes["comes behind another"], "True")

    def test_ends_when_it_is_stopped(self):
        self.assertEqual(self.notes["comes no more"], "False")
        self.assertEqual(self.notes["states behind a day"], "settings=True start=True stop=False status=True [] help=True")

    def test_follows_a_renamed_sheet_and_does_not_begin_without_the_table(self):
        self.assertEqual(self.notes["comes into a renamed sheet"], "True")
        self.assertIn("start=True stop=False", self.notes["states without a table"])

    def test_ends_with_what_to_do_where_a_sheet_is_protected_or_gone(self):
        self.assertEqual(self.notes["comes once more"], "True")
        self.assertEqual(self.notes["ended by protection"], "True")
        self.assertEqual(self.notes["comes into a protected sheet"], "False")
        self.assertIn("start=True stop=False", self.notes["states behind protection"])
        self.assertIn("[Mirelo: quotes come no more: ", self.notes["states behind protection"])
        self.assertEqual(self.notes["comes without protection"], "True")
        self.assertEqual(self.notes["ended by deleting"], "True")
        self.assertEqual(self.log.count("Quotes come into other.ods no more"), 2, self.log)
        self.assertIn("Tools > Protect Sheet", self.log)

    def test_ends_quietly_with_its_document(self):
        for what in ("closing", "reloading"):
            self.assertEqual(self.notes[f"comes before {what}"], "True")
            self.assertEqual(self.notes[f"states behind {what}"], "settings=True start=True stop=False status=True [] help=True")
        self.assertNotIn("into quotes.xlsx no more", self.log)

    def test_tells_that_the_login_was_refused_and_what_to_do(self):
        self.assertIn("stop=True status=True [Mirelo: QuoteTracker refused the login: ", self.notes["refused login"])
        self.assertEqual(self.log.count("mirelo credentials set, in a terminal"), 1, self.log)
        self.assertRegex(self.log, r"(?s)Last told:\n.*QuoteTracker refused the login: ")

    def test_tells_where_nobody_listens_and_goes_on_calling(self):
        called = rf"stop=True status=True \[Mirelo: Called at .*, port {self.ports['NOBODY']} .*Compare SocketPort"
        self.assertRegex(self.notes["nobody there"], called)

    def test_ends_where_something_else_answers(self):
        self.assertIn("stop=False status=True [Mirelo: quotes come no more: Called at ", self.notes["something else"])
        self.assertIn('it begins with "220 ready".', self.notes["something else"])
        self.assertRegex(self.log, r'(?s)it begins with "220 ready"\..*Then press Start\.')

    def test_tells_that_the_stream_was_cut_beside_what_has_come(self):
        self.assertRegex(self.notes["cut stream"], r"\[Mirelo: .*; reconnecting in \d seconds? \(\d+ quotes, ")

    def test_tells_quotetracker_to_send_no_more_however_it_ends(self):
        days = [sent for sent in self.sent if b"MSFT" in sent]
        self.assertGreater(len(days), 6)
        for sent in days:
            self.assertIn(b"UNSUBALL", sent)


if __name__ == "__main__":
    unittest.main()
