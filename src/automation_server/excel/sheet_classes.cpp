#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "automation_server/excel/tables.h"
#include "automation_server/rows.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/display_format.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/shapes.h"
#include "host/excel/worksheet.h"

namespace mirelo::automation_server::excel {

using host::excel::Range;
using host::excel::Worksheet;
using host::excel::XlSearchDirection;
using host::excel::XlSearchOrder;

namespace {

using RangePtr = std::shared_ptr<Range>;
constexpr std::int32_t kMatchPart = 2;  // the one way in which these cells are searched

// "A1:B2", or what lies between two corners, which are addresses or ranges.
RangePtr RangeOf(Worksheet& sheet, const Variant& first, const Variant& last) {
  if (last.IsEmpty() && !first.IsObject()) return sheet.Range(first.ToText());
  if (!first.IsObject()) return sheet.Range(first.ToText(), last.ToText());
  const auto corner = Crossing<Range>::From(first);
  return sheet.Range(*corner, last.IsEmpty() ? *corner : *Crossing<Range>::From(last));
}

RangePtr RowsOf(Worksheet& sheet, const Variant& index) {
  if (index.IsEmpty()) return sheet.Rows();
  if (const std::string* rows = index.IfText()) return sheet.Rows(*rows);
  return sheet.Rows()->Item(index.ToInt32());
}

RangePtr ColumnsOf(Worksheet& sheet, const Variant& index) {
  if (index.IsEmpty()) return sheet.Columns();
  if (const std::string* columns = index.IfText()) return sheet.Columns(*columns);
  return sheet.Columns()->Item(index.ToInt32());
}

RangePtr ItemOf(Range& range, const Variant& row, const Variant& column) {
  if (column.IsEmpty()) return range.Item(row.ToInt32());
  return range.Item(row.ToInt32(), column.ToInt32());
}

// What a range's own name stands for: its value, or with numbers one of its cells.
Variant ValueOrItem(Range& range, const Variant& row, const Variant& column) {
  if (row.IsEmpty() && column.IsEmpty()) return range.Value();
  return ItemOf(range, row, column);
}
void PutValueOrItem(Range& range, const Variant& value, const Variant& row, const Variant& column) {
  if (row.IsEmpty() && column.IsEmpty()) return range.Value(value);
  ItemOf(range, row, column)->Value(value);
}

std::string AddressOf(Range& range, bool row_absolute, bool column_absolute) {
  return range.Address(row_absolute, column_absolute);
}

// Null when no cell matches. Error 1004 for a match of whole cells, which there is none of.
RangePtr FindIn(Range& range, const std::string& what, Range& after, const Variant& /*look_in*/,
                std::int32_t look_at, XlSearchOrder order, XlSearchDirection direction) {
  if (look_at != kMatchPart) throw RuntimeError(1004, "Unable to get the Find property of the Range class");
  return range.Find(what, after, order, direction);
}

Class WorksheetClass() {
  using Self = Worksheet;
  return HandedOut<Self>("Worksheet",
                         {
                             GET_LET(Name),
                             GET(Type),
                             METHOD(Select),
                             GET(Index),
                             METHOD(Activate),
                             AsProperty(MethodRow("Range", &RangeOf, "Cell1", Optional("Cell2"))),
                             GET(Cells),
                             GET(Shapes),
                             AsProperty(MethodRow("Rows", &RowsOf, Optional("Index"))),
                             AsProperty(MethodRow("Columns", &ColumnsOf, Optional("Index"))),
                         });
}

Class RangeClass() {
  using Self = Range;
  using host::excel::xlByRows;
  using host::excel::xlNext;
  using host::excel::xlShiftUp;
  return HandedOut<Self>(
      "Range",
      {
          AsDefault(IndexedRow("_Default", &ValueOrItem, &PutValueOrItem, Optional("RowIndex"),
                               Optional("ColumnIndex"))),
          GET_LET(Value),
          GET(Text),
          GET(Cells),
          AsProperty(MethodRow("Item", &ItemOf, "RowIndex", Optional("ColumnIndex"))),
          INDEXED(Resize, "RowSize", "ColumnSize"),
          GET(Row),
          GET(Column),
          GET(Rows),
          GET(Columns),
          GET(Count),
          AsProperty(MethodRow("Address", &AddressOf, Optional("RowAbsolute", true),
                               Optional("ColumnAbsolute", true))),
          GET(Worksheet),
          INDEXED(End, "Direction"),
          METHOD(SpecialCells, "Type"),
          MethodRow("Find", &FindIn, "What", "After", Optional("LookIn"), Optional("LookAt", kMatchPart),
                    Optional("SearchOrder", xlByRows), Optional("SearchDirection", xlNext)),
          METHOD(Select),
          GET(Left),
          GET(Top),
          GET(Width),
          GET(Height),
          GET(EntireColumn),
          GET(EntireRow),
          GET_LET(ColumnWidth),
          METHOD(AutoFit),
          METHOD(Clear),
          METHOD(ClearContents),
          METHOD(Delete, Optional("Shift", xlShiftUp)),
          GET(Comment),
          METHOD(AddComment, "Text"),
          METHOD(ClearComments),
          GET_LET(NumberFormat),
          GET_LET(HorizontalAlignment),
          GET(Font),
          GET(Interior),
          INDEXED(Borders, "Index"),
          GET(FormatConditions),
          GET(DisplayFormat),
          NumberedItemsRow<Self>("_NewEnum"),
      });
}

}  // namespace

void AddSheetClasses(std::vector<Class>& classes) {
  classes.push_back(WorksheetClass());
  classes.push_back(RangeClass());
}

}  // namespace mirelo::automation_server::excel
