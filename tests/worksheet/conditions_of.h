#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/variant.h"
#include "host/excel/constants.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/range.h"

namespace mirelo::testing {

// The conditional formats that reach a range, in their order: "> =0: 10", with the index of the font's
// colour.
inline std::vector<std::string> ConditionsOf(host::excel::Range& cells) {
  using namespace host::excel;
  const auto sign = [](XlFormatConditionOperator op) {
    switch (op) {
      case xlEqual:
        return "=";
      case xlNotEqual:
        return "<>";
      case xlGreater:
        return ">";
      case xlLess:
        return "<";
      case xlGreaterEqual:
        return ">=";
      case xlLessEqual:
        return "<=";
      default:
        return "?";
    }
  };
  std::vector<std::string> texts;
  const auto conditions = cells.FormatConditions();
  for (std::int32_t i = 1; i <= conditions->Count(); ++i) {
    const auto condition = conditions->Item(i);
    texts.push_back(std::string(sign(condition->Operator())) + " " + condition->Formula1() + ": " +
                    condition->Font()->ColorIndex().ToText());
  }
  return texts;
}

// What cells of changes have.
inline const std::vector<std::string> kRisesAndFalls{"> =0: 10", "< =0: 3"};

}  // namespace mirelo::testing
