#include "adapters/workbook/xlsx/shared_strings.h"

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

SharedString ReadText(pugi::xml_node element) {
  SharedString read;
  std::string text;
  for (const pugi::xml_node child : element.children()) {
    if (IsNamed(child.name(), "t")) {
      text += Text(child);
    } else if (IsNamed(child.name(), "r")) {
      read.rich = read.rich || Child(child, "rPr");
      text += Text(Child(child, "t"));
    }
  }
  read.text = UnescapeText(text);
  return read;
}

std::vector<SharedString> ReadSharedStrings(Package& package, const std::string& part) {
  const XmlPart xml(package, part, "sst");
  std::vector<SharedString> strings;
  ForEachChild(xml.root(), "si", [&](pugi::xml_node node) {
    if (strings.size() >= package.limits().cells) throw Damaged(part, "too many texts");
    strings.push_back(ReadText(node));
    if (Utf16Length(strings.back().text) > kLongestText) {
      throw Damaged(part, "text " + std::to_string(strings.size() - 1) + " is longer than a cell takes");
    }
  });
  return strings;
}

}  // namespace mirelo::workbook
