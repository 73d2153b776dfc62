"""Writes a workbook as a person might keep one: much of it is nothing that a table of quotes needs.

usage: write_sheets_of_a_person.py FILE
"""

import base64
import sys

import openpyxl
from openpyxl.chart import BarChart, LineChart, Reference
from openpyxl.comments import Comment
from openpyxl.drawing.image import Image
from openpyxl.formatting.rule import ColorScaleRule
from openpyxl.styles import Alignment, Border, Font, NamedStyle, PatternFill, Side
from openpyxl.workbook.defined_name import DefinedName
from openpyxl.worksheet.datavalidation import DataValidation
from openpyxl.worksheet.table import Table

DOT = base64.b64decode(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8BQDwAEhQGAhKmMIQAAAABJRU5ErkJggg=="
)


class Dot(Image):
    """A picture of one pixel; the library's own class needs another library to measure one."""

    def __init__(self):
        self.width = self.height = 20
        self.format = "png"
        self.anchor = "G2"

    def _data(self):
        return DOT


def fill_portfolio(sheet):
    sheet.title = "Portfolio"
    sheet.merge_cells("A1:C1")
    sheet["A1"] = "What I hold"
    sheet["A1"].font = Font(name="Arial", size=16, italic=True, color="FF7030A0")
    sheet["A1"].alignment = Alignment(horizontal="center", wrap_text=True)
    for row, (ticker, shares, price) in enumerate((("MSFT", 100, 28.35), ("IBM", 50, 143.63)), 3):
        sheet.cell(row, 1, ticker)
        sheet.cell(row, 2, shares)
        sheet.cell(row, 3, price).number_format = '#,##0.00 "$"'
        sheet.cell(row, 4, f"=B{row}*C{row}").fill = PatternFill("lightGrid", fgColor="FFFFC000")
    sheet["D5"] = "=SUM(D3:D4)*Rate"
    sheet["D5"].border = Border(top=Side("double"))
    sheet["A3"].comment = Comment("bought 1999", "A. Person")
    sheet["A4"].hyperlink = "https://example.com/ibm"
    choice = DataValidation(type="list", formula1='"MSFT,IBM,DELL"')
    choice.add("A3:A9")
    sheet.add_data_validation(choice)
    sheet.conditional_formatting.add("D3:D4", ColorScaleRule("min", None, "FFFF0000", "max", None, "FF00FF00"))
    sheet.freeze_panes = "B3"
    sheet.column_dimensions["A"].width = 22.5
    sheet.row_dimensions[7].outlineLevel = 1
    sheet.sheet_properties.tabColor = "FF00B050"
    sheet.sheet_view.zoomScale = 85
    sheet.sheet_view.tabSelected = True
    sheet.page_setup.orientation = "landscape"
    sheet.print_area = "A1:D5"
    sheet.print_title_rows = "1:2"
    sheet.oddFooter.center.text = "&P"
    bars = BarChart()
    bars.title = "Shares"
    bars.add_data(Reference(sheet, min_col=2, min_row=3, max_row=4))
    sheet.add_chart(bars, "F6")
    sheet.add_image(Dot())


def fill_more(book):
    notes = book.create_sheet("Notes")
    notes["A1"] = "=Portfolio!D5"
    notes["A1"].style = NamedStyle("Money", number_format="0.000")
    notes.append(["Name", "Value"])
    notes.append(["a", 1])
    notes.add_table(Table(displayName="Things", ref="A2:B3"))
    notes.protection.sheet = True
    hidden = book.create_sheet("Hidden")
    hidden["B2"] = "secret"
    hidden.sheet_state = "veryHidden"
    lines = LineChart()
    lines.add_data(Reference(book["Portfolio"], min_col=3, min_row=3, max_row=4))
    book.create_chartsheet("Prices over time").add_chart(lines)


def main(file):
    book = openpyxl.Workbook()
    fill_portfolio(book.active)
    fill_more(book)
    book.defined_names.append(DefinedName("Rate", attr_text="Portfolio!$F$1"))
    book["Portfolio"]["F1"] = 0.5
    book.active = 0
    book.save(file)


if __name__ == "__main__":
    main(sys.argv[1])
