"""What the tests of commands that start an office share: a home of their own, and a look at what is left behind."""

import os
import pathlib
import subprocess
import tempfile
import unittest
import zipfile
from xml.etree import ElementTree

from support import BUILD

MIRELO = BUILD / "bin" / "mirelo"
OFFICE = "urn:oasis:names:tc:opendocument:xmlns:office:1.0"
TABLE = "urn:oasis:names:tc:opendocument:xmlns:table:1.0"
PATIENCE = 40


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


class CommandCase(unittest.TestCase):
    def setUp(self):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        self.addCleanup(home.cleanup)
        self.home = pathlib.Path(home.name)
        temporary = self.home / "tmp"
        temporary.mkdir()
        self.environment = {"PATH": os.environ["PATH"], "HOME": home.name, "TMPDIR": str(temporary)}

    def start(self, *arguments, **more):
        return subprocess.Popen(
            [MIRELO, *arguments], cwd=self.home, env={**self.environment, **more},
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

    def wait_for(self, process, text):
        for line in process.stderr:
            if text in line:
                return
        process.communicate()
        self.fail(f"{text} was not told")
