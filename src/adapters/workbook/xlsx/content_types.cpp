#include "adapters/workbook/xlsx/content_types.h"

#include "adapters/workbook/xlsx/xml_part.h"
#include "automation/text.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kNoTypes =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
    "<Default Extension=\"xml\" ContentType=\"application/xml\"/></Types>";

std::string_view ExtensionOf(std::string_view part) {
  const std::size_t dot = part.rfind('.');
  return dot == std::string_view::npos ? "" : part.substr(dot + 1);
}

}  // namespace

ContentTypes::ContentTypes(std::string_view text) : xml_(kPart, text.empty() ? kNoTypes : text) {}

std::string ContentTypes::KindOf(const std::string& part) const {
  std::string kind;
  std::string of_part;
  ForEachChild(xml_.root(), "Default", [&](pugi::xml_node node) {
    if (EqualText(Attribute(node, "Extension"), ExtensionOf(part))) kind = Attribute(node, "ContentType");
  });
  ForEachChild(xml_.root(), "Override", [&](pugi::xml_node node) {
    if (EqualText(Attribute(node, "PartName"), "/" + part)) of_part = Attribute(node, "ContentType");
  });
  return of_part.empty() ? kind : of_part;
}

void ContentTypes::SetKind(const std::string& part, const std::string& kind) {
  if (KindOf(part) == kind) return;
  pugi::xml_node node = xml_.root().append_child(xml_.NameOf("Override").c_str());
  SetAttribute(node, "PartName", "/" + part);
  SetAttribute(node, "ContentType", kind);
}

void ContentTypes::KeepOnly(const std::set<std::string>& parts) {
  std::set<std::string> names;
  for (const std::string& part : parts) names.insert(LCase("/" + part));
  for (pugi::xml_node node = xml_.root().first_child(); node;) {
    const pugi::xml_node next = node.next_sibling();
    const bool is_of_part = IsNamed(node.name(), "Override");
    if (is_of_part && !names.contains(LCase(Attribute(node, "PartName")))) xml_.root().remove_child(node);
    node = next;
  }
}

}  // namespace mirelo::workbook
