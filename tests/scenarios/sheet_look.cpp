#include "scenarios/sheet_look.h"

#include <cstdint>
#include <memory>
#include <set>

#include "automation/variant.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/shape.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/conditions_of.h"

namespace mirelo::testing {

namespace {

using namespace host::excel;

// "; name value" for what is not as on an empty sheet.
std::string Unless(const Variant& usual, const char* name, const Variant& value) {
  return value == usual ? "" : std::string("; ") + name + " " + value.ToText();
}

std::string LineOf(Range& cell, XlBordersIndex edge, const char* name) {
  const auto line = cell.Borders(edge);
  if (line->LineStyle() == Variant(std::int32_t{xlLineStyleNone})) return "";
  return std::string("; ") + name + " " + line->LineStyle().ToText() + "/" + line->Weight().ToText() + "/" +
         line->ColorIndex().ToText();
}

std::string CommentOf(Range& cell) {
  const auto comment = cell.Comment();
  if (!comment) return "";
  const auto shape = comment->Shape();
  return "; comment \"" + comment->Text() + "\" " + Variant(shape->Width()).ToText() + " x " +
         Variant(shape->Height()).ToText();
}

std::string LookOfCell(Range& cell) {
  std::string look;
  if (const Variant value = cell.Value(); !value.IsEmpty())
    look += "; " + std::string(value.TypeName()) + " \"" + value.ToText() + "\"";
  look += Unless("General", "format", cell.NumberFormat());
  look += Unless(std::int32_t{xlHAlignGeneral}, "aligned", cell.HorizontalAlignment());
  look += Unless(false, "bold", cell.Font()->Bold());
  look += Unless(std::int32_t{xlColorIndexAutomatic}, "letters", cell.Font()->ColorIndex());
  look += Unless(std::int32_t{xlColorIndexNone}, "fill", cell.Interior()->ColorIndex());
  look += LineOf(cell, xlEdgeLeft, "left");
  look += LineOf(cell, xlEdgeTop, "top");
  look += LineOf(cell, xlEdgeBottom, "bottom");
  look += LineOf(cell, xlEdgeRight, "right");
  for (const std::string& condition : ConditionsOf(cell)) look += "; if " + condition;
  look += CommentOf(cell);
  return look.empty() ? "" : look.substr(2);
}

}  // namespace

SheetLook LookOf(Range& cells) {
  SheetLook looks;
  for (std::int32_t row = 1; row <= cells.Rows()->Count(); ++row) {
    for (std::int32_t column = 1; column <= cells.Columns()->Count(); ++column) {
      const std::string look = LookOfCell(*cells.Cells(row, column));
      if (!look.empty()) looks["row " + std::to_string(row) + " column " + std::to_string(column)] = look;
    }
  }
  return looks;
}

SheetLook LookOf(Worksheet& sheet) {
  const auto last = sheet.Cells()->SpecialCells(xlCellTypeLastCell);
  SheetLook looks;
  for (std::int32_t row = 1; row <= last->Row() + 1; ++row) {
    for (std::int32_t column = 1; column <= last->Column() + 1; ++column) {
      const auto cell = sheet.Cells(row, column);
      if (std::string look = LookOfCell(*cell); !look.empty())
        looks[cell->Address(false, false)] = std::move(look);
    }
  }
  return looks;
}

SheetLook LookOf(Workbook& book) {
  SheetLook looks;
  for (std::int32_t i = 1; i <= book.Worksheets()->Count(); ++i) {
    const auto sheet = book.Worksheets()->Item(i);
    looks["sheet " + std::to_string(i)] = sheet->Name();
    for (auto& [address, look] : LookOf(*sheet)) looks[sheet->Name() + "!" + address] = look;
  }
  return looks;
}

std::vector<std::string> Differences(const SheetLook& before, const SheetLook& after) {
  std::set<std::string> addresses;
  for (const auto& [address, look] : before) addresses.insert(address);
  for (const auto& [address, look] : after) addresses.insert(address);
  const auto in = [](const SheetLook& looks, const std::string& address) {
    const auto found = looks.find(address);
    return found == looks.end() ? "nothing" : found->second;
  };
  std::vector<std::string> differences;
  for (const std::string& address : addresses) {
    if (in(before, address) != in(after, address))
      differences.push_back(address + ": " + in(before, address) + " -> " + in(after, address));
  }
  return differences;
}

}  // namespace mirelo::testing
