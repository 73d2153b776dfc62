"""Measures inside a LibreOffice without a screen, and prints what Google Benchmark prints: JSON."""

import json
import os
import pathlib
import tempfile

from office import Office
from support import BUILD, StandIn, run

HERE = pathlib.Path(__file__).parent
RATE = 1000  # quotes a second


def shares_of_functions():
    """What 2,000 cells of QUOTE take of the main thread, in percent, several times."""
    with tempfile.TemporaryDirectory(prefix="mirelo-") as home:
        folder = pathlib.Path(home)
        notes = folder / "notes"
        environment = {"PATH": os.environ["PATH"], "HOME": home, "MIRELO_NOTES": str(notes)}
        office = Office(folder, environment, headless=False)
        office.install(BUILD / "mirelo.oxt")
        office.add_macros(Bench=HERE / "Functions.bas")
        with StandIn(BUILD / "bin", "--rate", str(RATE)) as tracker:
            mirelo = BUILD / "bin" / "mirelo"
            run(mirelo, "settings", "set", "SocketPort", tracker.stream_port, env=environment)
            run(mirelo, "settings", "set", "Seconds", "0", env=environment)
            run(mirelo, "credentials", "set", env=environment, input="MireloDemo\ndemo-secret\n")
            code = office.run("Bench.Functions.Main")
        told = [line.split(": ") for line in notes.read_text().splitlines()]
    shares = [float(value) for title, value in told if title == "share"]
    cells = [float(value) for title, value in told if title == "cells"]
    if code != 0 or not shares or cells[0] < 1500:
        raise SystemExit(f"error: the office ended with {code} and told {told}\n{office.log()}")
    return shares


def main():
    rows = [
        {"run_type": "iteration", "run_name": "calc/functions", "ns_per_item": share} for share in shares_of_functions()
    ]
    print(json.dumps({"benchmarks": rows}))


if __name__ == "__main__":
    main()
