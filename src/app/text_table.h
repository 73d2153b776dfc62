#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mirelo::app {

// A table of texts for a terminal: columns as wide as their widest cell, numbers to the right, headers above
// a rule.
class TextTable {
 public:
  explicit TextTable(std::vector<std::string> headers);

  // `cells` has one text per header; what is missing is empty.
  void AddRow(std::vector<std::string> cells);

  // Lines ended by "\n". With `color`, headers are bold and cells of a column headed "Change" are green above
  // 0 and red below.
  std::string ToText(bool color) const;

 private:
  std::vector<std::size_t> Widths() const;
  std::vector<bool> NumericColumns() const;

  std::vector<std::string> headers_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace mirelo::app
