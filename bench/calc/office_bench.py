"""Measures inside a LibreOffice without a screen, and prints what Google Benchmark prints: JSON.

Takes its --benchmark_filter, and hands on the other options."""

import json
import os
import pathlib
import re
import sys
import tempfile

from office import Office
from support import BUILD, StandIn, run

HERE = pathlib.Path(__file__).parent
RATE = 1000  # quotes a second
PATIENCE = 900  # seconds
FUNCTIONS = "calc/functions"
CELLS = 2000
IN_ITS_PROCESS = [
    "calc/block",
    "calc/bare_block",
    "calc/go",
    "calc/bare_go",
    "calc/go_by_hand",
    "calc/age/p50",
    "calc/age/p99",
    "calc/hold",
    "calc/hold_of_cells",
    "calc/idle",
]


def shares_of_functions():
    """What 2,000 cells of QUOTE take of the main thread, in percent, several times."""
    told = [line.split(": ") for line in in_office("Bench.Functions.Main", Bench=HERE / "Functions.bas").splitlines()]
    shares = [float(value) for title, value in told if title == "share"]
    cells = [float(value) for title, value in told if title == "cells"]
    if not shares or cells[0] < CELLS:
        raise SystemExit(f"error: the office told {told}")
    return [{"run_type": "iteration", "run_name": FUNCTIONS, "ns_per_item": share} for share in shares]


def benchmarks(options):
    """What the office runs in its own process, on its main thread."""
    told = in_office("Bench.Driver.Main", options, Bench=HERE / "Driver.bas")
    return json.loads(told)["benchmarks"]


def in_office(macro, options=(), **libraries):
    """What was noted. The office is one that paints its windows."""
    with tempfile.TemporaryDirectory(prefix="mirelo-") as home:
        folder = pathlib.Path(home)
        notes = folder / "notes"
        borrowed = folder / "borrowed"
        borrowed.mkdir()
        environment = {
            "PATH": os.environ["PATH"],
            "HOME": home,
            "MIRELO_FOLDER": str(borrowed),
            "MIRELO_NOTES": str(notes),
            "MIRELO_OPTIONS": "\n".join([*options, f"--benchmark_out={notes}", "--benchmark_out_format=json"]),
        }
        office = Office(folder, environment, headless=False)
        office.install()
        office.install(BUILD / "bench" / "calc" / "extension", "bench")
        office.add_macros(**libraries)
        with StandIn(BUILD / "bin", "--rate", str(RATE)) as tracker:
            mirelo = BUILD / "bin" / "mirelo"
            run(mirelo, "settings", "set", "SocketPort", tracker.stream_port, env=environment)
            run(mirelo, "settings", "set", "Seconds", "0", env=environment)
            run(mirelo, "credentials", "set", env=environment, input="MireloDemo\ndemo-secret\n")
            code = office.run(macro, PATIENCE)
        if code != 0 or not notes.exists():
            raise SystemExit(f"error: the office ended with {code}\n{office.log()}")
        print(office.log(), file=sys.stderr)
        return notes.read_text()


def main(arguments):
    chosen = "".join(word.partition("=")[2] for word in arguments if word.startswith("--benchmark_filter="))
    options = [word for word in arguments if not word.startswith("--benchmark_format=")]
    rows = shares_of_functions() if re.search(chosen, FUNCTIONS) else []
    if [name for name in IN_ITS_PROCESS if re.search(chosen, name)]:
        rows += benchmarks(options)
    print(json.dumps({"benchmarks": rows}))


if __name__ == "__main__":
    main(sys.argv[1:])
