#include "adapters/workbook/model/book.h"

#include <algorithm>

#include "automation/text.h"

namespace mirelo::workbook {

namespace {

std::string FreeSheetName(const Book& book) {
  for (std::size_t number = book.sheets.size() + 1;; ++number) {
    std::string name = "Sheet" + std::to_string(number);
    if (book.FindSheet(name) == nullptr) return name;
  }
}

}  // namespace

std::shared_ptr<Book> Book::New() {
  auto book = std::make_shared<Book>();
  book->sheets.push_back(std::make_shared<Sheet>("Sheet1"));
  return book;
}

std::shared_ptr<Sheet> Book::FindSheet(std::string_view sheet_name) const {
  const auto found = std::find_if(sheets.begin(), sheets.end(),
                                  [&](const auto& sheet) { return EqualText(sheet->name, sheet_name); });
  return found == sheets.end() ? nullptr : *found;
}

std::size_t Book::IndexOf(const Sheet& sheet) const {
  const auto found =
      std::find_if(sheets.begin(), sheets.end(), [&](const auto& other) { return other.get() == &sheet; });
  return static_cast<std::size_t>(found - sheets.begin());
}

std::shared_ptr<Sheet> Book::AddSheet() {
  auto sheet = std::make_shared<Sheet>(FreeSheetName(*this));
  sheets.insert(sheets.begin() + static_cast<std::ptrdiff_t>(active), sheet);
  return sheet;
}

}  // namespace mirelo::workbook
