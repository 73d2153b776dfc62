#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mirelo::workbook {

// One thing that a file holds and the workbook does not keep, as a sentence for people.
struct Loss {
  // When it is lost.
  enum class Of : std::uint8_t {
    File,      // whenever the file is written
    Workbook,  // when all of it is written anew
    Formats,   // when a sheet is written anew that uses them
    Sheet,     // when this sheet is
  };
  Of of = Of::Formats;
  std::string text;
  std::string sheet = {};  // its name, for one of a sheet
  // Whether a person made the thing and works with it, such as a formula. The others are settings and looks,
  // which most programs leave on every sheet.
  bool is_work = false;
  friend bool operator==(const Loss&, const Loss&) = default;
};

// Gathers them, each once.
class Losses {
 public:
  void Add(Loss loss);
  void Add(std::string what) { Add({Loss::Of::Formats, std::move(what)}); }
  // About one sheet.
  void Add(const std::string& sheet, std::string_view what, bool is_work = false);

  const std::vector<Loss>& list() const { return list_; }

 private:
  std::vector<Loss> list_;
};

}  // namespace mirelo::workbook
