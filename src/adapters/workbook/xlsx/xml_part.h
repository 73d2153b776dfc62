#pragma once

#include <charconv>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <system_error>

#include "adapters/workbook/xlsx/package.h"

namespace mirelo::workbook {

// The name behind a namespace prefix: "row" of "x:row". Prefixes are not resolved, since no two vocabularies
// of a workbook's parts share names at one place.
std::string_view LocalName(pugi::xml_node node);
// Whether the local name of a full name is `name`.
bool IsNamed(const char* full_name, std::string_view name);

// The first child element of this local name; a null node when there is none, or `node` is null.
pugi::xml_node Child(pugi::xml_node node, std::string_view name);
// The value of the attribute of this local name; empty when absent.
std::string_view Attribute(pugi::xml_node node, std::string_view name);
bool HasAttribute(pugi::xml_node node, std::string_view name);
// "1", "true" and "on" are true, other values false; `if_absent` when there is no such attribute.
bool Flag(pugi::xml_node node, std::string_view name, bool if_absent);

// The whole text as a number, nothing otherwise.
template <class T>
std::optional<T> ParseWhole(std::string_view text) {
  T number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}
template <class T>
std::optional<T> Number(pugi::xml_node node, std::string_view name) {
  return ParseWhole<T>(Attribute(node, name));
}

// The text that stands directly in the element.
std::string Text(pugi::xml_node node);
// The same without a copy when it is of one piece, as it nearly always is; `buffer` holds it otherwise.
std::string_view Text(pugi::xml_node node, std::string& buffer);

// Calls visit(child) for each child element of the local name.
template <class Visit>
void ForEachChild(pugi::xml_node node, std::string_view name, Visit&& visit) {
  for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
    if (IsNamed(child.name(), name)) visit(child);
  }
}

// A part read as XML. Entities besides the five standard ones are not resolved, and document types are passed
// over.
class XmlPart {
 public:
  // Damaged errors for what is not well-formed, has another root element or nests too deep.
  XmlPart(Package& package, const std::string& part, std::string_view root);

  pugi::xml_node root() const { return root_; }
  const std::string& name() const { return name_; }

 private:
  std::string name_;
  std::string text_;  // the document's strings point into it
  pugi::xml_document document_;
  pugi::xml_node root_;
};

}  // namespace mirelo::workbook
