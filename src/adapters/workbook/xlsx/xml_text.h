#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace mirelo::workbook {

// Helpers for parts that are written element by element.

// The document as text, with its declaration and without blanks of its own.
std::string XmlText(pugi::xml_document& document);

// Appends <name val="value"/>.
void AppendValue(pugi::xml_node parent, const char* name, std::string_view value);
// Appends <name>text</name>.
void AppendText(pugi::xml_node parent, const char* name, std::string_view text);

// The number in as few digits as give the same number when they are read.
std::string ExactNumberText(double number);

}  // namespace mirelo::workbook
