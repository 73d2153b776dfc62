#pragma once

#include <string>
#include <vector>

#include "terminal/shown_text.h"

namespace mirelo::app {

// Quotes as text for other programs. Both end each record with a line feed.

// RFC 4180: fields in quotes when they hold a comma or a quote. Fields are escaped
// (automation/visible_text.h), so that a record is one line without controls, and can be read back exactly.
terminal::ShownText CsvLine(const std::vector<std::string>& fields);

// One object a quote, the column names as keys; what reads as a number is one, an empty cell is null.
// Controls are escaped as JSON has it.
terminal::ShownText JsonLine(const std::vector<std::string>& columns, const std::vector<std::string>& row);

}  // namespace mirelo::app
