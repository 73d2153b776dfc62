#pragma once

#include <initializer_list>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace mirelo::workbook {

// A part that is changed in places and else written as it was read.
class EditableXml {
 public:
  // Error 1004 for what is not well-formed.
  EditableXml(const std::string& part, std::string_view text);

  pugi::xml_node root() const { return document_.document_element(); }
  // An element's full name in the vocabulary of the root: with the root's prefix, if it has one.
  std::string NameOf(std::string_view local_name) const { return prefix_ + std::string(local_name); }

  // The child of this local name. When there is none, it is made in front of the first of `followers` that is
  // there.
  pugi::xml_node ChildFor(pugi::xml_node parent, std::string_view local_name,
                          std::initializer_list<std::string_view> followers);

  std::string Text() const;

 private:
  pugi::xml_document document_;
  std::string prefix_;
};

// A node and all below it, as written.
std::string TextOf(pugi::xml_node node);

// Sets the attribute of this local name, under the full name that it has already.
void SetAttribute(pugi::xml_node node, std::string_view name, const std::string& value);
void RemoveAttribute(pugi::xml_node node, std::string_view name);

}  // namespace mirelo::workbook
