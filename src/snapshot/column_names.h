#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "snapshot/column_vocabulary.h"

namespace mirelo {

// Names joined by commas, made while compiling.
class ColumnNames {
 public:
  constexpr void Add(std::string_view name) {
    if (size_ > 0) text_[size_++] = ',';
    for (const char c : name) text_[size_++] = c;
  }
  constexpr const char* Text() const { return text_.data(); }

 private:
  std::array<char, 512> text_{};
  std::size_t size_ = 0;
};

// The columns whose `number` is 1, 2 and so on, in that order. A number that is missing, or is there twice,
// does not compile.
template <class Number>
constexpr ColumnNames InOrderOf(std::size_t count, Number number) {
  ColumnNames names;
  for (std::size_t wanted = 1; wanted <= count; ++wanted) {
    const ColumnRow* found = nullptr;
    for (const ColumnRow& row : kColumnVocabulary) {
      if (static_cast<std::size_t>(number(row)) != wanted) continue;
      if (found != nullptr) throw "two columns have the same place";
      found = &row;
    }
    if (found == nullptr) throw "no column has this place";
    names.Add(found->name);
  }
  return names;
}
template <class Chosen>
constexpr ColumnNames InOrderOfCodes(Chosen chosen) {
  ColumnNames names;
  for (const ColumnRow& row : kColumnVocabulary) {
    if (chosen(row)) names.Add(row.name);
  }
  return names;
}
constexpr std::size_t CountRight() {
  std::size_t count = 0;
  for (const ColumnRow& row : kColumnVocabulary) count += row.place.right > 0;
  return count;
}

inline constexpr ColumnNames kNamesRight =
    InOrderOf(CountRight(), [](const ColumnRow& row) { return row.place.right; });
inline constexpr ColumnNames kNamesLeft =
    InOrderOfCodes([](const ColumnRow& row) { return row.place.right == 0; });
inline constexpr ColumnNames kNamesForReading =
    InOrderOf(kColumnVocabulary.size(), [](const ColumnRow& row) { return row.reading; });
inline constexpr ColumnNames kNamesByCode = InOrderOfCodes([](const ColumnRow&) { return true; });

// What the settings ListRight, ListLeft and VerticalField are taken to hold while nothing is stored.
inline constexpr const char* kDefaultListRight = kNamesRight.Text();
inline constexpr const char* kDefaultListLeft = kNamesLeft.Text();
inline constexpr const char* kDefaultVerticalField = "Last";
// All columns, in the order of the codes and in one for reading.
inline constexpr const char* kAllColumns = kNamesByCode.Text();
inline constexpr const char* kColumnsForReading = kNamesForReading.Text();

}  // namespace mirelo
