#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo {

// One line of a reply as an array of its fields, without copying them: the line must outlive its use. A field
// that the line does not have is error 9, when it is read and when it is stored into.
class QuoteLine {
 public:
  void Assign(std::string_view line) { Split(line, ",", fields_); }
  void Clear() { fields_.clear(); }

  std::string_view operator()(std::int32_t code) const { return fields_[Checked(code)]; }
  std::string_view operator()(Column column) const { return (*this)(CodeOf(column)); }

  void StoreLastVolume(std::string text) {
    const std::size_t field = Checked(CodeOf(Column::LastVolume));
    last_volume_ = std::move(text);
    fields_[field] = last_volume_;
  }

 private:
  std::size_t Checked(std::int32_t code) const {
    const auto field = static_cast<std::size_t>(code);  // a negative code lies above all fields
    if (field >= fields_.size()) throw Errors::SubscriptOutOfRange();
    return field;
  }

  std::vector<std::string_view> fields_;
  std::string last_volume_;
};

}  // namespace mirelo
