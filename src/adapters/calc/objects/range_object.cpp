#include "adapters/calc/objects/range_object.h"

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/text/XTextRange.hpp>

#include "adapters/calc/objects/alignment.h"
#include "adapters/calc/objects/block_change.h"
#include "adapters/calc/objects/border_lines.h"
#include "adapters/calc/objects/cell_deletion.h"
#include "adapters/calc/objects/cell_search.h"
#include "adapters/calc/objects/column_widths.h"
#include "adapters/calc/objects/comment_object.h"
#include "adapters/calc/objects/display_format_object.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/floating_objects.h"
#include "adapters/calc/objects/font_object.h"
#include "adapters/calc/objects/format_conditions_object.h"
#include "adapters/calc/objects/front.h"
#include "adapters/calc/objects/interior_object.h"
#include "adapters/calc/objects/number_formats.h"
#include "adapters/calc/objects/range_value.h"
#include "adapters/calc/objects/used_area.h"
#include "adapters/calc/objects/worksheet_object.h"
#include "spreadsheet/border_object.h"
#include "spreadsheet/column_digits.h"
#include "spreadsheet/format_code.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;

namespace {

double Points(sal_Int32 hundredths_of_millimetres) { return hundredths_of_millimetres * 72.0 / 2540; }

css::awt::Point PositionOf(const CellBlock& block) {
  return block.Properties().Get("Position", css::awt::Point());
}

}  // namespace

std::shared_ptr<Range> RangeOf(CellBlock block, RangeObject::View view) {
  return std::make_shared<RangeObject>(std::move(block), view);
}

template <class Body>
decltype(auto) RangeObject::Ask(Body&& body) const {
  return block_.document().Ask(std::forward<Body>(body));
}

template <class Body>
void RangeObject::Change(Body&& body) const {
  ChangeCells(block_, std::forward<Body>(body));
}

RangeObject::RangePtr RangeObject::At(const Area& other, View view) const {
  return RangeOf(block_.At(other), view);
}

Variant RangeObject::Value() {
  return Ask([&] { return ReadValue(block_); });
}
void RangeObject::Value(const Variant& value) { WriteValue(block_, value); }

std::string RangeObject::Text() {
  return Ask([&] { return TextOf(As<css::text::XTextRange>(block_.FirstCell())->getString()); });
}

std::shared_ptr<Worksheet> RangeObject::Worksheet() {
  return std::make_shared<WorksheetObject>(block_.sheet);
}

RangeObject::RangePtr RangeObject::End(XlDirection direction) {
  const CellPlace end = Ask([&] { return EndFrom(block_, direction); });
  return At(Area::Cell(end.row, end.column));
}

RangeObject::RangePtr RangeObject::SpecialCells(XlCellType type) {
  if (type != xlCellTypeLastCell) throw Refusals::NotTheLastCell();
  const Area used = Ask([&] { return UsedOrFormattedArea(*block_.sheet); });
  return At(Area::Cell(used.last_row, used.last_column));
}

RangeObject::RangePtr RangeObject::Find(std::string_view what, Range& after, XlSearchOrder order,
                                        XlSearchDirection direction) {
  const auto* start = dynamic_cast<const RangeObject*>(&after);
  const bool is_cell_of_this = start != nullptr && start->block_.sheet == block_.sheet &&
                               start->block_.area.Cells() == 1 &&
                               block_.area.Holds(after.Row(), after.Column());
  if (!is_cell_of_this) throw Refusals::NotACellToSearchFrom();
  const auto found = Ask([&] {
    return FindCell(block_, what, {start->block_.area.first_row, start->block_.area.first_column}, order,
                    direction);
  });
  return found ? At(Area::Cell(found->row, found->column)) : nullptr;
}

void RangeObject::Select() {
  Ask([&] {
    calc::Front& front = block_.document().Front();
    if (front.ChartSheet() != nullptr || front.Sheet() != block_.sheet) throw Refusals::CellsOfASheetBehind();
    front.Select(block_);
  });
}

