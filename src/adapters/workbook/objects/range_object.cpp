#include "adapters/workbook/objects/range_object.h"

#include <algorithm>
#include <array>

#include "adapters/workbook/display/column_fit.h"
#include "adapters/workbook/model/column_resize.h"
#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/model/used_area.h"
#include "adapters/workbook/objects/border_lines.h"
#include "adapters/workbook/objects/cell_search.h"
#include "adapters/workbook/objects/comment_object.h"
#include "adapters/workbook/objects/display_format_object.h"
#include "adapters/workbook/objects/font_object.h"
#include "adapters/workbook/objects/format_conditions_object.h"
#include "adapters/workbook/objects/interior_object.h"
#include "adapters/workbook/objects/range_value.h"
#include "adapters/workbook/objects/worksheet_object.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/border_object.h"
#include "spreadsheet/column_digits.h"
#include "spreadsheet/display/displayed_text.h"
#include "spreadsheet/format_code.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

using namespace host::excel;

namespace {

constexpr std::array<std::int32_t, 8> kAlignments{
    xlHAlignGeneral, xlHAlignFill,        xlHAlignCenterAcrossSelection,
    xlHAlignCenter,  xlHAlignDistributed, xlHAlignJustify,
    xlHAlignLeft,    xlHAlignRight};

}  // namespace

RangeObject::RangePtr RangeObject::At(const Area& other, View view) const {
  return std::make_shared<RangeObject>(CellBlock{block_.book, block_.sheet, other}, view);
}

Variant RangeObject::Value() { return ReadValue(block_); }
void RangeObject::Value(const Variant& value) { WriteValue(block_, value); }

std::string RangeObject::Text() {
  const auto& [book, sheet, area] = block_;
  const CellValue* value = sheet->cells.Find(area.first_row, area.first_column);
  if (value == nullptr) return "";
  return DisplayedText(*value,
                       book->styles.Get(sheet->styles.At(area.first_row, area.first_column)).number_format);
}

std::shared_ptr<Worksheet> RangeObject::Worksheet() {
  return std::make_shared<WorksheetObject>(block_.book, block_.sheet);
}

RangeObject::RangePtr RangeObject::End(XlDirection direction) {
  const CellGrid& cells = block_.sheet->cells;
  switch (direction) {
    case xlDown:
      return At(Area::Cell(cells.EndDown(Row(), Column()), Column()));
    case xlUp:
      return At(Area::Cell(cells.EndUp(Row(), Column()), Column()));
    case xlToRight:
      return At(Area::Cell(Row(), cells.EndRight(Row(), Column())));
    case xlToLeft:
      return At(Area::Cell(Row(), cells.EndLeft(Row(), Column())));
  }
  throw Refusals::NotADirection();
}

RangeObject::RangePtr RangeObject::SpecialCells(XlCellType type) {
  if (type != xlCellTypeLastCell) throw Refusals::NotTheLastCell();
  const Area used = UsedArea(*block_.sheet);
  return At(Area::Cell(used.last_row, used.last_column));
}

RangeObject::RangePtr RangeObject::Find(std::string_view what, Range& after, XlSearchOrder order,
                                        XlSearchDirection direction) {
  const auto* start = dynamic_cast<const RangeObject*>(&after);
  const bool is_cell_of_this = start != nullptr && start->block_.sheet == block_.sheet &&
                               start->block_.area.Cells() == 1 &&
                               block_.area.Holds(after.Row(), after.Column());
  if (!is_cell_of_this) throw Refusals::NotACellToSearchFrom();
  const auto found = FindCell(block_, what, {after.Row(), after.Column()}, order, direction);
  return found ? At(Area::Cell(found->row, found->column)) : nullptr;
}

void RangeObject::Select() {
  if (block_.book->FrontSheet() != block_.sheet) throw Refusals::CellsOfASheetBehind();
  block_.sheet->selection = block_.area;
  block_.sheet->active_cell = {Row(), Column()};
  block_.sheet->selected_chart.reset();
  block_.sheet->selected_comment.reset();
}

