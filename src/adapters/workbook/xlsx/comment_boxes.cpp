#include "adapters/workbook/xlsx/comment_boxes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/limits.h"

namespace mirelo::workbook {

namespace {

constexpr std::array<std::pair<std::string_view, double>, 5> kUnits{
    {{"pt", 4.0 / 3}, {"px", 1}, {"in", 96}, {"cm", 96 / 2.54}, {"mm", 96 / 25.4}}};

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// What a style such as "width:96pt;visibility:hidden" says about a property; empty when nothing.
std::string_view PropertyOf(std::string_view style, std::string_view name) {
  while (!style.empty()) {
    const std::size_t end = std::min(style.find(';'), style.size());
    const std::string_view property = WithoutBlanks(style.substr(0, end));
    const std::size_t colon = property.find(':');
    if (colon != std::string_view::npos && WithoutBlanks(property.substr(0, colon)) == name)
      return WithoutBlanks(property.substr(colon + 1));
    style.remove_prefix(std::min(end + 1, style.size()));
  }
  return {};
}

// A length such as "96pt" in pixels; 0 when it is none.
std::int32_t PixelsOfLength(std::string_view length) {
  double number = 0;
  const auto [end, error] = std::from_chars(length.data(), length.data() + length.size(), number);
  if (error != std::errc()) return 0;
  const std::string_view unit(end, static_cast<std::size_t>(length.data() + length.size() - end));
  for (const auto& [name, pixels] : kUnits) {
    const double size = std::round(number * pixels);
    if (unit == name && size >= 1) return static_cast<std::int32_t>(std::min(size, double{kGreatestShape}));
  }
  return 0;
}

// "#ffffe1", as a colour; the usual fill of comments goes by this and other names.
Color ColorOf(std::string_view text) {
  constexpr Color kUsual = 0xFFFFE1;
  Color color = 0;
  if (text.size() != 7 || text.front() != '#') return kAutomatic;
  const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), color, 16);
  if (error != std::errc() || end != text.data() + text.size()) return kAutomatic;
  return color == kUsual || color < 0 ? kAutomatic : color;
}

std::optional<std::int32_t> CountIn(pugi::xml_node element, std::int32_t below) {
  const auto count = ParseWhole<std::int32_t>(Text(element));
  return count && *count >= 0 && *count < below ? count : std::nullopt;
}

}  // namespace

CommentBoxes::CommentBoxes(SheetContext& context, const Relationships& relationships,
                           const std::string& sheet) {
  const Relationship* relationship = relationships.FindType("vmlDrawing");
  if (relationship == nullptr || relationship->external) return;
  try {
    const XmlPart xml(context.package, relationship->target, "xml");
    ForEachChild(xml.root(), "shape", [&](pugi::xml_node shape) { ReadShape(shape); });
  } catch (const RuntimeError&) {
    boxes_.clear();
    context.losses.Add(sheet, "not kept: the sizes of comments, which cannot be read.");
  }
  if (has_others_) context.losses.Add(sheet, "not kept: form controls.");
}

void CommentBoxes::ReadShape(pugi::xml_node shape) {
  const pugi::xml_node data = Child(shape, "ClientData");
  if (Attribute(data, "ObjectType") != "Note") {
    has_others_ = true;
    return;
  }
  const auto row = CountIn(Child(data, "Row"), kRows);
  const auto column = CountIn(Child(data, "Column"), kColumns);
  if (!row || !column) return;
  const std::string_view style = Attribute(shape, "style");
  Box& box = boxes_[{*row + 1, *column + 1}];
  box.width = PixelsOfLength(PropertyOf(style, "width"));
  box.height = PixelsOfLength(PropertyOf(style, "height"));
  box.visible = static_cast<bool>(Child(data, "Visible"));
  box.color = ColorOf(Attribute(shape, "fillcolor"));
}

void CommentBoxes::Fit(const CellPlace& cell, Comment& comment) const {
  const auto found = boxes_.find({cell.row, cell.column});
  if (found == boxes_.end()) return;
  const Box& box = found->second;
  if (box.width > 0) comment.width = box.width;
  if (box.height > 0) comment.height = box.height;
  comment.visible = box.visible;
  comment.color = box.color;
}

}  // namespace mirelo::workbook
