#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/regional_format.h"

namespace mirelo {

// The longest number at the start of the text, with "." as the point, an exponent (E or D) and &H / &O forms;
// blanks, tabs and line feeds are passed over wherever they stand. 0 when there is none. Never an error: a
// number too large is infinite.
double Val(std::string_view text);

// The number that the whole text is, as a person of this region writes it: a sign in front or behind, group
// separators behind the first digit, decimal separator, exponent (E or D), white space around. &H and &O
// forms carry no sign of their own: up to 16 bits they are a 16-bit integer, up to 32 bits (or with a
// trailing &) a 32-bit one, so "&HFFFF" is -1. A currency sign is not taken. Nothing for any other text, and
// for a number beyond the range of a double.
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

// A double as automation prints it: up to 15 significant digits, no zeros at the end, "." as the point. The
// exponent form ("1.5E+20", "1E-05", "3.33333333333333E-02") is used from 1E+15 up, below 1E-4, and where the
// digits of a number below 1 would need more than 15 decimal places.
std::string NumberText(double value);
std::string NumberText(std::int32_t value);

}  // namespace mirelo
