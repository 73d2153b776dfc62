"""Writes a workbook with openpyxl for the reader to read.

usage: write_with_openpyxl.py FILE
"""

import datetime
import sys

import openpyxl
from openpyxl.comments import Comment
from openpyxl.formatting.rule import CellIsRule, ColorScaleRule
from openpyxl.styles import Alignment, Border, Font, PatternFill, Side


def main(file):
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "Quotes"
    sheet["A1"] = "SnapShot( 60 sec)"
    sheet["A2"] = 28.35
    sheet["A2"].number_format = "0.00"
    sheet["A3"] = datetime.datetime(2011, 1, 20, 8, 36, 13)
    sheet["A4"] = True
    sheet["A5"] = "Übergröße €"
    sheet["A6"] = "=1+1"
    sheet["A7"] = datetime.date(1900, 3, 1)
    sheet["B1"] = "header"
    sheet["B1"].font = Font(bold=True, color="FFFF0000")
    sheet["B1"].fill = PatternFill("solid", fgColor="FFC0C0C0")
    sheet["B1"].alignment = Alignment(horizontal="center")
    sheet["B1"].border = Border(bottom=Side("medium", color="FF808080"))
    sheet["B1"].comment = Comment("Charts (Last & Volume)", "A. Person", height=32, width=189)
    sheet["B2"].comment = Comment("plain", "A. Person")
    sheet.conditional_formatting.add("D3:D9", CellIsRule("greaterThan", ["0"], font=Font(color="FF008000")))
    sheet.conditional_formatting.add("D3:D9", CellIsRule("lessThan", ["0"], font=Font(color="FFFF0000")))
    sheet.conditional_formatting.add("E3:E9", ColorScaleRule())
    sheet.sheet_view.selection[0].activeCell = "C3"
    sheet.sheet_view.selection[0].sqref = "C3:D4"
    book.create_sheet("Second")["C3"] = "there"
    book.active = 1
    book.save(file)


if __name__ == "__main__":
    main(sys.argv[1])
