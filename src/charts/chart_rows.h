#pragma once

#include <cstdint>

namespace mirelo {

// Which rows of a vertical table its charts show: the last `points` ones, or, while the table is shorter, the
// rows to come as well. `end` is the row at which one arrives from the column's header downward, which lies
// above `row_limit` for a column without data. All raise error 6 where a row does not fit 32 bits.
//
// A new chart and one that is brought up to date differ: when the table ends in row `points` + 1, the update
// begins with the row of headers.

std::int32_t LastRowOfChart(std::int32_t end, std::int32_t row_limit, std::int32_t points);
std::int32_t FirstRowOfNewChart(std::int32_t end, std::int32_t row_limit, std::int32_t points);
std::int32_t FirstRowOfUpdatedChart(std::int32_t end, std::int32_t row_limit, std::int32_t points);

}  // namespace mirelo
