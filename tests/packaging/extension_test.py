"""The extension of LibreOffice, as it was made: what is packed into it."""

import unittest
import zipfile

from links import follow
from support import BUILD

EXTENSION = BUILD / "mirelo.oxt"


class Extension(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with zipfile.ZipFile(EXTENSION) as packed:
            cls.files = {name: packed.read(name) for name in packed.namelist()}

    def test_holds_what_the_links_and_pictures_of_its_guide_lead_to(self):
        reached, dead = follow("docs/guide.md", self.files)
        self.assertEqual(dead, [])
        pictures = [self.files[path][:8] for path in reached if path.endswith(".png")]
        self.assertEqual(pictures, [b"\x89PNG\r\n\x1a\n"] * 4)
        self.assertIn("examples/calc/Quotes.bas", reached)

    def test_holds_no_page_or_example_that_nothing_leads_to(self):
        reached, _ = follow("docs/guide.md", self.files)
        beside = {f"{path.rpartition('/')[0]}/CMakeLists.txt" for path in reached if path.endswith(".cpp")}
        there = {path for path in self.files if path.startswith(("docs/", "examples/"))}
        self.assertEqual(there - beside, reached)


if __name__ == "__main__":
    unittest.main(verbosity=2)
