#include "adapters/workbook/xlsx/losses.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace mirelo::workbook {

namespace {

constexpr std::size_t kMost = 100;  // a person reads no more, and a file may be made of nothing else

}  // namespace

void Losses::Add(std::string what) {
  if (list_.size() > kMost) return;
  if (list_.size() == kMost) what = "Workbook: not kept: other things as well.";
  if (std::find(list_.begin(), list_.end(), what) == list_.end()) list_.push_back(std::move(what));
}

void Losses::Add(const std::string& sheet, std::string_view what) {
  Add("Sheet \"" + sheet + "\": " + std::string(what));
}

}  // namespace mirelo::workbook