double RangeObject::Left() {
  return Ask([&] { return Points(PositionOf(block_).X); });
}
double RangeObject::Top() {
  return Ask([&] { return Points(PositionOf(block_).Y); });
}

// To where the next cells begin: sizes of their own are rounded in another way.
double RangeObject::Width() {
  return Ask([&] {
    const Area& area = block_.area;
    if (area.last_column == kColumns) return Points(block_.Properties().Get("Size", css::awt::Size()).Width);
    const CellBlock next = block_.At(Area::Cell(area.first_row, area.last_column + 1));
    return Points(PositionOf(next).X - PositionOf(block_).X);
  });
}
double RangeObject::Height() {
  return Ask([&] {
    const Area& area = block_.area;
    if (area.last_row == kRows) return Points(block_.Properties().Get("Size", css::awt::Size()).Height);
    const CellBlock next = block_.At(Area::Cell(area.last_row + 1, area.first_column));
    return Points(PositionOf(next).Y - PositionOf(block_).Y);
  });
}

Variant RangeObject::ColumnWidth() {
  return Ask([&] { return DigitsOfColumns(block_); });
}

void RangeObject::ColumnWidth(double digits) {
  CheckedDigits(digits);
  Change([&] { ResizeColumns(*block_.sheet, [&] { SetDigitsOfColumns(block_, digits); }); });
}

void RangeObject::AutoFit() {
  CheckIsForColumns();
  Change([&] { ResizeColumns(*block_.sheet, [&] { FitColumns(block_); }); });
}

void RangeObject::Clear() {
  Change([&] { ClearCells(block_); });
}

void RangeObject::ClearContents() {
  Change([&] { ClearCellContents(block_); });
}

void RangeObject::Delete(XlDeleteShiftDirection shift) {
  CheckDeletes(shift);
  Change([&] { DeleteCells(block_); });
}

std::shared_ptr<host::excel::Comment> RangeObject::Comment() {
  return Ask([&] { return CommentOf(block_.At(Area::Cell(Row(), Column()))); });
}

std::shared_ptr<host::excel::Comment> RangeObject::AddComment(std::string_view text) {
  CheckHoldsComment();
  std::shared_ptr<host::excel::Comment> comment;
  Change([&] { comment = LayComment(block_, text); });
  return comment;
}

void RangeObject::ClearComments() {
  Change([&] { calc::ClearComments(block_); });
}

Variant RangeObject::NumberFormat() {
  return Ask([&]() -> Variant {
    const auto key = block_.Properties().Common<sal_Int32>("NumberFormat");
    return key ? Variant(block_.document().Formats().Of(*key).code) : Variant();
  });
}

void RangeObject::NumberFormat(std::string_view format) {
  CheckFormatCode(format);
  NumberFormats& formats = block_.document().Formats();
  const auto key = block_.document().AskAsItStands([&] { return formats.KeyToSet(format); });
  if (key) return FormatCells(block_, {{"NumberFormat", Any(*key)}});
  Change([&] { formats.Put(block_.Properties(), format); });
}

Variant RangeObject::HorizontalAlignment() {
  return Ask([&] { return AlignmentOf(block_.Properties()); });
}

void RangeObject::HorizontalAlignment(std::int32_t alignment) {
  const OfficeAlignment known = AlignmentInOffice(alignment);
  Align(block_, known);
}

std::shared_ptr<Font> RangeObject::Font() { return std::make_shared<FontObject>(block_); }
std::shared_ptr<Interior> RangeObject::Interior() { return std::make_shared<InteriorObject>(block_); }

std::shared_ptr<Border> RangeObject::Borders(XlBordersIndex index) {
  return std::make_shared<BorderObject<BorderLines>>(BorderLines(block_, index));
}

std::shared_ptr<FormatConditions> RangeObject::FormatConditions() {
  return std::make_shared<FormatConditionsObject>(block_);
}

std::shared_ptr<DisplayFormat> RangeObject::DisplayFormat() {
  return std::make_shared<DisplayFormatObject>(block_.At(Area::Cell(Row(), Column())));
}

}  // namespace mirelo::calc
