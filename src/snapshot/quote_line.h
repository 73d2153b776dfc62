#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo {

// One line of a reply as an array of its fields, without copying them: the line must outlive its use. A field
// that the line does not have is error 9, when it is read and when it is stored into.
class QuoteLine {
 public:
  void Assign(std::string_view line) {
    Split(line, ",", fields_);
    last_volume_.reset();
  }
  void Clear() { fields_.clear(); }

  // The view holds until the line changes.
  std::string_view operator()(std::int32_t code) const {
    const std::size_t field = Checked(code);
    return last_volume_ && code == CodeOf(Column::LastVolume) ? LastVolumeText() : fields_[field];
  }
  std::string_view operator()(Column column) const { return (*this)(CodeOf(column)); }

  void StoreLastVolume(double volume) {
    Checked(CodeOf(Column::LastVolume));
    last_volume_ = volume;
    last_volume_text_.clear();
  }

 private:
  std::size_t Checked(std::int32_t code) const {
    const auto field = static_cast<std::size_t>(code);  // a negative code lies above all fields
    if (field >= fields_.size()) throw Errors::SubscriptOutOfRange();
    return field;
  }

  // Made when it is asked for: few tables have a column for it.
  std::string_view LastVolumeText() const {
    if (last_volume_text_.empty()) last_volume_text_ = NumberText(*last_volume_);
    return last_volume_text_;
  }

  std::vector<std::string_view> fields_;
  std::optional<double> last_volume_;  // in place of the reply's field
  mutable std::string last_volume_text_;
};

}  // namespace mirelo
