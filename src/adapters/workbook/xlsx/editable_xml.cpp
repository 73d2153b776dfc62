#include "adapters/workbook/xlsx/editable_xml.h"

#include <cstddef>
#include <utility>

#include "adapters/workbook/xlsx/library_memory.h"
#include "adapters/workbook/xlsx/package.h"
#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

constexpr unsigned kFullParsing = (pugi::parse_full | pugi::parse_ws_pcdata) & ~pugi::parse_doctype;

class TextWriter : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

pugi::xml_attribute FindAttribute(pugi::xml_node node, std::string_view name) {
  pugi::xml_attribute attribute = node.first_attribute();
  while (attribute && !IsNamed(attribute.name(), name)) attribute = attribute.next_attribute();
  return attribute;
}

}  // namespace

EditableXml::EditableXml(const std::string& part, std::string_view text) {
  const pugi::xml_parse_result result = document_.load_buffer(text.data(), text.size(), kFullParsing);
  RequireMemory(result);
  if (!result) throw Damaged(part, "this is no well-formed XML");
  const std::string_view name = root().name();
  prefix_ = name.substr(0, name.size() - LocalName(root()).size());
  // What is written is UTF-8, whatever was read.
  for (pugi::xml_node node : document_.children()) {
    if (node.type() == pugi::node_declaration && node.attribute("encoding"))
      node.attribute("encoding").set_value("UTF-8");
  }
}

pugi::xml_node EditableXml::ChildFor(pugi::xml_node parent, std::string_view local_name,
                                     std::initializer_list<std::string_view> followers) {
  if (const pugi::xml_node child = Child(parent, local_name)) return child;
  const std::string name = NameOf(local_name);
  for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
    for (const std::string_view follower : followers) {
      if (IsNamed(child.name(), follower)) return parent.insert_child_before(name.c_str(), child);
    }
  }
  return parent.append_child(name.c_str());
}

std::string EditableXml::Text() const {
  TextWriter writer;
  document_.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return std::move(writer.text);
}

std::string TextOf(pugi::xml_node node) {
  TextWriter writer;
  node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return std::move(writer.text);
}

void SetAttribute(pugi::xml_node node, std::string_view name, const std::string& value) {
  pugi::xml_attribute attribute = FindAttribute(node, name);
  if (!attribute) attribute = node.append_attribute(std::string(name).c_str());
  attribute.set_value(value.c_str());
}

void RemoveAttribute(pugi::xml_node node, std::string_view name) {
  if (const pugi::xml_attribute attribute = FindAttribute(node, name)) node.remove_attribute(attribute);
}

}  // namespace mirelo::workbook
