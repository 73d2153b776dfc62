#pragma once

#include <cstdint>

namespace mirelo {

// Which rows of a vertical table its charts show: the last `points` ones, or, while the table is shorter, the
// rows to come as well. `end` is the row to which the end key leads downward from the column's header; for a
// column without data it is greater than `row_limit`. All raise error 6 where a row does not fit 32 bits.
//
// A new chart and an updated one differ by one row in one case: when the table ends in row `points` + 1, the
// updated chart begins with the row of headers.

std::int32_t LastRowOfChart(std::int32_t end, std::int32_t row_limit, std::int32_t points);
std::int32_t FirstRowOfNewChart(std::int32_t end, std::int32_t row_limit, std::int32_t points);
std::int32_t FirstRowOfUpdatedChart(std::int32_t end, std::int32_t row_limit, std::int32_t points);

}  // namespace mirelo
