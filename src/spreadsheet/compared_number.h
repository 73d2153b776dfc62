#pragma once

#include <string>
#include <string_view>

#include "host/excel/constants.h"

namespace mirelo::spreadsheet {

// What a conditional format compares with.

// Error 1004 unless the value of a cell is compared with one other.
void CheckComparison(host::excel::XlFormatConditionType type, host::excel::XlFormatConditionOperator op);

// The number that a text such as "0" or "=-1.5" names, without the "="; error 1004 for other texts.
std::string NumberInFormula(std::string_view formula);

}  // namespace mirelo::spreadsheet
