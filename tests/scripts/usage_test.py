"""What the scripts of a checkout say when they are asked for help, or are given what they do not take. Each is asked in a copy
of the checkout's scripts, with no tool in its path that would build or install anything."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["MIRELO_SOURCE"])
TOOLS = ["awk", "bash", "cat", "dirname", "env", "grep", "python3", "realpath", "sed", "sort"]


def scripts():
    """Those that people call, by their names from the checkout."""
    found = [path for path in (SOURCE / "scripts").iterdir() if os.access(path, os.X_OK)]
    return sorted(f"scripts/{path.name}" for path in found) + ["test", ".ci/run"]


class Scripts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.home = pathlib.Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.home)
        cls.checkout = cls.home / "checkout"
        for folder in ("scripts", ".ci"):
            shutil.copytree(SOURCE / folder, cls.checkout / folder)
        shutil.copy(SOURCE / "test", cls.checkout)
        # Rooms and fuzz targets are known by where they are listed.
        for folder in ("src", "fuzz"):
            for file in (SOURCE / folder).rglob("CMakeLists.txt"):
                copy = cls.checkout / file.relative_to(SOURCE)
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(file, copy)
        tools = cls.home / "tools"
        tools.mkdir()
        for tool in TOOLS:
            (tools / tool).symlink_to(shutil.which(tool, path="/usr/bin:/bin"))
        cls.environment = {"PATH": str(tools), "LC_ALL": "C.UTF-8"}

    def call(self, script, *arguments):
        # Not from the checkout, where a path may lead somewhere by chance.
        return subprocess.run([self.checkout / script, *arguments], cwd=self.home, env=self.environment, text=True,
                              capture_output=True, stdin=subprocess.DEVNULL, timeout=20)

    def test_are_all_that_their_folder_holds_but_for_what_they_read(self):
        names = {path.name for path in (SOURCE / "scripts").iterdir()}
        self.assertEqual(names - {pathlib.Path(script).name for script in scripts()}, {"lib.sh", "packages.txt"})

    def test_tell_what_they_are_for_and_do_nothing_else(self):
        for script in scripts():
            for asked in ("--help", "-h"):
                with self.subTest(script=script, asked=asked):
                    called = self.call(script, asked)
                    self.assertEqual((called.returncode, called.stderr), (0, ""))
                    self.assertIn(script.removeprefix("scripts/"), called.stdout)
                    self.assertGreater(len(called.stdout.splitlines()), 1)
                    self.assertNotIn("set -euo", called.stdout)

    def test_refuse_an_option_that_they_do_not_have(self):
        for script in scripts():
            with self.subTest(script=script):
                called = self.call(script, "--nothing-like-it")
                self.assertEqual((called.returncode, called.stdout), (2, ""))
                self.assertIn(script.removeprefix("scripts/"), called.stderr)

    def test_refuse_one_argument_more_than_they_take(self):
        cases = [(".ci/run",), ("scripts/package",), ("scripts/pictures",), ("scripts/format", "--check")]
        cases += [("scripts/tidy", "--windows"), ("scripts/windows", "--test"), ("test", "--quick")]
        for script, *arguments in cases:
            with self.subTest(script=script):
                called = self.call(script, *arguments, "more")
                self.assertEqual((called.returncode, called.stdout), (2, ""))
                self.assertIn("more", called.stderr)

    def test_say_what_there_is_in_place_of_a_name_that_they_do_not_know(self):
        cases = [
            (["scripts/coverage", "wier"], "no room is named", ["wire", "adapters/calc", "streaming"]),
            (["scripts/coverage", "--least", "90", "adapters"], "no room is named", ["adapters/workbook"]),
            (["scripts/fuzz", "600", "decoder"], "no target is named", ["streaming_decoder", "workbook", "http"]),
            (["scripts/install", "buidl"], "no purpose is named", ["build", "lib", "windows"]),
        ]
        for words, refusal, known in cases:
            with self.subTest(words=words):
                called = self.call(*words)
                self.assertEqual((called.returncode, called.stdout), (2, ""))
                first, *_ = called.stderr.splitlines()
                self.assertIn(f'{refusal} "{words[-1]}"', first)
                for name in known:
                    self.assertIn(name, first.split())

    def test_refuse_what_is_no_number(self):
        for words in (["scripts/coverage", "--least", "most"], ["scripts/coverage", "--least"], ["scripts/fuzz"],
                      ["scripts/fuzz", "wire_quote_reply"]):
            with self.subTest(words=words):
                self.assertEqual(self.call(*words).returncode, 2)


if __name__ == "__main__":
    unittest.main()
