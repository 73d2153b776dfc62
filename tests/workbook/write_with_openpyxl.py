"""Writes a workbook with openpyxl for the reader to read.

usage: write_with_openpyxl.py FILE
"""

import datetime
import sys

import openpyxl
from openpyxl.styles import Alignment, Font, PatternFill


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
    book.create_sheet("Second")["C3"] = "there"
    book.active = 1
    book.save(file)


if __name__ == "__main__":
    main(sys.argv[1])
