#pragma once

#include <string>
#include <vector>

#include "day/quote_rows.h"
#include "host/data_table.h"
#include "terminal/shown_text.h"

namespace mirelo::app {

// Quotes as text for other programs. Both end each record with a line feed.

// RFC 4180: fields in quotes when they hold a comma or a quote. Fields are escaped
// (automation/visible_text.h), so that a record is one line without controls, and can be read back exactly.
terminal::ShownText CsvLine(const std::vector<std::string>& fields);

// One object a quote, the column names as keys; numbers are numbers, whole ones without a point, dates and
// times the texts that they came as, and nothing is null. Controls are escaped as JSON has it.
terminal::ShownText JsonLine(const std::vector<std::string>& columns, const day::QuoteRow& row);

// The same of a row of a table, as a line with its end.
std::string JsonText(const std::vector<host::DataColumn>& columns, const host::DataRow& row);

}  // namespace mirelo::app
