#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "automation/text.h"

namespace mirelo::libreoffice {

// A kind of file in which LibreOffice Calc keeps a whole document.
struct StoredKind {
  std::string_view ending;
  const char* filter;  // what reads and writes it, as the office calls it
  bool is_package;     // it consists of parts in a ZIP archive
};

inline constexpr std::array kStoredKinds{
    StoredKind{".ods", "calc8", true},
    StoredKind{".xlsx", "Calc MS Excel 2007 XML", true},
    StoredKind{".xls", "MS Excel 97", false},
    StoredKind{".fods", "OpenDocument Spreadsheet Flat XML", false},
};

// The kind of files with this ending, in letters of either case; null for any other.
inline const StoredKind* StoredKindOf(std::string_view ending) {
  const auto* const found = std::ranges::find_if(
      kStoredKinds, [&](const StoredKind& kind) { return EqualText(ending, kind.ending); });
  return found == kStoredKinds.end() ? nullptr : found;
}

// ".ods, .xlsx, .xls and .fods", for people.
inline std::string StoredEndings() {
  std::string endings;
  for (const StoredKind& kind : kStoredKinds) {
    if (!endings.empty()) endings += &kind == &kStoredKinds.back() ? " and " : ", ";
    endings += kind.ending;
  }
  return endings;
}

}  // namespace mirelo::libreoffice
