"""What the macros of examples/calc write into a sheet, in whichever language they are."""


class WrittenQuotes:
    """Of a test that has its macros' notes in `notes`."""

    separator = "."  # where they run

    def test_write_the_quotes_that_they_ask_for(self):
        self.check_asked("asked")

    def test_write_the_quotes_that_are_streamed(self):
        self.check_streamed("streamed")

    def check_asked(self, name):
        first, second = self._rows(name)
        self.assertEqual((first[0], second[0]), ("MSFT", "IBM"))
        for cell in first[1:] + second[1:]:
            self.assertRegex(cell, rf"^-?\d+([{self.separator}]\d+)?$")
        self.assertIn(self.separator, first[1] + second[1])

    def check_streamed(self, name):
        first, second = self._rows(name)
        self.assertEqual((first[0], second[0]), ("MSFT", "IBM"))
        for _, price, moment, count in (first, second):
            self.assertRegex(price, rf"^\d+([{self.separator}]\d+)?$")
            self.assertRegex(moment, r"^\d\d:\d\d:\d\d$")
            self.assertGreater(int(count), 1)

    def _rows(self, name):
        cells = self.notes[name].split("|")
        return cells[:4], cells[4:8]
