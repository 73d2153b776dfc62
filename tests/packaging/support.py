"""What the tests of what is installed share: this build, a stand-in to ask, commands that must succeed."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["MIRELO_SOURCE"])
BUILD = pathlib.Path(os.environ["MIRELO_BUILD"])


def run(*command, expect=0, **more):
    """Runs a command to its end and gives its standard output; fails, with all it wrote, for another exit code."""
    words = [str(word) for word in command]
    result = subprocess.run(words, capture_output=True, text=True, timeout=100, **more)
    if result.returncode != expect:
        raise AssertionError(f"{' '.join(words)} ended with {result.returncode}\n{result.stdout}{result.stderr}")
    return result.stdout


class StandIn:
    """The program quotetracker of `programs`; ends with the with statement. The kernel chooses its ports, unless it is to
    have those of one before it."""

    def __init__(self, programs, *arguments, ports=("0", "0")):
        options = ["--http-port", ports[0], "--stream-port", ports[1], "--exit-with-parent"]
        self.process = subprocess.Popen([programs / "quotetracker", *options, *arguments], stdout=subprocess.PIPE, text=True)
        self.http_port = self._port("HTTP port ")
        self.stream_port = self._port("stream port ")
        self.ports = (self.http_port, self.stream_port)

    def _port(self, head):
        line = self.process.stdout.readline()
        if not line.startswith(head):
            raise AssertionError(f"the stand-in said {line!r} in place of {head!r}")
        return line[len(head) :].strip()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


class InstalledCase(unittest.TestCase):
    """Installs this build into a prefix of its own, once for all cases, which get a fresh home each."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="mirelo-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.prefix = cls.folder / "prefix"
        cls.programs = cls.prefix / "bin"
        run("cmake", "--install", BUILD, "--prefix", cls.prefix)

    def setUp(self):
        home = tempfile.TemporaryDirectory(prefix="mirelo-")
        self.addCleanup(home.cleanup)
        self.home = pathlib.Path(home.name)
        self.environment = {"PATH": os.environ["PATH"], "HOME": home.name}

    def run_here(self, *command, **more):
        return run(*command, cwd=self.home, env=self.environment, **more)

    def mirelo(self, *arguments, **more):
        return self.run_here(self.programs / "mirelo", *arguments, **more)
