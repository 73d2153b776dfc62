"""The command mirelo calc: a day in an office of its own, without a screen, and how it ends."""

import os
import pathlib
import signal
import subprocess
import tempfile
import time
import unittest
import zipfile
from xml.etree import ElementTree

from support import BUILD, run

MIRELO = BUILD / "bin" / "mirelo"
OFFICE = "urn:oasis:names:tc:opendocument:xmlns:office:1.0"
TABLE = "urn:oasis:names:tc:opendocument:xmlns:table:1.0"
PATIENCE = 40
SMALL = ("--set", "VerticalTable=0", "--columns", "Ticker,Last,Bid,Volume,LastVolume,Time")


def rows_of(file, sheet):
    """The typed values of a sheet's cells; None for an empty one."""
    with zipfile.ZipFile(file) as packed:
        content = ElementTree.fromstring(packed.read("content.xml"))
    (table,) = (each for each in content.iter(f"{{{TABLE}}}table") if each.get(f"{{{TABLE}}}name") == sheet)
    rows = []
    for row in table.iter(f"{{{TABLE}}}table-row"):
        cells = []
        for cell in row.iter(f"{{{TABLE}}}table-cell"):
            value = cell.get(f"{{{OFFICE}}}value") or cell.get(f"{{{OFFICE}}}time-value")
            text = "".join(cell.itertext()) or None
            cells += [value or text] * min(int(cell.get(f"{{{TABLE}}}number-columns-repeated", "1")), 50)
        rows.append(cells)
    return rows


class Command(unittest.TestCase):
    def setUp(self):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        self.addCleanup(home.cleanup)
        self.home = pathlib.Path(home.name)
        temporary = self.home / "tmp"
        temporary.mkdir()
        self.environment = {"PATH": os.environ["PATH"], "HOME": home.name, "TMPDIR": str(temporary)}

    def start(self, *arguments, **more):
        return subprocess.Popen(
            [MIRELO, "calc", *arguments], cwd=self.home, env={**self.environment, **more},
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
        )

    def end(self, process):
        try:
            out, err = process.communicate(timeout=PATIENCE)
        finally:
            process.kill()
        self.assertEqual(self.offices(), [], err)
        return process.returncode, out, err

    def offices(self):
        """The offices that work in this test's folder."""
        found = []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if str(self.home).encode() in (folder / "cmdline").read_bytes():
                    found.append(int(folder.name))
            except OSError:
                pass
        return found

    def left(self):
        return sorted(path.name for path in self.home.iterdir() if path.name not in ("tmp", ".cache", ".config", ".local"))

    def test_plays_the_demonstration_without_a_screen_and_leaves_a_document(self):
        code, out, err = self.end(self.start("--demo", "--headless", "--for", "3s"))
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
        process = self.start("mine.xlsx", "--demo", "--headless", *SMALL)
        self.wait_for(process, "Streaming")
        time.sleep(1)
        process.send_signal(signal.SIGINT)
        code, out, err = self.end(process)
        self.assertEqual(code, 0, err)
        self.assertRegex(out, r"^mine.xlsx: \d+ quotes came\n$")
        self.assertEqual(self.left(), ["mine.xlsx"])
        shown = run(MIRELO, "show", self.home / "mine.xlsx", "Dovanta2_Quotes", env=self.environment)
        self.assertIn("MSFT", shown)

    def test_leaves_no_office_and_no_file_where_it_is_killed(self):
        process = self.start("--demo", "--headless", *SMALL)
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
        process = self.start("--demo", "--headless", *SMALL)
        self.wait_for(process, "Streaming")
        for office in self.offices():
            if office != process.pid:
                os.kill(office, signal.SIGKILL)
        code, out, err = self.end(process)
        self.assertEqual((code, out), (1, ""))
        self.assertIn("LibreOffice ended before the day was over (exit code 137); nothing was saved", err)

    def test_refuses_what_the_dialog_does_not_have(self):
        code, _, err = self.end(self.start("--demo", "--headless", "--columns", "Ticker,Nothing"))
        self.assertEqual(code, 2)
        self.assertIn('there is no column "Nothing"', err)
        self.assertEqual(self.left(), [])
        code, _, err = self.end(self.start("--demo", "--headless", "quotes.txt"))
        self.assertEqual(code, 2)
        self.assertIn("is stored as .ods or .xlsx", err)

    def test_says_what_to_install(self):
        programs = self.home / "programs"
        programs.mkdir()
        for name in ("soffice", "soffice.bin"):
            (programs / name).touch()
        code, _, err = self.end(self.start("--demo", "--headless", PATH=str(programs)))
        self.assertEqual(code, 1)
        self.assertIn("LibreOffice is installed without Calc. Install it: sudo apt-get install libreoffice-calc", err)

    def wait_for(self, process, text):
        for line in process.stderr:
            if text in line:
                return
        process.communicate()
        self.fail(f"{text} was not told")


if __name__ == "__main__":
    unittest.main()
