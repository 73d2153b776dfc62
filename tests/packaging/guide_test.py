"""The user's guide speaks of messages that the programs show: each one still stands in the sources."""

import os
import pathlib
import re
import shlex
import subprocess
import tempfile
import unittest

from support import BUILD, SOURCE, StandIn

ADJACENT = re.compile(r'"((?:[^"\\\n]|\\.)*)"')


def literals(text):
    """The text literals of a source, those that stand behind one another joined, as the compiler does."""
    found, end = [], None
    for literal in ADJACENT.finditer(text):
        joins = end is not None and not text[end : literal.start()].strip()
        words = literal[1].replace('\\"', '"').replace("\\n", "\n")
        if joins:
            found[-1] += words
        else:
            found.append(words)
        end = literal.end()
    return found


def messages(guide):
    """The first column of the tables below the heading "Messages"."""
    rows = re.findall(r"^\| (.+?) \|", guide.split("\n## Messages\n")[1], re.MULTILINE)
    return [row for row in rows if row != "Message" and not row.startswith("---")]


# By which LibreOffice knows kinds of files.
FILTERS = ("Calc MS Excel 2007 XML", "MS Excel 97", "Office Open XML", "OpenDocument Spreadsheet Flat XML")


def texts_of(file):
    lines = file.read_text().splitlines()
    return literals("\n".join(line for line in lines if not line.lstrip().startswith(("//", "#include"))))


def sentences(room):
    """What is said to people in a room of the sources: texts of three words and more that begin one."""
    files = [file for file in sorted((SOURCE / "src" / room).rglob("*")) if file.suffix in (".cpp", ".h")]
    return [text for file in files for text in texts_of(file) if re.match(r"[A-Z][\w']*:? .+ ", text)]


