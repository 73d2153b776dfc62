#include "adapters/workbook/xlsx/relationships.h"

#include <algorithm>
#include <cstddef>

#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

std::string PartFolderOf(const std::string& part) {
  const std::size_t slash = part.rfind('/');
  return slash == std::string::npos ? "" : part.substr(0, slash + 1);
}

// The name of the part that a target means, as seen from a folder: "../styles.xml" from "xl/worksheets/".
std::string Resolve(const std::string& folder, std::string_view target) {
  std::string whole = target.starts_with('/') ? std::string(target.substr(1)) : folder + std::string(target);
  std::vector<std::string_view> steps;
  std::string_view left = whole;
  while (!left.empty()) {
    const std::size_t slash = std::min(left.find('/'), left.size());
    const std::string_view step = left.substr(0, slash);
    if (step == ".." && !steps.empty()) steps.pop_back();
    if (step != ".." && step != "." && !step.empty()) steps.push_back(step);
    left.remove_prefix(std::min(slash + 1, left.size()));
  }
  std::string part;
  for (const std::string_view step : steps) part.append(part.empty() ? "" : "/").append(step);
  return part;
}

std::string LastWord(std::string_view address) {
  const std::size_t slash = address.rfind('/');
  return std::string(slash == std::string_view::npos ? address : address.substr(slash + 1));
}

}  // namespace

std::vector<Relationship> RelationshipsIn(pugi::xml_node list, const std::string& part) {
  std::vector<Relationship> relationships;
  ForEachChild(list, "Relationship", [&](pugi::xml_node node) {
    Relationship relationship{std::string(Attribute(node, "Id")), LastWord(Attribute(node, "Type")),
                              std::string(Attribute(node, "Target")),
                              Attribute(node, "TargetMode") == "External"};
    if (!relationship.external) relationship.target = Resolve(PartFolderOf(part), relationship.target);
    relationships.push_back(std::move(relationship));
  });
  return relationships;
}

std::string RelationshipsPartOf(const std::string& part) {
  const std::string folder = PartFolderOf(part);
  return folder + "_rels/" + part.substr(folder.size()) + ".rels";
}

Relationships::Relationships(Package& package, const std::string& part) {
  const std::string list = RelationshipsPartOf(part);
  if (package.Has(list)) all_ = RelationshipsIn(XmlPart(package, list, "Relationships").root(), part);
}

const Relationship* Relationships::FindId(std::string_view id) const {
  const auto found =
      std::find_if(all_.begin(), all_.end(), [&](const auto& relationship) { return relationship.id == id; });
  return found == all_.end() ? nullptr : &*found;
}

const Relationship* Relationships::FindType(std::string_view type) const {
  const auto found = std::find_if(all_.begin(), all_.end(),
                                  [&](const auto& relationship) { return relationship.type == type; });
  return found == all_.end() ? nullptr : &*found;
}

}  // namespace mirelo::workbook
