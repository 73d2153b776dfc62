#include "adapters/workbook/xlsx/losses.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace mirelo::workbook {

namespace {

constexpr std::size_t kMost = 100;  // a person reads no more, and a file may be made of nothing else

}  // namespace

void Losses::Add(Loss loss) {
  if (list_.size() > kMost) return;
  if (list_.size() == kMost) loss = {Loss::Of::File, "Workbook: not kept: other things as well."};
  if (std::find(list_.begin(), list_.end(), loss) == list_.end()) list_.push_back(std::move(loss));
}

void Losses::Add(const std::string& sheet, std::string_view what, bool is_work) {
  Add({Loss::Of::Sheet, "Sheet \"" + sheet + "\": " + std::string(what), sheet, is_work});
}

}  // namespace mirelo::workbook