class Guide(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.guide = (SOURCE / "docs" / "guide.md").read_text()
        cls.texts = []
        for file in sorted((SOURCE / "src").rglob("*")):
            if file.suffix in (".cpp", ".h"):
                cls.texts += texts_of(file)
        # What libraries put into messages of ours.
        cls.texts.append("Run with --help for more information.")

    def test_names_no_message_that_no_program_shows(self):
        rows = messages(self.guide)
        self.assertGreater(len(rows), 50)
        for row in rows:
            with self.subTest(row):
                for part in filter(None, (piece.strip() for piece in row.split("…"))):
                    self.assertTrue(any(part in text for text in self.texts), f"no source says {part!r}")

    def test_names_each_message_that_is_shown_in_libreoffice(self):
        pieces = [piece.strip() for row in messages(self.guide) for piece in row.split("…")]
        pieces = [piece for piece in pieces if len(piece) > 10]
        shown = [text for text in sentences("libreoffice") if text not in FILTERS]
        shown += [text for text in sentences("adapters/calc") if text.startswith("The document")]
        self.assertGreater(len(shown), 20)
        for text in shown:
            with self.subTest(text):
                self.assertTrue(any(piece in text or text.strip() in piece for piece in pieces), f"the guide lacks {text!r}")

    def lines(self, start):
        """The command lines of guide and README that begin so, with mirelo in place of ./run."""
        found = []
        for page in (self.guide, (SOURCE / "README.md").read_text()):
            for block in re.findall(r"^```\n(.*?)^```", page, re.MULTILINE | re.DOTALL):
                for line in block.replace("./run ", "mirelo ").splitlines():
                    if line.startswith(start):
                        found.append(re.split(r"\s{2,}", line, maxsplit=1)[0])
        return found

    def mirelo(self, folder, *words):
        environment = {**os.environ, "HOME": str(folder), "XDG_DATA_HOME": ""}
        command = [BUILD / "bin" / "mirelo", *words]
        return subprocess.run(command, cwd=folder, env=environment, capture_output=True, text=True, timeout=100)

    def test_keeps_the_histories_and_charts_that_its_lines_promise(self):
        lines = [line for line in self.lines("mirelo run ") if "--history" in line or "--charts" in line]
        self.assertGreaterEqual(len(lines), 3)
        for line in lines:
            with self.subTest(line), tempfile.TemporaryDirectory() as name, StandIn(BUILD / "bin") as tracker:
                folder = pathlib.Path(name)
                more = ["--http-port", tracker.http_port, "--for", "2s"]
                day = self.mirelo(folder, *shlex.split(line)[1:], *more)
                self.assertEqual(day.returncode, 0, day.stderr)
                for ticker in ("MSFT", "IBM"):
                    sheet = self.mirelo(folder, "show", "quotes.xlsx", f"Quotes_Vertical({ticker})").stdout
                    self.assertRegex(sheet, r"Last.*LastVolume")
                    self.assertRegex(sheet, r"\d\.\d\d")
                charts = (folder / "quotes.xlsx").read_bytes().count(b"xl/charts/chart")
                self.assertEqual(charts > 0, "--charts" in line)

    def test_answers_the_questions_that_it_puts_to_the_files_of_a_day(self):
        queries = self.lines("sqlite3 ")
        self.assertGreaterEqual(len(queries), 4)
        days = [line for line in self.lines("mirelo run ") if line.count("--also") == 2]
        self.assertEqual(len(days), 1)
        with tempfile.TemporaryDirectory() as name, StandIn(BUILD / "bin") as tracker:
            folder = pathlib.Path(name)
            more = ["--http-port", tracker.http_port, "--set", "Seconds=1", "--for", "3s"]
            more += ["--columns", "Ticker,Last,Volume,LastVolume"]
            day = self.mirelo(folder, *shlex.split(days[0])[1:], *more)
            self.assertEqual(day.returncode, 0, day.stderr)
            for query in queries:
                with self.subTest(query):
                    answer = subprocess.run(shlex.split(query), cwd=folder, capture_output=True, text=True, timeout=100)
                    self.assertEqual(answer.stderr, "")
                    self.assertRegex(answer.stdout, r"MSFT|\d\.\d|\d{4}-\d\d-\d\dT")
                    for ticker in ("MSFT", "IBM"):
                        if "GROUP BY Ticker" in query:
                            self.assertIn(ticker, answer.stdout)

    def test_has_its_exports_leave_what_it_says(self):
        lines = self.lines("mirelo export quotes.xlsx")
        self.assertGreaterEqual(len(lines), 5)
        with tempfile.TemporaryDirectory() as name, StandIn(BUILD / "bin") as tracker:
            folder = pathlib.Path(name)
            once = ["--http-port", tracker.http_port, "--set", "UpdateEvery=0"]
            day = self.mirelo(folder, "run", "--tickers", "MSFT,IBM", "--history", *once)
            self.assertEqual(day.returncode, 0, day.stderr)
            for line in lines:
                with self.subTest(line):
                    told = self.mirelo(folder, *shlex.split(line)[1:])
                    self.assertEqual(told.returncode, 0, told.stderr)
                    output = re.search(r"--output (\S+)", line)
                    left = (folder / output[1]).read_bytes() if output else told.stdout.encode()
                    self.assertRegex(left, rb'MSFT|"Last":\d')

    def test_links_to_files_that_there_are(self):
        for page in (SOURCE / "docs" / "guide.md", SOURCE / "README.md", SOURCE / "examples" / "README.md"):
            for target in re.findall(r"\]\(([^)#:]+)\)", page.read_text()):
                with self.subTest(f"{page.name}: {target}"):
                    self.assertTrue((page.parent / target).exists())

    def test_links_to_headings_that_there_are(self):
        headings = {heading.lower().replace(" ", "-") for heading in re.findall(r"^##+ (.+)$", self.guide, re.MULTILINE)}
        for target in re.findall(r"\]\(#([^)]+)\)", self.guide):
            self.assertIn(target, headings)


if __name__ == "__main__":
    unittest.main(verbosity=2)
