#pragma once

#include <string_view>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// Why a sheet of the book may not bear the name, as a sentence for people; empty when it may.
std::string_view NameObjection(const Book& book, const Sheet& sheet, std::string_view name);
std::string_view NameObjection(const Book& book, const Chart& sheet, std::string_view name);

}  // namespace mirelo::workbook
