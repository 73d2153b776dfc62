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

// The string of an element "si" or "is": a single text, or runs with formats of their own, joined. Readings
// in another script are left out.
SharedString ReadText(pugi::xml_node element);

// The shared strings of a file, in the order of the indexes by which cells refer to them.
std::vector<SharedString> ReadSharedStrings(Package& package, const std::string& part);

}  // namespace mirelo::workbook
