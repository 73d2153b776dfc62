#pragma once

#include <filesystem>
#include <optional>

namespace mirelo::app {

// Which workbook the dialog was shown for last, kept in a file of this user's. The file holds the path as it
// is, with a line feed behind it. The settings would be no place for it: they know one byte a letter, and
// they travel to other machines.
class LastWorkbook {
 public:
  // The file "last-workbook" of the state folder.
  LastWorkbook();
  explicit LastWorkbook(std::filesystem::path file) : file_(std::move(file)) {}

  // Nothing where none is kept. Whether the workbook is still there is another question.
  std::optional<std::filesystem::path> Recall() const;
  // Error 75, with a text that says why, when it cannot be kept.
  void Remember(const std::filesystem::path& workbook) const;

 private:
  std::filesystem::path file_;  // empty where no folder is known
};

}  // namespace mirelo::app
