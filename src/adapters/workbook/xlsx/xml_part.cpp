#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

constexpr unsigned kParsing = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_wconv_attribute |
                              pugi::parse_eol | pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata;

// Walks the tree without recursion, as deep as a file may nest it.
bool IsDeeperThan(pugi::xml_node root, int depth) {
  int level = 1;
  for (pugi::xml_node node = root; node;) {
    if (level > depth) return true;
    if (const pugi::xml_node child = node.first_child()) {
      node = child;
      ++level;
      continue;
    }
    while (node != root && !node.next_sibling()) {
      node = node.parent();
      --level;
    }
    if (node == root) return false;
    node = node.next_sibling();
  }
  return false;
}

}  // namespace

std::string_view LocalName(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node Child(pugi::xml_node node, std::string_view name) {
  for (const pugi::xml_node child : node.children()) {
    if (LocalName(child) == name) return child;
  }
  return {};
}

pugi::xml_node NextOfName(pugi::xml_node node) {
  const std::string_view name = LocalName(node);
  for (pugi::xml_node next = node.next_sibling(); next; next = next.next_sibling()) {
    if (LocalName(next) == name) return next;
  }
  return {};
}

bool HasAttribute(pugi::xml_node node, std::string_view name) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (LocalName(attribute.name()) == name) return true;
  }
  return false;
}

std::string_view Attribute(pugi::xml_node node, std::string_view name) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (LocalName(attribute.name()) == name) return attribute.value();
  }
  return {};
}

bool Flag(pugi::xml_node node, std::string_view name, bool if_absent) {
  if (!HasAttribute(node, name)) return if_absent;
  const std::string_view value = Attribute(node, name);
  return value == "1" || value == "true" || value == "on";
}

std::string Text(pugi::xml_node node) {
  std::string text = node.value();  // embedded in the element when it is the first content
  for (const pugi::xml_node child : node.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) text += child.value();
  }
  return text;
}

XmlPart::XmlPart(Package& package, const std::string& part, std::string_view root)
    : name_(part), text_(package.Read(part)) {
  const pugi::xml_parse_result result = document_.load_buffer_inplace(text_.data(), text_.size(), kParsing);
  if (!result) {
    throw Damaged(name_, std::string("this is no well-formed XML (") + result.description() + " at byte " +
                             std::to_string(result.offset) + ")");
  }
  root_ = document_.document_element();
  if (LocalName(root_) != root) throw Damaged(name_, "its root element is not \"" + std::string(root) + "\"");
  if (IsDeeperThan(root_, package.limits().depth)) throw Damaged(name_, "its elements nest too deep");
}

}  // namespace mirelo::workbook
