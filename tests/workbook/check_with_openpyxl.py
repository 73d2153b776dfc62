"""Shows a workbook as openpyxl reads it: a line for each cell that has a value or a format of its own.

usage: check_with_openpyxl.py FILE
"""

import sys

import openpyxl


def color(c):
    return c.rgb if c is not None and c.type == "rgb" else "-"


def show(cell):
    fill = color(cell.fill.fgColor) if cell.fill.fill_type == "solid" else "-"
    return "\t".join(
        (
            cell.coordinate,
            cell.data_type,
            repr(cell.value),
            cell.number_format,
            "bold" if cell.font.b else "-",
            color(cell.font.color),
            fill,
            cell.alignment.horizontal or "general",
        )
    )


def main(file):
    book = openpyxl.load_workbook(file, data_only=True)
    print("active\t" + book.active.title)
    for sheet in book.worksheets:
        print("sheet\t" + sheet.title)
        for row in sheet.iter_rows():
            for cell in row:
                if cell.value is not None or cell.has_style:
                    print(show(cell))
        for name, column in sorted(sheet.column_dimensions.items()):
            if column.customWidth:
                print(f"width\t{name}\t{column.width:.2f}")


if __name__ == "__main__":
    main(sys.argv[1])
