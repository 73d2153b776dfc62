"""Shows a workbook as openpyxl reads it: a line for each cell that has a value or a format of its own, and for each
comment, border, condition, and column of a width of its own.

Charts of a sheet stand behind its cells.

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


def show_border(cell):
    sides = ("left", "right", "top", "bottom")
    lines = [(side, getattr(cell.border, side)) for side in sides]
    return " ".join(f"{side}={line.style},{color(line.color)}" for side, line in lines if line and line.style)


def show_rule(area, rule):
    look = rule.dxf.font if rule.dxf else None
    return "\t".join(("rule", str(area.sqref), rule.type, rule.operator, ",".join(rule.formula), color(look.color)))


def fill(properties):
    return properties.solidFill.srgbClr if properties is not None and properties.solidFill else "-"


def line(properties):
    return fill(properties.line) if properties is not None and properties.line else "-"


def show_looks(marker, properties):
    inner = marker.spPr if marker is not None else properties
    return "\t".join((fill(inner), line(inner), line(properties)))


def show_series(series):
    symbol = f"{series.marker.symbol},{series.marker.size:g}" if series.marker.symbol else "-"
    numbers = series.val.numRef.numCache
    yield "\t".join(("series", series.val.numRef.f, symbol, show_looks(series.marker, series.spPr)))
    yield "values\t" + ",".join(f"{point.v:g}" for point in numbers.pt)
    for point in series.dPt:
        yield f"point\t{point.idx}\t{show_looks(point.marker, point.spPr)}"


def show_chart(chart):
    title = "".join(run.t for run in chart.title.tx.rich.p[0].r) if chart.title else "-"
    origin = chart.anchor._from
    yield "\t".join(("chart", type(chart).__name__, title, f"{origin.col},{origin.row}"))
    for series in chart.series:
        yield from show_series(series)


def main(file):
    book = openpyxl.load_workbook(file, data_only=True)
    print("active\t" + book.active.title)
    for sheet in book.worksheets:
        print("sheet\t" + sheet.title)
        for row in sheet.iter_rows():
            for cell in row:
                if cell.value is not None or cell.has_style:
                    print(show(cell))
                if show_border(cell):
                    print(f"border\t{cell.coordinate}\t{show_border(cell)}")
                if cell.comment is not None:
                    print(f"comment\t{cell.coordinate}\t{cell.comment.text!r}")
        for area in sheet.conditional_formatting:
            for rule in area.rules:
                print(show_rule(area, rule))
        for name, column in sorted(sheet.column_dimensions.items()):
            if column.customWidth:
                print(f"width\t{name}\t{column.width:.2f}")
        for chart in sheet._charts:
            print("\n".join(show_chart(chart)))
    for sheet in book.chartsheets:
        print("chart sheet\t" + sheet.title)


if __name__ == "__main__":
    main(sys.argv[1])
