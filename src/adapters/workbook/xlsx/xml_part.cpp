#include "adapters/workbook/xlsx/xml_part.h"

#include <cstddef>

#include "adapters/workbook/xlsx/library_memory.h"

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

// Names are short and asked for many times a cell: each takes less than to be measured and compared at once.
bool Is(const char* text, std::string_view name) {
  for (const char letter : name) {
    if (*text++ != letter) return false;
  }
  return *text == '\0';
}

pugi::xml_attribute Find(pugi::xml_node node, std::string_view name) {
  pugi::xml_attribute attribute = node.first_attribute();
  while (attribute && !IsNamed(attribute.name(), name)) attribute = attribute.next_attribute();
  return attribute;
}

}  // namespace

std::string_view LocalName(pugi::xml_node node) {
  const std::string_view name = node.name();
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

bool IsNamed(const char* full_name, std::string_view name) {
  if (Is(full_name, name)) return true;
  while (*full_name != '\0' && *full_name != ':') ++full_name;
  return *full_name == ':' && Is(full_name + 1, name);
}

pugi::xml_node Child(pugi::xml_node node, std::string_view name) {
  pugi::xml_node child = node.first_child();
  while (child && !IsNamed(child.name(), name)) child = child.next_sibling();
  return child;
}

bool HasAttribute(pugi::xml_node node, std::string_view name) { return static_cast<bool>(Find(node, name)); }

std::string_view Attribute(pugi::xml_node node, std::string_view name) { return Find(node, name).value(); }

bool Flag(pugi::xml_node node, std::string_view name, bool if_absent) {
  const pugi::xml_attribute attribute = Find(node, name);
  if (!attribute) return if_absent;
  const std::string_view value = attribute.value();
  return value == "1" || value == "true" || value == "on";
}

std::string Text(pugi::xml_node node) {
  std::string buffer;
  return std::string(Text(node, buffer));
}

std::string_view Text(pugi::xml_node node, std::string& buffer) {
  const std::string_view first = node.value();  // embedded in the element when it is the first content
  if (!node.first_child()) return first;
  buffer = first;
  for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) buffer += child.value();
  }
  return buffer;
}

XmlPart::XmlPart(Package& package, const std::string& part, std::string_view root)
    : name_(part), text_(package.Read(part)) {
  // Each takes many times its length in memory.
  std::size_t nodes = 0;
  for (const char c : std::string_view(text_)) nodes += c == '<' || c == '=' ? 1 : 0;
  if (nodes > package.limits().nodes) throw Damaged(name_, "too many elements");
  const pugi::xml_parse_result result = document_.load_buffer_inplace(text_.data(), text_.size(), kParsing);
  if (!result) {
    RequireMemory(result);
    throw Damaged(name_, std::string("this is no well-formed XML (") + result.description() + " at byte " +
                             std::to_string(result.offset) + ")");
  }
  root_ = document_.document_element();
  if (!IsNamed(root_.name(), root))
    throw Damaged(name_, "its root element is not \"" + std::string(root) + "\"");
  if (IsDeeperThan(root_, package.limits().depth)) throw Damaged(name_, "its elements nest too deep");
}

}  // namespace mirelo::workbook
