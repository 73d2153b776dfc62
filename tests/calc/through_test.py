"""The commands run and go with LibreOffice Calc as their spreadsheet program: what is kept, told, refused and left."""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time
import unittest
import zipfile
from xml.etree import ElementTree

from command_case import MIRELO, OFFICE, PATIENCE, TABLE, CommandCase, rows_of
from support import BUILD, SOURCE, StandIn, run

THROUGH = ("--through", "calc")
SMALL = ("--set", "VerticalTable=0", "--columns", "Ticker,Last,Bid,Volume,LastVolume,Time")

# A person's own document: a formula, a link to a document beside it, and a cell that asks for a quote.
OWN = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:body><office:spreadsheet>
<table:table table:name="Mine"><table:table-row>
<table:table-cell table:formula="of:=1+2" office:value-type="float" office:value="3"><text:p>3</text:p></table:table-cell>
<table:table-cell table:formula="of:='%s'#$Rates.A1" office:value-type="float" office:value="7"><text:p>7</text:p></table:table-cell>
<table:table-cell table:formula="of:=MIRELO.FUNCTIONS.GETQUOTE(&quot;MSFT&quot;)"/>
</table:table-row></table:table></office:spreadsheet></office:body></office:document>
"""


class Through(CommandCase):
    def test_a_day_leaves_what_a_person_has_in_the_document(self):
        own = self.home / "own.fods"
        own.write_text(OWN % "rates.ods")
        day = self.start("run", *THROUGH, "--demo", "--for", "3s", "--save-every", "1s", "--workbook", own.name,
                         "--also", "all.csv", *SMALL)
        code, out, err = self.end(day)
        self.assertEqual(code, 0, err)
        self.assertIn(f"Saved in {own}", out)
        self.assertEqual(self.left(), ["all.csv", "own.fods"])
        self.assertEqual(list((self.home / "tmp").iterdir()), [])
        tables = ElementTree.parse(own).iter(f"{{{TABLE}}}table")
        by_name = {table.get(f"{{{TABLE}}}name"): table for table in tables}
        self.assertIn("Dovanta2_Quotes", by_name)
        cells = [cell.get(f"{{{TABLE}}}formula") for cell in by_name["Mine"].iter(f"{{{TABLE}}}table-cell")]
        self.assertEqual(cells[0], "of:=1+2")
        self.assertEqual(cells[1], f"of:=['file://{self.home}/rates.ods'#$Rates.A1]")
        asking = list(by_name["Mine"].iter(f"{{{TABLE}}}table-cell"))[2]
        self.assertGreater(float(asking.get(f"{{{OFFICE}}}value", "0")), 0)
        self.assertGreater(len((self.home / "all.csv").read_text().splitlines()), 3)

    def test_go_builds_the_table_and_a_second_one_finds_it(self):
        with StandIn(BUILD / "bin") as stand_in:
            go = ("go", *THROUGH, "--http-port", stand_in.http_port, "--workbook", "table.ods", "--set", "Seconds=10")
            code, out, err = self.end(self.start(*go, "--tickers", "MSFT,IBM"))
            self.assertEqual((code, out), (0, "Committed: quotes are to be asked for every 10 seconds\n"), err)
            self.assertIn(f"Saved in {self.home}/table.ods", err)
            code, _, err = self.end(self.start(*go, "--columns", "Ticker,Bid"))
            self.assertEqual(code, 0, err)
        table = rows_of(self.home / "table.ods", "Dovanta2_Quotes")
        self.assertEqual(table[1][:2], ["Ticker", "Bid"])
        self.assertEqual([row[0] for row in table[2:4]], ["MSFT", "IBM"])

    def test_tells_what_of_a_workbook_calc_does_not_keep(self):
        code, _, err = self.end(self.start("run", "--demo", "--for", "2s", "--workbook", "q.xlsx", *SMALL))
        self.assertEqual(code, 0, err)
        with zipfile.ZipFile(self.home / "q.xlsx", "a") as packed:
            packed.writestr("xl/slicers/slicer1.xml", "<slicers/>")
            packed.writestr("xl/novelties/novelty1.xml", "<novelties/>")
        code, _, err = self.end(self.start("run", *THROUGH, "--demo", "--for", "2s", "--workbook", "q.xlsx"))
        self.assertEqual(code, 0, err)
        self.assertEqual(
            sorted(line for line in err.splitlines() if line.startswith("warning")),
            ["warning: q.xlsx: not kept by LibreOffice: slicers.",
             "warning: q.xlsx: not kept by LibreOffice: what its part xl/novelties/novelty.xml holds."],
        )
        self.assertIn("MSFT", run(MIRELO, "show", self.home / "q.xlsx", "Dovanta2_Quotes", env=self.environment))

    def test_refuses_what_is_no_document_and_what_another_program_has(self):
        (self.home / "letter.ods").write_text("Dear Sirs,")
        code, _, err = self.end(self.start("run", *THROUGH, "--demo", "--for", "2s", "--workbook", "letter.ods"))
        self.assertEqual(code, 1)
        self.assertIn("LibreOffice cannot open letter.ods: it is damaged, has a password, or is no .ods file", err)
        self.assertEqual((self.home / "letter.ods").read_text(), "Dear Sirs,")
        lock = self.home / ".~lock.letter.ods#"
        lock.touch()
        code, _, err = self.end(self.start("go", *THROUGH, "--workbook", "letter.ods", "--tickers", "MSFT"))
        self.assertEqual(code, 1)
        self.assertIn(f"another program has it open; close it there. If none has, delete {lock}", err)

    def test_says_what_is_missing(self):
        programs = self.home / "programs"
        programs.mkdir()
        alone = programs / "mirelo"
        shutil.copy(MIRELO, alone)
        for name in ("soffice", "soffice.bin"):
            (programs / name).touch()
        go = (alone, "go", *THROUGH, "--tickers", "MSFT")

        def told():
            return subprocess.run(go, env={**self.environment, "PATH": str(programs)}, capture_output=True, text=True)

        without_calc = told()
        self.assertEqual(without_calc.returncode, 1)
        self.assertIn("LibreOffice is installed without Calc. Install it: sudo apt-get install libreoffice-calc", without_calc.stderr)
        (programs / "libsclo.so").touch()
        without_extension = told()
        self.assertEqual(without_extension.returncode, 1)
        self.assertIn("The extension mirelo.oxt is not there: this Mirelo was built without LibreOffice", without_extension.stderr)

    def test_ends_in_order_when_it_is_asked_to(self):
        day = self.start("run", *THROUGH, "--demo", *SMALL)
        self.wait_for(day, "Streaming")
        time.sleep(1)
        day.send_signal(signal.SIGTERM)
        code, out, err = self.end(day)
        self.assertEqual(code, 0, err)
        self.assertIn("Saved in", out)
        self.assertEqual(self.left(), ["quotes.ods"])
        self.assertEqual(rows_of(self.home / "quotes.ods", "Dovanta2_Quotes")[2][0], "MSFT")

    def test_tells_of_an_office_that_dies_and_leaves_what_was_saved(self):
        day = self.start("run", *THROUGH, "--demo", *SMALL)
        self.wait_for(day, "Streaming")
        for office in self.offices():
            if office != day.pid:
                os.kill(office, signal.SIGKILL)
        code, _, err = self.end(day)
        self.assertEqual(code, 1)
        self.assertIn("LibreOffice ended before the day was over (exit code 137); what was not saved before is lost", err)
        self.assertEqual([name for name in self.left() if not name.endswith("-lock")], ["quotes.ods"])
        self.assertEqual(rows_of(self.home / "quotes.ods", "Dovanta2_Quotes")[2][0], "MSFT")

    def test_no_office_outlives_it(self):
        day = self.start("run", *THROUGH, "--demo", *SMALL)
        self.wait_for(day, "Streaming")
        self.assertNotEqual(self.offices(), [])
        day.kill()
        day.communicate(timeout=PATIENCE)
        until = time.monotonic() + PATIENCE
        while self.offices() and time.monotonic() < until:
            time.sleep(0.05)
        self.assertEqual(self.offices(), [])

    def test_has_the_screen_of_a_day_in_a_terminal(self):
        watch = pathlib.Path(SOURCE) / "tests" / "app" / "watch_screen.py"
        steps = ("until:LastVolume", "until: quotes, ", "type:\\x1a", "for:0.5", "size:30x100", "for:0.5", "show", "type:q")
        command = (MIRELO, "run", *THROUGH, "--demo", *SMALL)
        seen = run(sys.executable, watch, "24x80", *steps, "--", *command, cwd=self.home, env=self.environment)
        self.assertRegex(seen, r"\| [* ] MSFT +\d")
        self.assertIn("? help  s save  q end", seen)
        self.assertIn("left: Saved in", seen)
        self.assertIn("status: 0", seen)
        self.assertIn("modes: same", seen)
        self.assertEqual(len([line for line in seen.splitlines() if line.startswith("| ")]), 30)


if __name__ == "__main__":
    unittest.main()
