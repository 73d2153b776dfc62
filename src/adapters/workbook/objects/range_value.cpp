#include "adapters/workbook/objects/range_value.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/workbook/rules.h"
#include "automation/runtime_error.h"
#include "host/excel/range.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/typed/cell_input.h"
#include "spreadsheet/value_table.h"

namespace mirelo::workbook {

namespace {

// Number formats that written values ask for, gathered to be laid in runs of rows.
class FormatWishes {
 public:
  void Add(std::int32_t row, std::int32_t column, std::string_view format) {
    if (!wishes_.empty()) {
      auto& [area, wanted] = wishes_.back();
      if (wanted == format && area.first_column == column && area.last_row == row - 1) {
        area.last_row = row;
        return;
      }
    }
    wishes_.emplace_back(Area::Cell(row, column), format);
  }

  void Grant(const CellBlock& block) const {
    for (const auto& wish : wishes_) {
      ChangeStyle({block.book, block.sheet, wish.first},
                  [&](Style& style) { style.number_format = wish.second; });
    }
  }

 private:
  std::vector<std::pair<Area, std::string_view>> wishes_;
};

// Writes into one column, whose cells have the styles of `styles`.
void WriteColumn(const CellBlock& block, const ValueTable& source, std::int32_t column,
                 const StyleGrid::Rows& styles, CellColumn& target, FormatWishes& wishes) {
  const Area& area = block.area;
  const auto write_run = [&](std::int32_t first, std::int32_t last, StyleId style) {
    const FormatKind kind = block.book->styles.Kind(style);
    for (std::int32_t row = first; row <= last; ++row) {
      const Variant* value = source.At(row - area.first_row, column - area.first_column);
      if (value == nullptr) {
        target.Set(row, CellValue(CellError::NotAvailable));
        continue;
      }
      TypedValue input = CellInput(*value, kind, block.book->regional);
      if (kind == FormatKind::General && !input.number_format.empty())
        wishes.Add(row, column, input.number_format);
      target.Set(row, std::move(input.value));
    }
  };
  styles.ForEach(area.first_row, area.last_row, write_run);
}

Variant OneValue(const CellBlock& block) {
  const auto& [book, sheet, area] = block;
  const CellValue* value = sheet->cells.Find(area.first_row, area.first_column);
  if (value == nullptr) return {};
  return CellOutput(*value, book->styles.Kind(sheet->styles.At(area.first_row, area.first_column)));
}

}  // namespace

Variant ReadValue(const CellBlock& block) {
  const Area& area = block.area;
  if (area.Cells() == 1) return OneValue(block);
  if (area.Cells() > kMostCells) throw Errors::OutOfMemory();

  VariantArray values(1, area.Rows(), 1, area.Columns());
  block.sheet->cells.ForEach(area, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    const FormatKind kind = block.book->styles.Kind(block.sheet->styles.At(row, column));
    values(row - area.first_row + 1, column - area.first_column + 1) = CellOutput(value, kind);
  });
  return values;
}

void WriteValue(const CellBlock& block, const Variant& value) {
  if (value.IsObject()) {
    const auto range = std::dynamic_pointer_cast<host::excel::Range>(value.AsObject());
    if (range == nullptr) throw Errors::TypeMismatch();
    return WriteValue(block, range->Value());
  }
  if (value.IsEmpty()) return block.sheet->cells.Clear(block.area);
  if (block.area.Cells() > kMostCells) throw Errors::OutOfMemory();

  const ValueTable source(value);
  source.Check(block.area.Rows(), block.area.Columns());
  FormatWishes wishes;
  const auto write_columns = [&](std::int32_t first, std::int32_t last, const StyleGrid::Rows& styles) {
    for (std::int32_t column = first; column <= last; ++column) {
      block.sheet->cells.ChangeColumn(
          column, [&](CellColumn& target) { WriteColumn(block, source, column, styles, target, wishes); });
    }
  };
  block.sheet->styles.ForEachColumnRun(block.area.first_column, block.area.last_column, write_columns);
  wishes.Grant(block);
}

}  // namespace mirelo::workbook
