#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/editable_xml.h"
#include "adapters/workbook/xlsx/relationships.h"

namespace mirelo::workbook {

// The relationships of a part, to be changed.
class RelationshipList {
 public:
  // `list` is the text of the list, empty when the part has none. An empty `part` stands for the whole
  // package.
  RelationshipList(std::string part, std::string_view list);

  std::vector<Relationship> all() const { return RelationshipsIn(xml_.root(), part_); }

  // Adds a relationship of an office type, such as "worksheet", to the part `to`; gives its id.
  std::string Add(std::string_view type, const std::string& to);
  // Lets the one of this id, which is there, lead to another part.
  void Redirect(std::string_view id, const std::string& to);
  void RemoveIf(const std::function<bool(const Relationship&)>& is_going);

  std::string Text() const { return xml_.Text(); }

 private:
  std::string part_;
  EditableXml xml_;
};

}  // namespace mirelo::workbook