double RangeObject::Left() { return WidthOfColumns(*block_.sheet, 1, Column() - 1); }
double RangeObject::Top() { return HeightOfRows(*block_.sheet, 1, Row() - 1); }

double RangeObject::Width() {
  return WidthOfColumns(*block_.sheet, block_.area.first_column, block_.area.last_column);
}

double RangeObject::Height() {
  return HeightOfRows(*block_.sheet, block_.area.first_row, block_.area.last_row);
}

Variant RangeObject::ColumnWidth() {
  const workbook::ColumnWidth& first = block_.sheet->widths.At(block_.area.first_column);
  bool are_alike = true;
  block_.sheet->widths.ForEach(block_.area.first_column, block_.area.last_column,
                               [&](std::int32_t, std::int32_t, const workbook::ColumnWidth& width) {
                                 are_alike = are_alike && width == first;
                               });
  if (!are_alike) return {};
  return first.hidden ? 0 : DigitsOfPixels(first.pixels);
}

void RangeObject::ColumnWidth(double digits) {
  const std::int32_t pixels = PixelsOfDigits(CheckedDigits(digits));
  for (std::int32_t column = block_.area.first_column; column <= block_.area.last_column; ++column)
    ResizeColumn(*block_.sheet, column, pixels);
}

void RangeObject::AutoFit() {
  CheckIsForColumns();
  FitColumns(*block_.book, *block_.sheet, block_.area);
}

void RangeObject::Clear() {
  ClearContents();
  ClearComments();
  block_.sheet->styles.Set(block_.area, kDefaultStyle);
  block_.sheet->conditions.Clear(block_.area);
}

void RangeObject::ClearContents() { block_.sheet->cells.Clear(block_.area); }

void RangeObject::Delete(XlDeleteShiftDirection shift) {
  CheckDeletes(shift);
  block_.book->DeleteCells(block_.sheet, block_.area);
}

std::shared_ptr<host::excel::Comment> RangeObject::Comment() {
  auto comment = block_.sheet->comments.Find(Row(), Column());
  if (comment == nullptr) return nullptr;
  return std::make_shared<CommentObject>(
      CommentPlace{block_.book, block_.sheet, {Row(), Column()}, std::move(comment)});
}

std::shared_ptr<host::excel::Comment> RangeObject::AddComment(std::string_view text) {
  CheckHoldsComment();
  if (Comment() != nullptr) throw Refusals::HasAComment();
  CheckCommentText(text);
  workbook::Comment comment;
  comment.text = CleanText(text);
  block_.sheet->comments.Set(Row(), Column(), std::move(comment));
  return Comment();
}

void RangeObject::ClearComments() { block_.sheet->comments.Clear(block_.area); }

Variant RangeObject::NumberFormat() {
  return CommonOf(block_, [](const Style& style) { return style.number_format; });
}

void RangeObject::NumberFormat(std::string_view format) {
  CheckFormatCode(format);
  ChangeStyle(block_, [&](Style& style) { style.number_format = format; });
}

Variant RangeObject::HorizontalAlignment() {
  return CommonOf(block_, [](const Style& style) { return style.alignment.horizontal; });
}

void RangeObject::HorizontalAlignment(std::int32_t alignment) {
  if (std::find(kAlignments.begin(), kAlignments.end(), alignment) == kAlignments.end()) {
    throw Refusals::NotAnAlignment();
  }
  ChangeStyle(block_, [&](Style& style) { style.alignment.horizontal = alignment; });
}

std::shared_ptr<Font> RangeObject::Font() { return std::make_shared<FontObject>(block_); }
std::shared_ptr<Interior> RangeObject::Interior() { return std::make_shared<InteriorObject>(block_); }

std::shared_ptr<Border> RangeObject::Borders(XlBordersIndex index) {
  return std::make_shared<BorderObject<BorderLines>>(BorderLines(block_, index));
}

std::shared_ptr<FormatConditions> RangeObject::FormatConditions() {
  return std::make_shared<FormatConditionsObject>(block_);
}

std::shared_ptr<DisplayFormat> RangeObject::DisplayFormat() { return LookOf(block_); }

}  // namespace mirelo::workbook
