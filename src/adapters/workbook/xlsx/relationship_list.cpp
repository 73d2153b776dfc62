#include "adapters/workbook/xlsx/relationship_list.h"

#include <cstddef>
#include <set>
#include <utility>

#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr std::string_view kNoRelationships =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

}  // namespace

RelationshipList::RelationshipList(std::string part, std::string_view list)
    : part_(std::move(part)), xml_(RelationshipsPartOf(part_), list.empty() ? kNoRelationships : list) {}

std::string RelationshipList::Add(std::string_view type, const std::string& to) {
  std::set<std::string> taken;
  for (const Relationship& relationship : all()) taken.insert(relationship.id);
  std::size_t number = 1;
  while (taken.contains("rId" + std::to_string(number))) ++number;
  std::string id = "rId" + std::to_string(number);
  pugi::xml_node node = xml_.root().append_child(xml_.NameOf("Relationship").c_str());
  SetAttribute(node, "Id", id);
  SetAttribute(node, "Type", std::string(kOffice).append(type));
  SetAttribute(node, "Target", "/" + to);
  return id;
}

void RelationshipList::Redirect(std::string_view id, const std::string& to) {
  ForEachChild(xml_.root(), "Relationship", [&](pugi::xml_node node) {
    if (Attribute(node, "Id") == id) SetAttribute(node, "Target", "/" + to);
  });
}

void RelationshipList::RemoveIf(const std::function<bool(const Relationship&)>& is_going) {
  std::set<std::string> going;
  for (const Relationship& relationship : all()) {
    if (is_going(relationship)) going.insert(relationship.id);
  }
  for (pugi::xml_node node = xml_.root().first_child(); node;) {
    const pugi::xml_node next = node.next_sibling();
    if (going.contains(std::string(Attribute(node, "Id")))) xml_.root().remove_child(node);
    node = next;
  }
}

}  // namespace mirelo::workbook
