#include "workbook/calc_document.h"

#include <cstdlib>
#include <stdexcept>

namespace mirelo::testing {

namespace {

constexpr double kPointsPerInch = 72;

void Load(pugi::xml_document& document, const Parts& parts, const char* name) {
  const auto part = parts.find(name);
  if (part == parts.end() ||
      !document.load_string(part->second.c_str(), pugi::parse_default | pugi::parse_ws_pcdata))
    throw std::runtime_error(std::string(name) + " cannot be read");
}

// Paragraphs with a line break between them.
std::string TextOf(pugi::xml_node parent) {
  std::string text;
  bool is_first = true;
  for (const pugi::xml_node paragraph : parent.children("text:p")) {
    if (!is_first) text += '\n';
    is_first = false;
    for (const pugi::xml_node piece : paragraph.children()) {
      if (std::string_view(piece.name()) == "text:s") {
        text.append(piece.attribute("text:c").as_uint(1), ' ');
      } else {
        text += piece.type() == pugi::node_pcdata ? piece.value() : piece.text().get();
      }
    }
  }
  return text;
}

CalcDocument::Cell CellOf(pugi::xml_node node) {
  CalcDocument::Cell cell;
  cell.type = node.attribute("office:value-type").value();
  for (const char* name :
       {"office:value", "office:date-value", "office:time-value", "office:boolean-value"}) {
    if (const pugi::xml_attribute value = node.attribute(name)) cell.value = value.value();
  }
  cell.text = TextOf(node);
  cell.has_formula = static_cast<bool>(node.attribute("table:formula"));
  cell.style = node.attribute("table:style-name").value();
  if (const pugi::xml_node note = node.child("office:annotation")) {
    cell.comment = TextOf(note);
    cell.comment_height = std::strtod(note.attribute("svg:height").value(), nullptr) * kPointsPerInch;
  }
  return cell;
}

// The child that covers place `wanted` where each stands for as many places as its attribute says.
template <class Children>
pugi::xml_node Covering(const Children& children, const char* repeated, std::int32_t wanted) {
  std::int32_t last = 0;
  for (const pugi::xml_node child : children) {
    last += child.attribute(repeated).as_int(1);
    if (wanted <= last) return child;
  }
  return {};
}

pugi::xml_node TableOf(const pugi::xml_document& content, std::string_view name) {
  const auto sheets =
      content.document_element().child("office:body").child("office:spreadsheet").children("table:table");
  for (const pugi::xml_node sheet : sheets) {
    if (name == sheet.attribute("table:name").value()) return sheet;
  }
  throw std::runtime_error("there is no sheet " + std::string(name));
}

}  // namespace

CalcDocument::CalcDocument(const Parts& parts) {
  Load(content_, parts, "content.xml");
  Load(styles_, parts, "styles.xml");
}

namespace {

// Of its cells that tell none; they may stand in groups.
std::string StyleOfColumn(pugi::xml_node table, std::int32_t column) {
  return Covering(table.children("table:table-column"), "table:number-columns-repeated", column)
      .attribute("table:default-cell-style-name")
      .value();
}

}  // namespace

CalcDocument::Cell CalcDocument::At(std::string_view sheet, std::int32_t row, std::int32_t column) const {
  const pugi::xml_node line =
      Covering(TableOf(content_, sheet).children("table:table-row"), "table:number-rows-repeated", row);
  Cell cell = CellOf(Covering(line.children("table:table-cell"), "table:number-columns-repeated", column));
  if (cell.style.empty()) cell.style = StyleOfColumn(TableOf(content_, sheet), column);
  return cell;
}

std::string CalcDocument::Property(const Cell& cell, std::string_view property) const {
  for (const pugi::xml_node group : Style(cell.style).children()) {
    if (const pugi::xml_attribute value = group.attribute(std::string(property).c_str()))
      return value.value();
  }
  return "";
}

std::vector<CalcDocument::Condition> CalcDocument::Conditions(std::string_view sheet) const {
  std::vector<Condition> conditions;
  const pugi::xml_node list = TableOf(content_, sheet).child("calcext:conditional-formats");
  for (const pugi::xml_node format : list.children("calcext:conditional-format")) {
    for (const pugi::xml_node condition : format.children("calcext:condition")) {
      Cell looks_like;
      looks_like.style = condition.attribute("calcext:apply-style-name").value();
      conditions.push_back({format.attribute("calcext:target-range-address").value(),
                            condition.attribute("calcext:value").value(), Property(looks_like, "fo:color")});
    }
  }
  return conditions;
}

std::vector<std::string> CalcDocument::Sheets() const {
  std::vector<std::string> names;
  const auto sheets =
      content_.document_element().child("office:body").child("office:spreadsheet").children("table:table");
  for (const pugi::xml_node sheet : sheets) names.emplace_back(sheet.attribute("table:name").value());
  return names;
}

pugi::xml_node CalcDocument::Style(std::string_view name) const {
  const pugi::xml_node lists[] = {content_.document_element().child("office:automatic-styles"),
                                  styles_.document_element().child("office:styles")};
  for (const pugi::xml_node list : lists) {
    for (const pugi::xml_node style : list.children("style:style")) {
      if (name == style.attribute("style:name").value() ||
          name == style.attribute("style:display-name").value())
        return style;
    }
  }
  return {};
}

}  // namespace mirelo::testing
