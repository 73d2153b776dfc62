#include "adapters/calc/objects/range_value.h"

#include <algorithm>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/calc/objects/block_change.h"
#include "adapters/calc/objects/block_formats.h"
#include "adapters/calc/objects/cell_deletion.h"
#include "adapters/calc/objects/comment_object.h"
#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/properties.h"
#include "adapters/calc/objects/row_heights.h"
#include "automation/text.h"
#include "host/excel/range.h"
#include "spreadsheet/format_code.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/typed/cell_input.h"
#include "spreadsheet/value_table.h"

namespace mirelo::calc {

using namespace spreadsheet;
using css::uno::Sequence;

namespace {

using Rows = Sequence<Sequence<Any>>;

constexpr sal_Int32 kWhatCellsHold = css::sheet::CellFlags::VALUE | css::sheet::CellFlags::DATETIME |
                                     css::sheet::CellFlags::STRING | css::sheet::CellFlags::FORMULA;

// Texts for single cells, gathered to be laid in runs of rows.
class Runs {
 public:
  void Add(std::int32_t row, std::int32_t column, std::string_view text) {
    if (!runs_.empty()) {
      auto& [area, same] = runs_.back();
      if (same == text && area.first_column == column && area.last_row == row - 1) {
        area.last_row = row;
        return;
      }
    }
    runs_.emplace_back(Area::Cell(row, column), text);
  }

  template <class Visit>
  void ForEach(const CellBlock& block, Visit&& visit) const {
    for (const auto& [area, text] : runs_) visit(block.At(area), text);
  }

 private:
  std::vector<std::pair<Area, std::string>> runs_;
};

// Calc gives a cell the format of texts when a text comes in that could be read as something else.
bool MayBeTakenForANumber(const std::string& text, NumberFormats& formats) {
  return text.find_first_of("0123456789") != std::string::npos || formats.IsNameOfBoolean(text);
}

// What becomes of values in the cells of a block: what goes into them all at once, and behind that their
// number formats and errors.
class Writing {
 public:
  explicit Writing(const CellBlock& block) : block_(block), formats_(block), data_(block.area.Rows()) {}

  void Put(const ValueTable& values) {
    const Area& area = block_.area;
    Sequence<Any>* rows = data_.getArray();
    for (std::int32_t row = 0; row < area.Rows(); ++row) rows[row].realloc(area.Columns());
    for (std::int32_t column = 0; column < area.Columns(); ++column) {
      for (std::int32_t row = 0; row < area.Rows(); ++row) {
        rows[row].getArray()[column] =
            Input(values.At(row, column), area.first_row + row, area.first_column + column);
      }
    }
  }

  void Write() const {
    HeldHeights heights(block_);
    WriteContents();
    if (heights.AreHeld() && MayChangeHeights()) heights.Fit();
  }

 private:
  void WriteContents() const {
    WriteData();
    NumberFormats& formats = block_.document().Formats();
    const Document& document = block_.document();
    wishes_.ForEach(block_, [&](const CellBlock& cells, const std::string& code) {
      document.StayAside();
      formats.Put(cells.Properties(), code);
    });
    booleans_.ForEach(block_, [&](const CellBlock& cells, const std::string&) {
      document.StayAside();
      cells.Properties().Set("NumberFormat", formats.BooleanKey());
    });
    errors_.ForEach(block_, [&](const CellBlock& cells, const std::string& error) {
      document.StayAside();
      const rtl::OUString formula = OfficeText("=" + error);
      Sequence<Sequence<rtl::OUString>> formulas(cells.area.Rows());
      std::fill_n(formulas.getArray(), formulas.getLength(), Sequence<rtl::OUString>(&formula, 1));
      As<css::sheet::XCellRangeFormula>(cells.Cells())->setFormulaArray(formulas);
    });
  }

  // To fit rows takes as long as to write some hundred quotes, and next to no quote changes a height.
  bool MayChangeHeights() const {
    const bool is_first = block_.sheet->IsFirstWriteTo(block_.area.first_row, block_.area.last_row);
    return is_first || block_.sheet->HasTallTexts() ||
           block_.Properties().Common<bool>("IsTextWrapped").value_or(true);
  }

  // Never nothing, of which Calc dies: an empty text leaves the cell empty.
  Any Input(const Variant* value, std::int32_t row, std::int32_t column) {
    if (value == nullptr) {
      errors_.Add(row, column, ErrorText(CellError::NotAvailable));
      return Any(rtl::OUString());
    }
    const NumberFormats::Format& format = formats_.At(row, column);
    const TypedValue input = CellInput(*value, format.kind, RegionalFormat::Standard());
    if (const double* number = input.value.IfNumber()) {
      if (format.kind == FormatKind::General && !input.number_format.empty()) {
        wishes_.Add(row, column, input.number_format);
      } else if (format.is_boolean) {
        wishes_.Add(row, column, format.code);
      }
      return Any(IsShownAsDate(format, input.number_format) ? InDocument(*number) : *number);
    }
    if (const bool* boolean = input.value.IfBoolean()) {
      if (!format.is_boolean) booleans_.Add(row, column, "");
      return Any(*boolean ? 1.0 : 0.0);
    }
    if (const CellError* error = input.value.IfError()) {
      errors_.Add(row, column, ErrorText(*error));
      return Any(rtl::OUString());
    }
    if (const std::string* text = input.value.IfText()) {
      if (format.kind != FormatKind::Text && MayBeTakenForANumber(*text, block_.document().Formats()))
        wishes_.Add(row, column, format.code);
      if (text->find('\n') != std::string::npos) block_.sheet->NoteTallText();
      return Any(OfficeText(*text));
    }
    return Any(rtl::OUString());
  }

