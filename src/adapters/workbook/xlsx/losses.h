#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mirelo::workbook {

// Gathers sentences about what a file holds and the workbook does not keep, each once.
class Losses {
 public:
  // About the whole workbook.
  void Add(std::string what);
  // About one sheet.
  void Add(const std::string& sheet, std::string_view what);

  const std::vector<std::string>& list() const { return list_; }

 private:
  std::vector<std::string> list_;
};

}  // namespace mirelo::workbook
