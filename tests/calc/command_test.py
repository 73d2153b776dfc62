"""The command mirelo calc: a day in an office of its own, without a screen, and how it ends."""

import os
import signal
import socket
import time
import unittest

from command_case import MIRELO, PATIENCE, CommandCase, rows_of
from support import run

SMALL = ("--set", "VerticalTable=0", "--columns", "Ticker,Last,Bid,Volume,LastVolume,Time")


class Command(CommandCase):
    def start_calc(self, *arguments, **more):
        return self.start("calc", *arguments, **more)

    def test_plays_the_demonstration_without_a_screen_and_leaves_a_document(self):
        code, out, err = self.end(self.start_calc("--demo", "--headless", "--for", "3s"))
        self.assertEqual(code, 0, err)
        self.assertRegex(out, r"^quotes.ods: \d+ quotes came\n$")
        self.assertIn("Streaming\n", err)
        self.assertEqual(self.left(), ["quotes.ods"])
        self.assertEqual(list((self.home / "tmp").iterdir()), [])
        table = rows_of(self.home / "quotes.ods", "Dovanta2_Quotes")
        self.assertEqual(table[0][0], "Streaming( Alpstein Finance (delayed) )")
        self.assertEqual(table[1][:3], ["Ticker", "Last", "Change"])
        self.assertEqual([row[0] for row in table[2:8]], ["MSFT", "IBM", "CSCO", "INTC", "ORCL", "DELL"])
        quoted = [row for row in table[2:8] if row[1] is not None]
        self.assertGreater(len(quoted), 3)
        for row in quoted:
            self.assertGreater(float(row[1]), 0)
        history = rows_of(self.home / "quotes.ods", "Quotes_Vertical(MSFT)")
        self.assertGreater(float(history[2][0]), 0)

    def test_ends_in_order_at_ctrl_c_and_saves(self):
        process = self.start_calc("mine.xlsx", "--demo", "--headless", *SMALL)
        self.wait_for(process, "Streaming")
        self.assertTrue(list((self.home / "tmp").rglob("registrymodifications.xcu")))
        self.assertEqual(list((self.home / "tmp").rglob("GraphicsRenderTests.log")), [], "it tried out the graphics")
        time.sleep(1)
        process.send_signal(signal.SIGINT)
        code, out, err = self.end(process)
        self.assertEqual(code, 0, err)
        self.assertRegex(out, r"^mine.xlsx: \d+ quotes came\n$")
        self.assertEqual(self.left(), ["mine.xlsx"])
        shown = run(MIRELO, "show", self.home / "mine.xlsx", "Dovanta2_Quotes", env=self.environment)
        self.assertIn("MSFT", shown)

    # An office that is not headless shows its windows on no screen here.
    def test_a_window_stays_when_the_day_is_ended_in_the_terminal(self):
        process = self.start_calc("--demo", *SMALL, SAL_USE_VCLPLUGIN="svp")
        self.wait_for(process, "Streaming")
        process.send_signal(signal.SIGINT)
        self.wait_for(process, "Ending the day. LibreOffice goes on: close its windows. Ctrl-C once more kills it")
        time.sleep(1)
        self.assertIsNone(process.poll())
        process.send_signal(signal.SIGINT)
        code, _, err = self.end(process)
        self.assertEqual(code, 1)
        self.assertIn("LibreOffice was killed (exit code 137)", err)

    def test_leaves_no_office_and_no_file_where_it_is_killed(self):
        process = self.start_calc("--demo", "--headless", *SMALL)
        self.wait_for(process, "Streaming")
        self.assertNotEqual(self.offices(), [])
        process.kill()
        process.communicate(timeout=PATIENCE)
        until = time.monotonic() + PATIENCE
        while self.offices() and time.monotonic() < until:
            time.sleep(0.05)
        self.assertEqual(self.offices(), [])
        self.assertEqual([name for name in self.left() if not name.endswith(".mirelo-lock")], [])

    def test_tells_of_an_office_that_is_killed(self):
        process = self.start_calc("--demo", "--headless", *SMALL)
        self.wait_for(process, "Streaming")
        for office in self.offices():
            if office != process.pid:
                os.kill(office, signal.SIGKILL)
        code, out, err = self.end(process)
        self.assertEqual((code, out), (1, ""))
        self.assertIn("LibreOffice ended before the day was over (exit code 137); nothing was saved", err)

    def test_says_why_quotetracker_does_not_answer(self):
        with socket.socket() as closed:
            closed.bind(("127.0.0.1", 0))  # and nobody listens
            port = str(closed.getsockname()[1])
            # A port above 32767 is stored as the port less 65536.
            stored = port if int(port) < 32768 else str(int(port) - 65536)
            run(MIRELO, "settings", "set", "HTTPPort", stored, env=self.environment)
            code, _, err = self.end(self.start_calc("--headless", "--tickers", "MSFT", "--for", "2s"))
        self.assertEqual(code, 1)
        self.assertIn(f"port {port} (HTTPPort of the settings): the connection was refused, so nothing listens there.", err)
        self.assertIn("Start QuoteTracker there, switch on its HTTP interface", err)

    def test_refuses_what_the_dialog_does_not_have(self):
        code, _, err = self.end(self.start_calc("--demo", "--headless", "--columns", "Ticker,Nothing"))
        self.assertEqual(code, 2)
        self.assertIn('there is no column "Nothing"', err)
        self.assertEqual(self.left(), [])
        code, _, err = self.end(self.start_calc("--demo", "--headless", "quotes.txt"))
        self.assertEqual(code, 2)
        self.assertIn("LibreOffice Calc is to write .ods, .xlsx, .xls and .fods files", err)

    def test_refuses_wishes_for_a_window(self):
        code, _, err = self.end(self.start_calc("--tickers", "MSFT", "--for", "8h"))
        self.assertEqual(code, 2)
        self.assertIn("--for, --tickers need --headless or --demo", err)
        code, _, err = self.end(self.start_calc("--install", "--charts"))
        self.assertEqual(code, 2)
        self.assertIn("--charts needs --headless or --demo", err)
        self.assertEqual(self.left(), [])

    def test_says_what_to_install(self):
        programs = self.home / "programs"
        programs.mkdir()
        for name in ("soffice", "soffice.bin"):
            (programs / name).touch()
        code, _, err = self.end(self.start_calc("--demo", "--headless", PATH=str(programs)))
        self.assertEqual(code, 1)
        self.assertIn("LibreOffice is installed without Calc. Install it: sudo apt-get install libreoffice-calc", err)


if __name__ == "__main__":
    unittest.main()