  static bool IsShownAsDate(const NumberFormats::Format& format, std::string_view wished) {
    if (format.kind != FormatKind::General) return format.kind == FormatKind::Date;
    return !wished.empty() && KindOfFormat(wished) == FormatKind::Date;
  }

  double InDocument(double number) {
    if (!first_day_) first_day_ = block_.document().FirstDay();
    return number < 1 ? number : number - *first_day_;  // a time of the day has no day
  }

  // Calc takes the comments off cells that are written as a block.
  void WriteData() const {
    const AreaSet commented = CommentedCells(block_);
    AreaSet parts{block_.area};
    for (const Area& cells : commented) parts = Without(parts, cells);
    for (const Area& part : parts) {
      if (part != parts.front()) block_.document().StayAside();
      As<css::sheet::XCellRangeData>(block_.At(part).Cells())->setDataArray(DataOf(part));
    }
    for (const Area& cells : commented) {
      for (std::int32_t row = cells.first_row; row <= cells.last_row; ++row) {
        for (std::int32_t column = cells.first_column; column <= cells.last_column; ++column)
          WriteCell(row, column);
      }
    }
  }

  Rows DataOf(const Area& part) const {
    if (part == block_.area) return data_;
    Rows data(part.Rows());
    for (std::int32_t row = 0; row < part.Rows(); ++row) {
      const Any* first = data_[part.first_row - block_.area.first_row + row].getConstArray() +
                         (part.first_column - block_.area.first_column);
      data.getArray()[row] = Sequence<Any>(first, part.Columns());
    }
    return data;
  }

  void WriteCell(std::int32_t row, std::int32_t column) const {
    const CellBlock block = block_.At(Area::Cell(row, column));
    const Any& value = data_[row - block_.area.first_row][column - block_.area.first_column];
    const auto cell = block.FirstCell();
    block.document().StayAside();
    if (double number = 0; value >>= number) return cell->setValue(number);
    rtl::OUString text;
    value >>= text;
    if (text.isEmpty()) return As<css::sheet::XSheetOperation>(block.Cells())->clearContents(kWhatCellsHold);
    As<css::text::XTextRange>(cell)->setString(text);
  }

  const CellBlock& block_;
  BlockFormats formats_;
  std::optional<double> first_day_;  // unasked while there are no dates
  Rows data_;
  Runs wishes_;
  Runs booleans_;
  Runs errors_;
};

// An error comes as nothing.
Variant Output(const Any& value, BlockFormats& formats, const CellBlock& block, CellPlace place) {
  if (rtl::OUString text; value >>= text) return text.isEmpty() ? Variant() : Variant(TextOf(text));
  if (double number = 0; value >>= number) {
    const NumberFormats::Format& format = formats.At(place.row, place.column);
    if (format.is_boolean) return number != 0;
    const bool has_day = format.kind == FormatKind::Date && (number < 0 || number >= 1);
    return CellOutput(CellValue(has_day ? number + block.document().FirstDay() : number), format.kind);
  }
  const CellBlock cell = block.At(Area::Cell(place.row, place.column));
  return TextOf(As<css::text::XTextRange>(cell.FirstCell())->getString());
}

}  // namespace

Variant ReadValue(const CellBlock& block) {
  const Area& area = block.area;
  if (area.Cells() > kMostCells) throw Errors::OutOfMemory();
  const Rows data = As<css::sheet::XCellRangeData>(block.Cells())->getDataArray();
  BlockFormats formats(block);
  if (area.Cells() == 1) return Output(data[0][0], formats, block, {area.first_row, area.first_column});
  VariantArray values(1, area.Rows(), 1, area.Columns());
  for (std::int32_t row = 1; row <= area.Rows(); ++row) {
    for (std::int32_t column = 1; column <= area.Columns(); ++column) {
      const CellPlace place{area.first_row + row - 1, area.first_column + column - 1};
      values(row, column) = Output(data[row - 1][column - 1], formats, block, place);
    }
  }
  return values;
}

void WriteValue(const CellBlock& block, const Variant& value) {
  if (value.IsObject()) {
    const auto range = std::dynamic_pointer_cast<host::excel::Range>(value.AsObject());
    if (range == nullptr) throw Errors::TypeMismatch();
    return WriteValue(block, range->Value());
  }
  ChangeCells(block, [&] {
    if (value.IsEmpty()) return ClearCellContents(block);
    if (block.area.Cells() > kMostCells) throw Errors::OutOfMemory();
    const ValueTable values(value);
    values.Check(block.area.Rows(), block.area.Columns());
    Writing writing(block);
    writing.Put(values);
    writing.Write();
  });
}

}  // namespace mirelo::calc
