#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/snapshot_feed.h"

namespace mirelo::app {

// Quotes as text for other programs. Both end each record with a line feed.

// RFC 4180: fields in quotes when they hold a comma, a quote or a line break.
std::string CsvLine(const std::vector<std::string>& fields);

// One object a quote, the column names as keys; what reads as a number is one, an empty cell is null.
std::string JsonLine(const std::vector<std::string>& columns, const std::vector<std::string>& row);

}  // namespace mirelo::app
