"""A LibreOffice without a screen that runs one macro, with a fresh profile and an extension in it."""

import os
import pathlib
import shutil
import subprocess
import time
from xml.sax.saxutils import escape

from support import BUILD, SOURCE, run

OFFICE = pathlib.Path(os.environ["MIRELO_OFFICE"])
EXTENSION = BUILD / "extension"  # of which mirelo.oxt is packed

PATIENCE = 120  # seconds, over all starts: machines that build or test beside it take a while
STARTED_FOR_ITS_PROFILE = 81  # the office wants to be started again

MODULE = """<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE script:module PUBLIC "-//OpenOffice.org//DTD OfficeDocument 1.0//EN" "module.dtd">
<script:module xmlns:script="http://openoffice.org/2000/script" script:name="{name}" script:language="StarBasic">{text}</script:module>
"""
LIBRARY = """<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE library:library PUBLIC "-//OpenOffice.org//DTD OfficeDocument 1.0//EN" "library.dtd">
<library:library xmlns:library="http://openoffice.org/2000/library" library:name="{name}" library:readonly="false" library:passwordprotected="false">
{elements}</library:library>
"""
LIBRARIES = """<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE library:libraries PUBLIC "-//OpenOffice.org//DTD OfficeDocument 1.0//EN" "libraries.dtd">
<library:libraries xmlns:library="http://openoffice.org/2000/library" xmlns:xlink="http://www.w3.org/1999/xlink">
{elements}</library:libraries>
"""


HERE = pathlib.Path(__file__).parent
SHARED = ("Arrivals", "Commands", "Documents", "Files", "Locale", "Notes", "Scripts", "Tables")


def macros(name):
    """A test's module of Basic, beside those that all tests share."""
    return [HERE / f"{each}.bas" for each in (name, *SHARED)]


def be_asked(tracker, environment, stream_port=None):
    """Settings of the person in `environment`, by which quotes come from this stand-in, through `stream_port` if any."""
    mirelo = BUILD / "bin" / "mirelo"
    run(mirelo, "settings", "set", "HTTPPort", as_stored(tracker.http_port), env=environment)
    run(mirelo, "settings", "set", "SocketPort", stream_port or tracker.stream_port, env=environment)
    run(mirelo, "credentials", "set", env=environment, input="MireloDemo\ndemo-secret\n")
    run(mirelo, "sources", "--update", env=environment)


def as_stored(port):
    """A port of the HTTP interface is kept as a number of 16 bits with a sign."""
    return (int(port) + 0x8000) % 0x10000 - 0x8000


def build_tables(workbook, environment, *wishes, columns="Ticker,Last,Bid,Volume,LastVolume,Time"):
    """A workbook as Go leaves it, of MSFT and IBM, whose quotes are to be streamed."""
    tickers = ["--tickers", "MSFT,IBM", "--columns", columns]
    source = ["--set", "Seconds=0", "--source", "Alpstein Finance (delayed)"]
    run(BUILD / "bin" / "mirelo", "go", "--workbook", workbook, *tickers, *source, *wishes, env=environment)


def notes_in(folder):
    """What a macro has noted (Notes.bas), by its title."""
    file = folder / "notes"
    lines = file.read_text().splitlines() if file.exists() else []
    return {title: value.strip() for title, _, value in (line.partition(": ") for line in lines)}


def await_note(folder, title, running):
    """Until the macro of the office that is `running`, a future, notes this."""
    while title not in notes_in(folder):
        if running.done():
            raise AssertionError(f"the office ended with {running.result()} before it noted {title}: {notes_in(folder)}")
        time.sleep(0.02)


class EndsWell:
    """Of a test that has its macros' notes in `notes`, and of their office what it wrote in `log` and the exit code in `code`."""

    def test_reaches_its_end_and_the_office_ends_well(self):
        self.assertEqual(self.notes.get("failed"), None, self.notes)
        self.assertEqual(self.notes.get("end"), "reached", self.log)
        self.assertEqual(self.code, 0, self.log)
        self.assertNotIn("mirelo", self.log)


