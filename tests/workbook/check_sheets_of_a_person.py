"""Shows what openpyxl finds in a workbook besides tables: one line each, that begins with the sheet's name.

usage: check_sheets_of_a_person.py FILE
"""

import sys

import openpyxl


def show(sheet):
    yield "state", sheet.sheet_state
    yield "merged", sorted(map(str, sheet.merged_cells.ranges))
    for row in sheet.iter_rows():
        for cell in row:
            if cell.value is None and not cell.has_style:
                continue
            yield cell.coordinate, cell.value, cell.number_format, cell.style
            color = cell.font.color
            yield cell.coordinate, cell.font.name, cell.font.sz, cell.font.i, color and color.type, color and color.value
            yield cell.coordinate, cell.fill.fill_type, cell.fill.fgColor.rgb, cell.border.top and cell.border.top.style
            yield cell.coordinate, cell.alignment.horizontal, cell.alignment.wrap_text
            if cell.comment:
                yield cell.coordinate, cell.comment.text
            if cell.hyperlink:
                yield cell.coordinate, cell.hyperlink.target
    for validation in sheet.data_validations.dataValidation:
        yield "validation", str(validation.sqref), validation.formula1
    for area in sheet.conditional_formatting:
        yield "rules", str(area.sqref), [rule.type for rule in area.rules]
    yield "frozen", sheet.freeze_panes, "zoom", sheet.sheet_view.zoomScale
    tab = sheet.sheet_properties.tabColor
    yield "width", sheet.column_dimensions["A"].width, "tab", tab and tab.rgb
    yield "page", sheet.page_setup.orientation, sheet.print_area, sheet.print_title_rows, sheet.oddFooter.center.text
    yield "charts", len(sheet._charts)
    yield "tables", sorted(sheet.tables), "protected", sheet.protection.sheet


def main(file):
    book = openpyxl.load_workbook(file)
    print("names", [(name.name, name.attr_text) for name in book.defined_names.definedName])
    for sheet in book.worksheets:
        for what in show(sheet):
            print(sheet.title, *map(repr, what))
    for sheet in book.chartsheets:
        print(sheet.title, "chart sheet", len(sheet._charts))


if __name__ == "__main__":
    main(sys.argv[1])
