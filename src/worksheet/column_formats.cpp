#include "worksheet/column_formats.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "automation/runtime_error.h"
#include "diagnostics/routine.h"
#include "host/excel/constants.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/range.h"

namespace mirelo {

namespace {

using host::excel::Range;

enum class NumberKind { Price, Count, Date, Time, Change };

struct ColumnKind {
  std::string_view name;
  NumberKind kind;
};

constexpr std::array kColumnKinds{
    ColumnKind{"High", NumberKind::Price},     ColumnKind{"Low", NumberKind::Price},
    ColumnKind{"Open", NumberKind::Price},     ColumnKind{"52w Low", NumberKind::Price},
    ColumnKind{"52w High", NumberKind::Price}, ColumnKind{"Last", NumberKind::Price},
    ColumnKind{"Bid", NumberKind::Price},      ColumnKind{"Ask", NumberKind::Price},
    ColumnKind{"Volume", NumberKind::Count},   ColumnKind{"BidSize", NumberKind::Count},
    ColumnKind{"AskSize", NumberKind::Count},  ColumnKind{"LastVolume", NumberKind::Count},
    ColumnKind{"AvgTrade", NumberKind::Count}, ColumnKind{"NumTrades", NumberKind::Count},
    ColumnKind{"Date", NumberKind::Date},      ColumnKind{"Time", NumberKind::Time},
    ColumnKind{"Change", NumberKind::Change},
};

constexpr std::int32_t kRiseColor = 10;
constexpr std::int32_t kFallColor = 3;

std::string NumberFormatOf(NumberKind kind, const std::string& decimal_format) {
  switch (kind) {
    case NumberKind::Count:
      return "#,##0";
    case NumberKind::Date:
      return "mm/dd/yyyy";
    case NumberKind::Time:
      return "hh:mm:ss";
    case NumberKind::Change:
      return "+ " + decimal_format + ";- " + decimal_format;
    case NumberKind::Price:
      break;
  }
  return decimal_format;
}

std::int32_t AlignmentOf(NumberKind kind) {
  return kind == NumberKind::Price || kind == NumberKind::Count ? host::excel::xlHAlignGeneral
                                                                : host::excel::xlHAlignCenter;
}

// Cells beyond 0 in that direction get letters of that colour.
void ColorCells(Frame& frame, Range* cells, std::int32_t index, host::excel::XlFormatConditionOperator beyond,
                std::int32_t color) {
  STEP(Referred(cells).FormatConditions()->Add(host::excel::xlCellValue, beyond, "0"));
  STEP(Referred(cells).FormatConditions()->Item(index)->Font()->ColorIndex(color));
}

}  // namespace

void FormatColumn(Frame& frame, Range* cells, std::string_view name, const std::string& decimal_format) {
  const auto* const row = std::find_if(kColumnKinds.begin(), kColumnKinds.end(),
                                       [&](const ColumnKind& column) { return column.name == name; });
  if (row == kColumnKinds.end()) return;

  STEP(Referred(cells).NumberFormat(NumberFormatOf(row->kind, decimal_format)));
  STEP(Referred(cells).HorizontalAlignment(AlignmentOf(row->kind)));
  if (row->kind == NumberKind::Change) {
    STEP(Referred(cells).FormatConditions()->Delete());
    ColorCells(frame, cells, 1, host::excel::xlGreater, kRiseColor);
    ColorCells(frame, cells, 2, host::excel::xlLess, kFallColor);
  }
}

}  // namespace mirelo
