#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/regional_format.h"

namespace mirelo {

// The longest number at the start of the text, blanks and tabs passed over, with "." as the point, an exponent and
// &H / &O forms; 0 when there is none. Never an error.
double Val(std::string_view text);

// The number that the whole text is, as a person of this region writes it: sign in front or behind, group and
// decimal separators, exponent, &H / &O, blanks around, a currency sign is not taken. Nothing otherwise.
std::optional<double> ParseNumber(std::string_view text,
                                  const RegionalFormat& regional = RegionalFormat::Standard());
// Whether ParseNumber would give one.
bool IsNumeric(std::string_view text, const RegionalFormat& regional = RegionalFormat::Standard());

// To integers, halves to the even neighbour. Error 6 outside the type's range, and for a NaN.
std::int16_t RoundToInt16(double value);
std::int32_t RoundToInt32(double value);

// Integer arithmetic that raises error 6 instead of wrapping.
std::int32_t AddChecked(std::int32_t a, std::int32_t b);
std::int32_t MultiplyChecked(std::int32_t a, std::int32_t b);

// A double as automation prints it: up to 15 significant digits, no trailing zeros, exponent form ("1.5E+20",
// "1E-05") below 1E-4 roughly where 15 digits no longer fit and from 1E+15 up.
std::string NumberText(double value);
std::string NumberText(std::int32_t value);

}  // namespace mirelo
