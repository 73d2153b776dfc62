#pragma once

#include <cstddef>
#include <string>

namespace mirelo::spreadsheet {

// A number that is not negative, with this many decimals. It is rounded as people round, halves up, and from
// the 15 significant digits that the spreadsheet shows of a number: 2.675 becomes 2.68, although its nearest
// binary number lies a little lower. "inf" and "nan" for what is not finite.
std::string FixedDecimal(double number, std::size_t decimals);

}  // namespace mirelo::spreadsheet
