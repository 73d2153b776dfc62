"""Writes a workbook with openpyxl for the reader to read.

usage: write_with_openpyxl.py FILE
"""

import datetime
import sys

import openpyxl
from openpyxl.chart import BarChart, LineChart, PieChart, Reference
from openpyxl.chart.marker import DataPoint, Marker
from openpyxl.chart.shapes import GraphicalProperties
from openpyxl.comments import Comment
from openpyxl.formatting.rule import CellIsRule, ColorScaleRule
from openpyxl.styles import Alignment, Border, Font, PatternFill, Side


def looks(fill, line):
    properties = GraphicalProperties(solidFill=fill)
    properties.line.solidFill = line
    return properties


def line_chart(cells):
    chart = LineChart()
    chart.title = "Last"
    chart.add_data(cells)
    chart.legend = None
    series = chart.series[0]
    series.graphicalProperties.line.solidFill = "993300"
    series.graphicalProperties.line.width = 19050
    series.marker = Marker("diamond", size=6, spPr=looks("00FF00", "008000"))
    point = DataPoint(idx=2, spPr=looks(None, "FF0000"))
    point.marker = Marker("diamond", size=6, spPr=looks("0000FF", "000080"))
    series.dPt.append(point)
    return chart


def add_charts(sheet):
    for row in range(3, 10):
        sheet.cell(row, 4, row * 1.5)
    cells = Reference(sheet, min_col=4, min_row=3, max_row=9)
    sheet.add_chart(line_chart(cells), "F2")
    columns = BarChart()
    columns.add_data(cells)
    sheet.add_chart(columns, "F20")
    pie = PieChart()
    pie.title = "Shares"
    pie.add_data(cells)
    sheet.add_chart(pie, "F40")


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
    add_charts(book.create_sheet("Charts"))
    book.active = 1
    book.save(file)


if __name__ == "__main__":
    main(sys.argv[1])
