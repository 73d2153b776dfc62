#include "charts/chart_rows.h"

#include <limits>

#include "automation/runtime_error.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo {

namespace {

constexpr std::int64_t kChartHeaderRow = 2;

std::int32_t Row(std::int64_t row) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (row < Limits::min() || row > Limits::max()) throw Errors::Overflow();
  return static_cast<std::int32_t>(row);
}

// Where the last rows begin; the first data row when that lies above `least`.
std::int32_t FirstRow(std::int32_t end, std::int32_t row_limit, std::int32_t points, std::int64_t least) {
  if (end > row_limit) return kFirstHistoryRow;
  const std::int32_t first = Row(std::int64_t{end} - points + 1);
  return first < least ? kFirstHistoryRow : first;
}

}  // namespace

std::int32_t LastRowOfChart(std::int32_t end, std::int32_t row_limit, std::int32_t points) {
  if (end <= row_limit && Row(std::int64_t{end} - points) >= kChartHeaderRow) return end;
  return Row(std::int64_t{points} + 1);
}

std::int32_t FirstRowOfNewChart(std::int32_t end, std::int32_t row_limit, std::int32_t points) {
  return FirstRow(end, row_limit, points, kFirstHistoryRow);
}

std::int32_t FirstRowOfUpdatedChart(std::int32_t end, std::int32_t row_limit, std::int32_t points) {
  return FirstRow(end, row_limit, points, kChartHeaderRow);
}

}  // namespace mirelo
