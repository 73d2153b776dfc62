"""The Debian package mirelo: installed into a root of its own by dpkg, used there, and removed again."""

import os
import pathlib
import re
import shutil
import tempfile
import unittest
import zipfile

from support import BUILD, SOURCE, StandIn, run

# dpkg wants to find ldconfig, which users do not have in their path.
PATH = os.environ["PATH"] + ":/usr/sbin:/sbin"


@unittest.skipUnless(shutil.which("dpkg-shlibdeps"), "dpkg-dev is not installed")
class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        made = cls.folder / "made"
        run("cpack", "--config", BUILD / "CPackConfig.cmake", "-G", "DEB", "-B", made, "-D", "CPACK_COMPONENTS_ALL=runtime",
            "-D", "CPACK_DEBIAN_COMPRESSION_TYPE=none")  # a debug build takes seconds to be made smaller
        (cls.file,) = made.glob("mirelo_*.deb")

    def setUp(self):
        root = tempfile.TemporaryDirectory(prefix="mirelo-")
        self.addCleanup(root.cleanup)
        self.root = pathlib.Path(root.name)
        database = self.root / "var" / "lib" / "dpkg"
        for part in ("info", "updates"):
            (database / part).mkdir(parents=True)
        (database / "status").touch()

    def dpkg(self, *arguments):
        # What the package depends on is in this machine's root, not in the new one.
        command = ["dpkg", f"--root={self.root}", "--force-depends", "--force-not-root", *arguments]
        if os.geteuid() != 0:
            command.insert(0, "fakeroot")
        return run(*command, env={"PATH": PATH})

    def files(self):
        found = (path.relative_to(self.root) for path in self.root.rglob("*"))
        return {str(path) for path in found if path.parts[0] != "var"}

    def field(self, name):
        return run("dpkg-deb", "-f", self.file, name).strip()

    def test_says_what_it_is_and_needs(self):
        (version,) = re.findall(r"project\(Mirelo VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text())
        self.assertEqual(self.field("Package"), "mirelo")
        self.assertEqual(self.field("Version"), version)
        self.assertRegex(self.field("Maintainer"), r"^Mirelo developers <.+>$")
        self.assertIn("keeps a quote table in a workbook", self.field("Description"))
        needed = {need.split()[0] for need in self.field("Depends").split(", ")}
        for library in ("libc6", "libcurl4", "libsqlite3-0", "libsodium23", "libxlsxwriter4", "libqt6widgets6"):
            self.assertIn(library, needed)
        self.assertEqual([need for need in needed if need.endswith("-dev")], [])

    def test_installs_works_and_leaves_nothing(self):
        self.assertEqual(self.files(), set())
        self.dpkg("--install", self.file)
        programs = self.root / "usr" / "bin"
        self.assertEqual(run(programs / "mirelo", "--version"), f"mirelo {self.field('Version')}\n")
        with tempfile.TemporaryDirectory(prefix="mirelo-") as home, StandIn(programs) as stand_in:
            quotes = ["quotes", "MSFT", "IBM", "--csv", "--http-port", stand_in.http_port]
            lines = run(programs / "mirelo", *quotes, env={"HOME": home}).splitlines()
        self.assertEqual([line.split(",")[0] for line in lines], ["Ticker", "MSFT", "IBM"])

        self.dpkg("--remove", "mirelo")
        self.assertEqual(self.files(), set())
        self.assertEqual((self.root / "var" / "lib" / "dpkg" / "status").read_text().strip(), "")

    def test_gives_libreoffice_the_extension_for_all_users(self):
        self.assertIn("libreoffice-calc", self.field("Suggests"))
        self.dpkg("--install", self.file)
        extension = self.root / "usr/lib/libreoffice/share/extensions/mirelo"
        self.assertTrue(extension.is_symlink())
        for part in ("description.xml", "META-INF/manifest.xml", "libmirelo.uno.so", "libmirelo_front.uno.so", "docs/guide.md"):
            self.assertTrue((extension / part).is_file(), part)
        with zipfile.ZipFile(self.root / "usr/lib/mirelo/mirelo.oxt") as packed:
            there = {str(path.relative_to(extension)) for path in extension.rglob("*") if path.is_file()}
            self.assertEqual(set(packed.namelist()), there)

    def test_gives_everybody_what_they_need_and_nobody_more(self):
        self.dpkg("--install", self.file)
        for path in (self.root / "usr").rglob("*"):
            program = path.parent.name == "bin" or path.is_dir()
            self.assertEqual(oct(path.stat().st_mode & 0o7777), "0o755" if program else "0o644", path)


if __name__ == "__main__":
    unittest.main(verbosity=2)
