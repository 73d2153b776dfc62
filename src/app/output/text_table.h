#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "terminal/shown_text.h"

namespace mirelo::app {

// A table of texts for a terminal: columns as wide as their widest cell, numbers to the right, headers above
// a rule.
class TextTable {
 public:
  static constexpr const char* kPriceHeader = "Last";

  explicit TextTable(std::vector<std::string> headers);

  // `cells` has one text per header; what is missing is empty. `direction` says which way the price went:
  // above 0 up, below 0 down.
  void AddRow(std::vector<std::string> cells, int direction = 0);

  // Lines ended by "\n"; cells are made visible. With `color`, headers are bold, cells of a column headed
  // "Change" are green above 0 and red below, and those headed "Last" by the direction of their row.
  terminal::ShownText ToText(bool color) const;

 private:
  std::vector<std::size_t> Widths() const;
  std::vector<bool> NumericColumns() const;

  std::vector<std::string> headers_;
  std::vector<std::vector<std::string>> rows_;
  std::vector<int> directions_;
};

}  // namespace mirelo::app
