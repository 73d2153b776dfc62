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

enum class Kind { Price, Count, Date, Time, Change };

struct ColumnKind {
  std::string_view name;
  Kind kind;
};

constexpr std::array kColumnKinds{
    ColumnKind{"High", Kind::Price},     ColumnKind{"Low", Kind::Price},
    ColumnKind{"Open", Kind::Price},     ColumnKind{"52w Low", Kind::Price},
    ColumnKind{"52w High", Kind::Price}, ColumnKind{"Last", Kind::Price},
    ColumnKind{"Bid", Kind::Price},      ColumnKind{"Ask", Kind::Price},
    ColumnKind{"Volume", Kind::Count},   ColumnKind{"BidSize", Kind::Count},
    ColumnKind{"AskSize", Kind::Count},  ColumnKind{"LastVolume", Kind::Count},
    ColumnKind{"AvgTrade", Kind::Count}, ColumnKind{"NumTrades", Kind::Count},
    ColumnKind{"Date", Kind::Date},      ColumnKind{"Time", Kind::Time},
    ColumnKind{"Change", Kind::Change},
};

constexpr std::int32_t kRiseColor = 10;
constexpr std::int32_t kFallColor = 3;

std::string NumberFormatOf(Kind kind, const std::string& decimal_format) {
  switch (kind) {
    case Kind::Count:
      return "#,##0";
    case Kind::Date:
      return "mm/dd/yyyy";
    case Kind::Time:
      return "hh:mm:ss";
    case Kind::Change:
      return "+ " + decimal_format + ";- " + decimal_format;
    case Kind::Price:
      break;
  }
  return decimal_format;
}

std::int32_t AlignmentOf(Kind kind) {
  return kind == Kind::Price || kind == Kind::Count ? host::excel::xlHAlignGeneral
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
  if (row->kind == Kind::Change) {
    STEP(Referred(cells).FormatConditions()->Delete());
    ColorCells(frame, cells, 1, host::excel::xlGreater, kRiseColor);
    ColorCells(frame, cells, 2, host::excel::xlLess, kFallColor);
  }
}

}  // namespace mirelo