def sanitizer():
    """What an office is to find in its environment to load an extension that was built with the address sanitizer. It is no such
    program itself: its leaks, and how it frees what it made, are its own affair. What a report tells of where memory came
    from is who asked for it, since an office allocates much; without malloc_context_size it tells thirty callers."""
    runtime = os.environ.get("MIRELO_SANITIZER_RUNTIME")
    if not runtime:
        return {}
    return {
        "LD_PRELOAD": runtime,
        "ASAN_OPTIONS": "detect_leaks=0:alloc_dealloc_mismatch=0:detect_odr_violation=0:quarantine_size_mb=32:malloc_context_size=2",
    }


class Office:
    """`folder` is an empty one of its own; `environment` is the process's. One that is not headless shows its windows
    on no screen, unless it gets another `plugin` of its toolkit's than that for none."""

    def __init__(self, folder, environment, headless=True, plugin="svp"):
        self.folder = pathlib.Path(folder)
        self.headless = headless
        self.environment = {"MIRELO_NOTES": str(self.folder / 'notes'), **environment, "SAL_USE_VCLPLUGIN": plugin, **sanitizer()}
        self.libraries = {}
        self.process = None  # that was started last
        user = self.folder / "profile" / "user"
        user.mkdir(parents=True, exist_ok=True)
        shutil.copy(pathlib.Path(SOURCE) / "tests" / "support" / "office_settings.xcu", user / "registrymodifications.xcu")

    def install(self, extension=EXTENSION, name=None):
        """As the extensions that come with an office for all users: unpacked. The build's own folder, which offices only read:
        with the sanitizers in it, to unpack it takes longer than the office's start."""
        (self.folder / "extensions").mkdir(exist_ok=True)
        (self.folder / "extensions" / (name or extension.name)).symlink_to(extension)

    def add_macros(self, **libraries):
        """Libraries by their names: a file of Basic, or several, each of which is a module."""
        self.libraries = {
            name: [pathlib.Path(file) for file in (files if isinstance(files, list) else [files])]
            for name, files in libraries.items()
        }

    # The first start makes the profile, and puts a list of libraries of its own in place of one that is there.
    def _write_macros(self):
        libraries = self.libraries
        basic = self.folder / "profile" / "user" / "basic"
        names = ["Standard", *libraries]
        for name in names:
            folder = basic / name
            folder.mkdir(parents=True, exist_ok=True)
            modules = ""
            for source in libraries.get(name, []):
                modules += f' <library:element library:name="{source.stem}"/>\n'
                (folder / f"{source.stem}.xba").write_text(MODULE.format(name=source.stem, text=escape(source.read_text())))
            (folder / "script.xlb").write_text(LIBRARY.format(name=name, elements=modules))
        places = (
            f' <library:library library:name="{name}" xlink:href="$(USER)/basic/{name}/script.xlb/" xlink:type="simple"'
            ' library:link="false"/>\n'
            for name in names
        )
        (basic / "script.xlc").write_text(LIBRARIES.format(elements="".join(places)))

    def run(self, macro, patience=PATIENCE):
        """Runs Library.Module.Sub, which is to end the office. The exit code; fails where the office does not end."""
        until = time.monotonic() + patience
        code = STARTED_FOR_ITS_PROFILE
        while code == STARTED_FOR_ITS_PROFILE:
            code = self._start(macro, until - time.monotonic())
        return code

    def _start(self, macro, seconds):
        # The first start makes the profile and ends, without a look at the extension's libraries. It needs no sanitizers.
        without = sanitizer() if self.process is None else {}
        self._write_macros()
        options = ["--norestore", "--nologo", "--nodefault", "--nolockcheck"]
        if self.headless:
            options.append("--headless")
        places = [
            f"-env:UserInstallation={(self.folder / 'profile').as_uri()}",
            f"-env:BUNDLED_EXTENSIONS={(self.folder / 'extensions').as_uri()}",
        ]
        with open(self.folder / "office.log", "ab") as log:
            # The program itself, not the script around it, so that it is ended by its id.
            office = self.process = subprocess.Popen(
                [OFFICE / "program" / "soffice.bin", *options, *places, f"macro:///{macro}"],
                env={name: value for name, value in self.environment.items() if name not in without},
                cwd=self.folder, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
            )
            try:
                return office.wait(max(seconds, 1))
            except subprocess.TimeoutExpired:
                raise AssertionError(f"the office did not end\n{notes_in(self.folder)}\n{self.log()}") from None
            finally:
                office.kill()
                office.wait()

    def log(self):
        return (self.folder / "office.log").read_text(errors="replace")
