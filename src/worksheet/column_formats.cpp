#include "worksheet/column_formats.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "automation/runtime_error.h"
#include "diagnostics/routine.h"
#include "host/excel/constants.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/range.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo {

namespace {

using host::excel::Range;

constexpr std::int32_t kRiseColor = 10;
constexpr std::int32_t kFallColor = 3;

// Nothing where cells keep the format that they have.
std::optional<std::string> NumberFormatOf(ColumnKind kind, const std::string& decimal_format) {
  switch (kind) {
    case ColumnKind::Price:
      return decimal_format;
    case ColumnKind::Count:
      return "#,##0";
    case ColumnKind::Date:
      return "mm/dd/yyyy";
    case ColumnKind::Time:
      return "hh:mm:ss";
    case ColumnKind::Change:
      return "+ " + decimal_format + ";- " + decimal_format;
    case ColumnKind::Ticker:
    case ColumnKind::Mark:
      break;
  }
  return std::nullopt;
}

std::int32_t AlignmentOf(ColumnKind kind) {
  return kind == ColumnKind::Price || kind == ColumnKind::Count ? host::excel::xlHAlignGeneral
                                                                : host::excel::xlHAlignCenter;
}

// Cells beyond 0 in that direction get a font of that colour.
void ColorCells(Frame& frame, Range* cells, std::int32_t index, host::excel::XlFormatConditionOperator beyond,
                std::int32_t color) {
  STEP(Referred(cells).FormatConditions()->Add(host::excel::xlCellValue, beyond, "0"));
  STEP(Referred(cells).FormatConditions()->Item(index)->Font()->ColorIndex(color));
}

}  // namespace

void FormatColumn(Frame& frame, Range* cells, std::string_view name, const std::string& decimal_format) {
  const auto* const row =
      std::ranges::find(kColumnVocabulary, name, [](const ColumnRow& column) { return column.name; });
  if (row == kColumnVocabulary.end()) return;
  const auto number_format = NumberFormatOf(row->kind, decimal_format);
  if (!number_format) return;

  STEP(Referred(cells).NumberFormat(*number_format));
  STEP(Referred(cells).HorizontalAlignment(AlignmentOf(row->kind)));
  if (row->kind == ColumnKind::Change) {
    STEP(Referred(cells).FormatConditions()->Delete());
    ColorCells(frame, cells, 1, host::excel::xlGreater, kRiseColor);
    ColorCells(frame, cells, 2, host::excel::xlLess, kFallColor);
  }
}

}  // namespace mirelo
