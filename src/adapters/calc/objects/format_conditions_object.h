#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/format_conditions.h"

namespace mirelo::calc {

class FormatConditionsObject final : public host::excel::FormatConditions {
 public:
  using ConditionPtr = std::shared_ptr<host::excel::FormatCondition>;

  explicit FormatConditionsObject(CellBlock block) : block_(std::move(block)) {}

  std::int32_t Count() override;
  ConditionPtr Item(std::int32_t index) override;
  ConditionPtr Add(host::excel::XlFormatConditionType type, host::excel::XlFormatConditionOperator op,
                   std::string_view formula1) override;
  void Delete() override;

 private:
  CellBlock block_;
};

}  // namespace mirelo::calc
