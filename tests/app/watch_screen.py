"""Runs a program on a terminal and prints what a person would see there.

usage: watch_screen.py LINESxCOLUMNS STEP... -- PROGRAM ARGUMENT...

Steps, in their order:
  until:TEXT   wait until the screen shows the text (a minute at most)
  type:TEXT    type it; \\e is the escape character
  for:SECONDS  look on
  size:LxC     give the window another size
  signal:NAME  send the program a signal
  stopped      wait until the program has stopped
  show         print the screen's lines, each behind "| "
  bytes        print how many bytes have come since the last time

Behind the last step the program is waited for, and the rest is printed: "left: " and what stands on the usual
screen after the other one was left, "status: " and how it ended, "modes: same" when the terminal is as before.
"""

import codecs
import fcntl
import os
import pty
import select
import signal
import struct
import sys
import termios
import time

import pyte

PATIENCE = 60  # seconds: an office that is started first takes a third of it where others build beside it
LEAVE = b"\x1b[?1049l"


class Watched:
    def __init__(self, lines, columns, program):
        self.screen = pyte.Screen(columns, lines)
        self.stream = pyte.ByteStream(self.screen)
        self.raw = b""
        self.counted = 0
        self.noted = 0
        self.master, self.terminal = pty.openpty()
        self.resize(lines, columns)
        self.modes = termios.tcgetattr(self.terminal)
        self.program = os.fork()
        if self.program == 0:
            os.close(self.master)
            os.login_tty(self.terminal) if hasattr(os, "login_tty") else self.log_in()
            os.environ["TERM"] = "xterm-256color"
            os.environ.pop("NO_COLOR", None)
            # As a shell at a terminal starts it, whatever those that started this ignore.
            for ending in (signal.SIGINT, signal.SIGHUP):
                signal.signal(ending, signal.SIG_DFL)
            os.execv(program[0], program)

    def log_in(self):
        os.setsid()
        fcntl.ioctl(self.terminal, termios.TIOCSCTTY, 0)
        for descriptor in range(3):
            os.dup2(self.terminal, descriptor)

    def resize(self, lines, columns):
        self.screen.resize(lines, columns)
        fcntl.ioctl(self.master, termios.TIOCSWINSZ, struct.pack("HHHH", lines, columns, 0, 0))

    def look(self, seconds):
        """Reads what comes in this time; false once nothing more will come."""
        end = time.monotonic() + seconds
        while True:
            left = end - time.monotonic()
            if not select.select([self.master], [], [], max(0, min(left, 0.05)))[0]:
                if left <= 0:
                    return True
                continue
            try:
                data = os.read(self.master, 65536)
            except OSError:
                return False
            self.raw += data
            self.stream.feed(data)

    def until(self, holds, what):
        end = time.monotonic() + PATIENCE
        while not holds():
            if time.monotonic() > end:
                self.show()
                sys.exit(f"nothing of this came: {what}")
            self.look(0.05)

    def shows(self, text):
        return any(text in line for line in self.screen.display)

    def show(self):
        for line in self.screen.display:
            print("| " + line.rstrip())

    def has_stopped(self):
        with open(f"/proc/{self.program}/stat") as stat:
            return stat.read().rsplit(")", 1)[1].split()[0] == "T"

    def step(self, step):
        name, _, value = step.partition(":")
        if name == "until":
            self.until(lambda: self.shows(value), value)
        elif name == "type":
            os.write(self.master, codecs.decode(value.replace("\\e", "\\x1b"), "unicode_escape").encode())
        elif name == "for":
            self.look(float(value))
        elif name == "size":
            self.resize(*map(int, value.split("x")))
        elif name == "signal":
            os.kill(self.program, getattr(signal, value))
        elif name == "stopped":
            self.until(self.has_stopped, "a stop")
        elif name == "note":
            self.noted = os.stat(value).st_mtime_ns
        elif name == "renewed":
            self.until(lambda: os.stat(value).st_mtime_ns != self.noted, f"a new {value}")
        elif name == "show":
            self.show()
        elif name == "bytes":
            print("bytes:", len(self.raw) - self.counted)
            self.counted = len(self.raw)
        else:
            sys.exit(f"no step is {step}")

    def end(self):
        status = None
        end = time.monotonic() + PATIENCE
        while status is None:
            self.look(0.05)
            gone, code = os.waitpid(self.program, os.WNOHANG)
            if gone:
                status = code
            elif time.monotonic() > end:
                os.kill(self.program, signal.SIGKILL)
        self.look(0.05)
        left = self.raw.rsplit(LEAVE, 1)[1] if LEAVE in self.raw else b"(the screen was not left)"
        for line in left.decode(errors="replace").replace("\r", "").split("\n"):
            print("left: " + line)
        print("status:", f"signal {status & 127}" if status & 127 else status >> 8)
        print("modes:", "same" if termios.tcgetattr(self.terminal) == self.modes else "other")


def main(words):
    at = words.index("--")
    lines, columns = map(int, words[0].split("x"))
    watched = Watched(lines, columns, words[at + 1 :])
    for step in words[1:at]:
        watched.step(step)
    watched.end()


main(sys.argv[1:])
