"""The installed library, as programs of other people find and use it: the examples, built outside of this build."""

import re
import struct
import unittest
import zlib

from links import follow
from support import SOURCE, InstalledCase, StandIn, run

WARNINGS = "-Wall -Wextra -Wpedantic -Wconversion -Werror"


def configure(source, build, prefix):
    run("cmake", "-G", "Ninja", "-S", source, "-B", build, f"-DCMAKE_PREFIX_PATH={prefix}", f"-DCMAKE_CXX_FLAGS={WARNINGS}")


def burst_session(tickers, quotes):
    """A session that a stand-in plays: the conversation, and quotes of the tickers in turn, in one go. The n-th quote
    of a ticker has the price n and the volume 100 n."""

    def field(number, value):
        return struct.pack("<H", number) + value

    def quote(ticker, place):
        fields = field(1, ticker.encode() + b"\0") + field(4, struct.pack("<d", place)) + field(6, struct.pack("<q", 100 * place))
        return b"S1" + struct.pack("<h", 4 + len(fields)) + fields

    burst = b"".join(quote(tickers[i % len(tickers)], i // len(tickers) + 1) for i in range(quotes))
    hello = b"OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>"
    chunks = [(0, hello), (20, b"LO<STATUSCODE>0</STATUSCODE>"), (40, b"OK<STREAMER>A.SDF</STREAMER>"), (60, burst), (3_600_000, b"OK")]
    session = b"QTSESS\r\n" + struct.pack("<II", 1, 0)
    for milliseconds, chunk in chunks:
        session += struct.pack("<QII", 1000 * milliseconds, len(chunk), zlib.crc32(chunk)) + chunk
    return session


# A machine that has a clock and nothing else.
OWN_MACHINE = """
#include <mirelo.h>
#include <mirelo_host.h>

#include <iostream>

namespace {

class StoppedClock : public mirelo::host::Clock {
 public:
  mirelo::Date Now() override { return {40563.25}; }
  double SecondsSinceMidnight() override { return 6 * 3600; }
  std::int64_t Second() override { return 0; }
  const mirelo::RegionalFormat& Regional() override { return mirelo::RegionalFormat::Standard(); }
};

class Machine : public mirelo::host::Host {
 public:
  mirelo::host::MessageLoop& loop() override { Refuse("loop"); }
  mirelo::host::Clock& clock() override { return clock_; }
  mirelo::host::Registry& registry() override { Refuse("registry"); }
  mirelo::host::WinInetApi& internet() override { Refuse("internet"); }
  mirelo::host::WinsockLibrary& sockets() override { Refuse("sockets"); }
  mirelo::host::Desktop& desktop() override { Refuse("desktop"); }
  mirelo::host::OperatingSystem& system() override { Refuse("system"); }
  mirelo::host::CredentialVault& vault() override { Refuse("vault"); }

 private:
  [[noreturn]] static void Refuse(const char* port) {
    std::cout << "asked for the " << port << "\\n";
    throw mirelo::RuntimeError(445, "Object doesn't support this action");
  }
  StoppedClock clock_;
};

}  // namespace

int main() {
  Machine machine;
  const mirelo::host::HostScope installed(machine);
  try {
    mirelo::CAppSettings().GetSetting("Settings", "Seconds", "10");
  } catch (const mirelo::RuntimeError& error) {
    std::cout << error.Description() << "\\n";
  }
}
"""


class Library(InstalledCase):
    def build_example(self, name):
        """Its program, built by the first case that asks for it."""
        build = self.folder / name
        if not (build / name).exists():
            configure(SOURCE / "examples" / name, build, self.prefix)
            run("cmake", "--build", build)
        return build / name

    def test_asks_for_quotes_and_tells_the_volume_between_two_looks(self):
        snapshot = self.build_example("snapshot")
        with StandIn(self.programs, "--seed", "7") as stand_in:
            lines = self.run_here(snapshot, stand_in.http_port, "MSFT", "IBM").splitlines()

        self.assertEqual(lines[0], "Ticker\tLast\tLastVolume\tDate\tTime")
        rows = [line.split("\t") for line in lines[1:]]
        self.assertEqual([row[0] for row in rows], ["MSFT", "IBM", "MSFT", "IBM"])
        for _, last, _, date, _ in rows:
            self.assertGreater(float(last), 0)
            self.assertRegex(date, r"^\d{4}-\d\d-\d\d$")
        first, second = rows[:2], rows[2:]
        self.assertEqual([row[2] for row in first], ["0", "0"])
        self.assertGreater(sum(int(row[2]) for row in second), 0)

    def test_has_its_pages_with_what_they_lead_to(self):
        for package, start in (("mirelo", "docs/guide.md"), ("mirelo-dev", "examples/README.md")):
            folder = self.prefix / "share" / "doc" / package
            pages = {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}
            _, dead = follow(start, pages)
            self.assertEqual(dead, [], package)

    def test_says_that_nobody_answers(self):
        # The port of a stand-in that has gone again: nobody listens there.
        with StandIn(self.programs) as gone:
            port = gone.http_port
        snapshot = self.build_example("snapshot")
        self.run_here(snapshot, port, "MSFT", expect=1)

    def log_in_and_fetch_a_source(self, stand_in):
        self.mirelo("settings", "set", "SocketPort", stand_in.stream_port)
        self.mirelo("credentials", "set", input="MireloDemo\ndemo-secret\n")
        return re.split("  +", self.mirelo("sources", "--update").splitlines()[3].strip())[0]

    def test_takes_quotes_from_the_stream(self):
        stream = self.build_example("stream")
        with StandIn(self.programs, "--rate", "max", "--kinds", "L1") as stand_in:
            source = self.log_in_and_fetch_a_source(stand_in)
            lines = self.run_here(stream, stand_in.stream_port, source, 10, "MSFT", "IBM").splitlines()

        rows = [line.split("\t") for line in lines]
        self.assertEqual(len(rows), 10)
        self.assertEqual({row[0] for row in rows}, {"MSFT", "IBM"})
        for _, date, _, last, _ in rows:
            self.assertRegex(date, r"^\d{4}-\d\d-\d\d$")
            self.assertGreaterEqual(float(last), 0)

    def test_takes_a_burst_of_quotes_in_the_order_sent(self):
        stream = self.build_example("stream")
        with StandIn(self.programs) as stand_in:
            source = self.log_in_and_fetch_a_source(stand_in)
        for quotes in (100, 1_000, 10_000, 100_000):
            session = self.home / "burst.qts"
            session.write_bytes(burst_session(["MSFT", "IBM"], quotes))
            with self.subTest(quotes), StandIn(self.programs, "--play", session) as stand_in:
                lines = self.run_here(stream, stand_in.stream_port, source, quotes, "MSFT", "IBM").splitlines()
                rows = [line.split("\t") for line in lines]
                for ticker in ("MSFT", "IBM"):
                    prices = [float(last) for symbol, _, _, last, _ in rows if symbol == ticker]
                    self.assertEqual(prices, list(range(1, quotes // 2 + 1)))
                    volumes = {int(volume) for symbol, *_, volume in rows if symbol == ticker}
                    self.assertEqual(volumes, {0, 100})

    def test_writes_quotes_into_a_workbook(self):
        workbook = self.build_example("workbook")
        self.mirelo("settings", "set", "ListRight", "Ticker,Last,Volume")
        with StandIn(self.programs) as stand_in:
            for _ in ("a new file", "the same once more"):
                self.run_here(workbook, stand_in.http_port, "own.xlsx", "MSFT", "IBM")
        lines = self.mirelo("show", "own.xlsx").splitlines()
        rows = [line.split()[1:] for line in lines[1:]]
        self.assertEqual([row[0] for row in rows], ["MSFT", "IBM"])
        for _, last, volume in rows:
            self.assertGreater(float(last), 0)
            self.assertGreater(int(volume.replace(",", "")), 0)

    def test_installs_headers_for_clients_and_no_internals(self):
        installed = self.prefix / "include" / "mirelo"
        headers = sorted(str(header.relative_to(installed)) for header in installed.rglob("*.h"))
        # What a client can name of these rooms; an include line in one of them makes another header public.
        clients = {
            "adapters": ["workbook/file_stamp.h", "workbook/load_limits.h", "workbook/spreadsheet.h"],
            "automation": ["array.h", "date.h", "event.h", "regional_format.h", "runtime_error.h", "variant.h"],
            "core": ["CAppSettings.h", "cMirelo.h", "cQTData.h", "cQTDatas.h", "cTickerDateTime.h", "cTickerDateTimes.h"]
            + ["mGlobal.h", "product.h", "property.h", "record_collection.h", "status_run_query.h"],
            "linux": ["linux_host.h"],
            "streaming": ["cQTStreaming.h"],
            "wire": [],
        }
        for room, names in clients.items():
            found = [header.removeprefix(f"{room}/") for header in headers if header.startswith(f"{room}/")]
            self.assertEqual(found, names)
        self.assertLessEqual(len(headers), 43, headers)
        self.assertLessEqual(len(self.reached_from("mirelo.h")), 34, "headers that every client is compiled with")

    def reached_from(self, header):
        """The headers that one of the installed ones includes, directly or not, itself among them."""
        installed = self.prefix / "include" / "mirelo"
        reached = []
        ahead = [header]
        while ahead:
            name = ahead.pop()
            if name not in reached:
                reached.append(name)
                ahead += re.findall(r'^#include "(.+)"', (installed / name).read_text(), re.MULTILINE)
        return reached

    def test_stands_on_a_machine_of_a_clients_own_making(self):
        project = self.home / "machine"
        project.mkdir()
        (project / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(machine LANGUAGES CXX)\nfind_package(Mirelo REQUIRED)\n"
            "add_executable(machine machine.cpp)\ntarget_link_libraries(machine PRIVATE Mirelo::mirelo)\n"
        )
        (project / "machine.cpp").write_text(OWN_MACHINE)
        configure(project, self.home / "build", self.prefix)
        run("cmake", "--build", self.home / "build")
        self.assertEqual(self.run_here(self.home / "build" / "machine"), "asked for the registry\nCAppSettings component failure\n")

    def test_has_the_version_of_the_programs(self):
        (package,) = self.prefix.glob("lib*/**/MireloConfigVersion.cmake")
        script = self.home / "version.cmake"
        script.write_text(f'include("{package}")\nexecute_process(COMMAND "${{CMAKE_COMMAND}}" -E echo "${{PACKAGE_VERSION}}")\n')
        version = self.run_here("cmake", "-P", script).strip()
        for program in ("mirelo", "quotetracker"):
            self.assertEqual(self.run_here(self.programs / program, "--version"), f"{program} {version}\n")

    def test_is_not_taken_for_a_version_that_it_is_not(self):
        project = self.home / "project"
        project.mkdir()
        (project / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(other LANGUAGES CXX)\nfind_package(Mirelo 7 QUIET)\n"
            'if(Mirelo_FOUND)\n  message(FATAL_ERROR "found ${Mirelo_VERSION}")\nendif()\n'
            'if(NOT Mirelo_CONSIDERED_VERSIONS)\n  message(FATAL_ERROR "not even considered")\nendif()\n'
        )
        configure(project, self.home / "build", self.prefix)


if __name__ == "__main__":
    unittest.main(verbosity=2)
