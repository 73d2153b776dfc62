"""The menu Mirelo in a LibreOffice that has the extension: its commands, their states, what they load."""

import os
import pathlib
import platform
import re
import tempfile
import unittest
import zipfile
import zlib
from xml.etree import ElementTree

from office import EXTENSION, OFFICE, Office, macros, notes_in
from support import BUILD, SOURCE

NAME = "{http://openoffice.org/2001/registry}name"


class Menu(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(home.cleanup)
        folder = pathlib.Path(home.name)
        notes = folder / "notes"
        (folder / "loaded.sh").write_text('#!/bin/sh\ngrep -c libmirelo.uno.so "/proc/$PPID/maps" > "$1"\n')
        (folder / "loaded.sh").chmod(0o700)
        environment = {"PATH": os.environ["PATH"], "HOME": home.name, "MIRELO_FOLDER": home.name, "MIRELO_NOTES": str(notes)}
        office = Office(folder, environment)
        office.install()
        office.add_macros(Tests=macros("Menu"))
        cls.code = office.run("Tests.Menu.Main")
        cls.log = office.log()
        cls.notes = notes_in(folder)

    def test_reaches_its_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)

    def test_offers_what_can_be_done_without_a_day(self):
        states = "settings=True start=True stop=False status=True [] help=True"
        self.assertEqual(self.notes["before use"], states)
        self.assertEqual(self.notes["after use"], states)

    def test_loads_the_library_when_a_command_is_chosen_and_not_before(self):
        self.assertEqual(self.notes["loaded before use"], "False")
        self.assertEqual(self.notes["loaded after use"], "True")

    def test_stands_in_windows_of_spreadsheets_only(self):
        self.assertEqual(self.notes["toolbar"], "True")
        menu = ElementTree.parse(SOURCE / "src/libreoffice/front/Addons.xcu")
        values = [
            {part.get(NAME): part.findtext("value") for part in node.findall("prop")} for node in menu.iter("node")
        ]
        commands = [value for value in values if (value.get("URL") or "").startswith("vnd.mirelo:")]
        self.assertGreater(len(commands), 5)
        for command in commands:
            if command["URL"] != "vnd.mirelo:status" or "AutoSize" not in command:
                self.assertEqual(command["Context"], "com.sun.star.sheet.SpreadsheetDocument")

    # What is merged there has no context, but a neighbour that spreadsheets alone have.
    def test_stands_in_the_status_bar_of_spreadsheets_only(self):
        self.assertIn("What comes of quotes", self.notes["status bar"])
        modules = OFFICE / "share" / "config" / "soffice.cfg" / "modules"
        bars = [bar for bar in modules.glob("*/statusbar/statusbar.xml") if ".uno:StatusPageStyle" in bar.read_text()]
        self.assertEqual([bar.parts[-3] for bar in bars], ["scalc"])
        menu = (SOURCE / "src/libreoffice/front/Addons.xcu").read_text()
        self.assertRegex(menu, r'"MergePoint"><value>\.uno:StatusPageStyle<')
        self.assertRegex(menu, r'"MergeFallback"><value>Ignore<')

    def test_is_for_the_machine_that_it_was_built_for(self):
        machine = re.sub("^i[3-6]86$", "x86", platform.machine().lower())
        with zipfile.ZipFile(BUILD / "mirelo.oxt") as packed:
            description = packed.read("description.xml").decode()
            manifest = packed.read("META-INF/manifest.xml").decode()
        self.assertIn(f'<platform value="linux_{machine}"/>', description)
        self.assertEqual(set(re.findall(r";platform=(\w+)", manifest)), {f"Linux_{machine}"})

    # What the tests load is the folder, and what people get is what was packed.
    def test_is_packed_as_it_stands_in_its_folder(self):
        files = [file for file in EXTENSION.rglob("*") if file.is_file()]
        with zipfile.ZipFile(BUILD / "mirelo.oxt") as packed:
            in_package = {part.filename: part.CRC for part in packed.infolist() if not part.is_dir()}
        in_folder = {str(file.relative_to(EXTENSION)): zlib.crc32(file.read_bytes()) for file in files}
        self.assertEqual(in_package, in_folder, "what an earlier build has left in the folder is deleted by hand")

    def test_says_that_no_quotes_are_coming(self):
        self.assertIn("No quotes are coming", self.log)

    def test_says_what_to_do_in_a_document_without_a_quote_table(self):
        self.assertIn("This document has no quote table, which is its sheet Dovanta2_Quotes. Choose Settings...", self.log)
        self.assertNotIn("Subscript out of range", self.log)


if __name__ == "__main__":
    unittest.main()
