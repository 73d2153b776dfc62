#include "adapters/workbook/xlsx/xml_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace mirelo::workbook {

namespace {

struct ToString : pugi::xml_writer {
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

}  // namespace

std::string XmlText(pugi::xml_document& document) {
  pugi::xml_node declaration = document.prepend_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  declaration.append_attribute("standalone") = "yes";
  ToString writer;
  document.save(writer, "", pugi::format_raw);
  return writer.text;
}

void AppendValue(pugi::xml_node parent, const char* name, std::string_view value) {
  parent.append_child(name).append_attribute("val") = std::string(value).c_str();
}

void AppendText(pugi::xml_node parent, const char* name, std::string_view text) {
  parent.append_child(name).append_child(pugi::node_pcdata).set_value(std::string(text).c_str());
}

std::string ExactNumberText(double number) {
  if (!std::isfinite(number)) return "0";
  std::array<char, 32> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), result.ptr};
}

}  // namespace mirelo::workbook
