#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace mirelo::spreadsheet {

// Number format codes in their United States form, such as "#,##0.00;[Red]-0" or "mm/dd/yyyy".

// Error 1004 for a text that cannot be read as a code: more than four sections, quotes or brackets not
// closed, letters besides those that mean something; and for one that is not fit to be kept.
void CheckFormatCode(std::string_view code);

// Whether a file can carry the code: at most 127 bytes without control characters.
bool CanBeKept(std::string_view code);

// Whether numbers in this format show as dates or times.
bool IsDateFormat(std::string_view code);

// How values of cells with a number format are read and typed.
enum class FormatKind : std::uint8_t { General, Text, Date, Other };
FormatKind KindOfFormat(std::string_view code);

// The sections between the ";" that are not quoted.
std::vector<std::string_view> FormatSections(std::string_view code);

// The length of the item at the start of `code` that is taken as a whole, whatever letters are in it: "quoted
// text", \x, _x, *x or [bracketed]; 0 when the code starts otherwise, and npos for an item that is not
// closed.
std::size_t LiteralLength(std::string_view code);

// The format code that files know by this number. Nothing for numbers without one code of their own.
std::optional<std::string_view> BuiltInFormat(std::int32_t number);
std::optional<std::uint8_t> BuiltInFormatNumber(std::string_view code);

}  // namespace mirelo::spreadsheet
