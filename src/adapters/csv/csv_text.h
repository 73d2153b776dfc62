#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/data_table.h"

namespace mirelo::csv {

// Lines of comma-separated values (RFC 4180), each with a line feed at its end.
//
// Texts are escaped (automation/visible_text.h), so that a record is one line without controls. Those that
// hold a comma or a quote stand in quotes. A text that a spreadsheet would take for a formula, as it begins
// with =, +, - or @, gets an apostrophe in front; and so does one that begins with an apostrophe, so that who
// takes one apostrophe off and reads the escapes has exactly what was written. Numbers have all their digits
// and are never quoted, and nothing is an empty field.

std::string Line(const host::DataRow& row);
std::string HeaderLine(const std::vector<host::DataColumn>& columns);

// A field in quotes where it needs them. Nothing else is done to it.
std::string Quoted(std::string_view field);

// A number with as many digits as it takes to read back the very same one, whole ones without a point.
std::string ExactNumberText(double number);

}  // namespace mirelo::csv
