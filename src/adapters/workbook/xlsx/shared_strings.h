#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "adapters/workbook/xlsx/package.h"

namespace mirelo::workbook {

struct SharedString {
  std::string text;
  bool rich = false;  // several formats within the text
};

// A text element ("si" or "is"): a single text, or runs with formats of their own, joined. Readings in
// another script are left out.
SharedString ReadText(pugi::xml_node element);

// A file's list of texts, in the order in which cells refer to them.
std::vector<SharedString> ReadSharedStrings(Package& package, const std::string& part);

}  // namespace mirelo::workbook
