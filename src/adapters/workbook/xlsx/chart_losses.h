#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::workbook {

// Gathers what a chart's part tells and the workbook does not keep, each once.
class ChartLosses {
 public:
  void Add(std::string_view what) {
    if (list_.size() < kMost && std::find(list_.begin(), list_.end(), what) == list_.end())
      list_.emplace_back(what);
  }
  void AddIf(bool is_lost, std::string_view what) {
    if (is_lost) Add(what);
  }

  bool IsEmpty() const { return list_.empty(); }
  // With commas between them.
  std::string Text() const {
    std::string text;
    for (const std::string& what : list_) text.append(text.empty() ? "" : ", ").append(what);
    return text;
  }

 private:
  static constexpr std::size_t kMost = 40;
  std::vector<std::string> list_;
};

}  // namespace mirelo::workbook
