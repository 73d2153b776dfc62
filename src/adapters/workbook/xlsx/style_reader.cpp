#include "adapters/workbook/xlsx/style_reader.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <type_traits>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/style_names.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/format_code.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

constexpr std::uint8_t kGreatestIndent = 250;
constexpr std::uint8_t kSolidFill = 1;  // of FillStyle's patterns

class StyleReader {
 public:
  StyleReader(Package& package, const std::string& part, ColorReader& colors, Losses& losses)
      : xml_(package, part, "styleSheet"), colors_(colors), losses_(losses), most_(package.limits().styles) {}

  FileStyles Read() {
    const pugi::xml_node root = xml_.root();
    colors_.ReadPalette(Child(Child(root, "colors"), "indexedColors"));
    ReadNumberFormats(Child(root, "numFmts"));
    fonts_ = ReadList<FontStyle>(Child(root, "fonts"), "font", [&](pugi::xml_node n) {
      return Noting(lossy_fonts_, [&] { return ReadFont(n); });
    });
    fills_ = ReadList<FillStyle>(Child(root, "fills"), "fill", [&](pugi::xml_node n) {
      return Noting(lossy_fills_, [&] { return ReadFill(n); });
    });
    borders_ = ReadList<BorderStyle>(Child(root, "borders"), "border",
                                     [&](pugi::xml_node n) { return ReadBorder(n); });
    FileStyles styles;
    styles.cells = ReadList<Style>(Child(root, "cellXfs"), "xf", [&](pugi::xml_node n) {
      return Noting(styles.are_lossy, [&] { return ReadFormat(n); });
    });
    if (styles.cells.empty()) styles.cells.emplace_back();
    styles.are_lossy.resize(styles.cells.size());
    is_lossy_ = false;
    styles.differential = ReadList<DifferentialFormat>(Child(root, "dxfs"), "dxf",
                                                       [&](pugi::xml_node n) { return ReadDifferential(n); });
    styles.are_differential_lossy = is_lossy_;
    return styles;
  }

 private:
  template <class T, class ReadOne>
  std::vector<T> ReadList(pugi::xml_node list, std::string_view name, ReadOne&& read_one) {
    std::vector<T> items;
    ForEachChild(list, name, [&](pugi::xml_node node) {
      if (items.size() >= most_) throw Damaged(xml_.name(), "too many formats");
      items.push_back(read_one(node));
    });
    return items;
  }

  void ReadNumberFormats(pugi::xml_node list) {
    ForEachChild(list, "numFmt", [&](pugi::xml_node node) {
      const auto id = Number<std::int32_t>(node, "numFmtId");
      if (!id) throw Damaged(xml_.name(), "a number format has no number");
      if (number_formats_.size() >= most_) throw Damaged(xml_.name(), "too many formats");
      is_lossy_ = false;
      number_formats_[*id] = UsableFormat(CleanText(Attribute(node, "formatCode")));
      if (is_lossy_) lossy_number_formats_.insert(*id);
    });
  }

  std::string UsableFormat(std::string code) {
    if (code.empty()) return "General";
    if (CanBeKept(code)) return code;
    Lose("The number format " + code.substr(0, 40) + "... is too long and becomes General.");
    return "General";
  }

  FontStyle ReadFont(pugi::xml_node node) {
    FontStyle font;
    const std::string name = CleanText(Attribute(Child(node, "name"), "val"));
    if (!name.empty() && name.size() <= kLongestFontName) font.name = name;
    const auto size = Number<double>(Child(node, "sz"), "val");
    if (size && kLeastFontSize <= *size && *size <= kGreatestFontSize) font.size = *size;
    font.bold = IsOn(Child(node, "b"));
    font.italic = IsOn(Child(node, "i"));
    font.strikeout = IsOn(Child(node, "strike"));
    if (const pugi::xml_node underline = Child(node, "u")) {
      const std::string_view kind = Attribute(underline, "val");
      font.underline = kind.empty() ? 1 : NumberOf(kUnderlineNames, kind).value_or(0);
    }
    font.color = colors_.Read(Child(node, "color"));
    for (const char* effect : {"vertAlign", "outline", "shadow", "condense", "extend"}) {
      if (Child(node, effect)) Lose("Superscript, subscript, outline or shadow of letters is not kept.");
    }
    return font;
  }

  static bool IsOn(pugi::xml_node element) { return element && Flag(element, "val", true); }

  FillStyle ReadFill(pugi::xml_node node) {
    if (Child(node, "gradientFill")) Lose("Fills with a gradient are not kept.");
    const pugi::xml_node pattern = Child(node, "patternFill");
    FillStyle fill;
    fill.pattern = PlaceOf(kPatternNames, Attribute(pattern, "patternType")).value_or(0);
    if (fill.pattern == 0) return fill;
    fill.foreground = colors_.Read(Child(pattern, "fgColor"));
    fill.background = colors_.Read(Child(pattern, "bgColor"));
    return fill;
  }

  BorderStyle ReadBorder(pugi::xml_node node) {
    BorderStyle border;
    for (std::size_t edge = 0; edge < kEdges; ++edge) {
      pugi::xml_node line = Child(node, kEdgeNames[edge]);
      if (!line && edge == 0)
        line = Child(node, "start");  // the stricter vocabulary's words for left and right
      if (!line && edge == 1) line = Child(node, "end");
      border.edges[edge].line = PlaceOf(kLineNames, Attribute(line, "style")).value_or(0);
      if (border.edges[edge].line != 0) border.edges[edge].color = colors_.Read(Child(line, "color"));
    }
    border.diagonals = static_cast<std::uint8_t>((Flag(node, "diagonalUp", false) ? 1 : 0) |
                                                 (Flag(node, "diagonalDown", false) ? 2 : 0));
    return border;
  }

  Style ReadFormat(pugi::xml_node node) {
    Style style;
    style.number_format = NumberFormatOf(Number<std::int32_t>(node, "numFmtId").value_or(0));
    style.font = At(fonts_, lossy_fonts_, node, "fontId");
    style.fill = At(fills_, lossy_fills_, node, "fillId");
    style.border = At(borders_, {}, node, "borderId");
    if (const pugi::xml_node alignment = Child(node, "alignment")) style.alignment = ReadAlignment(alignment);
    if (Number<std::uint32_t>(node, "xfId").value_or(0) != 0) {
      Lose("The names of cell styles are not kept; the cells look the same.");
    }
    return style;
  }

  DifferentialFormat ReadDifferential(pugi::xml_node node) {
    DifferentialFormat format;
    const FontStyle font = ReadFont(Child(node, "font"));
    format.bold = font.bold;
    format.italic = font.italic;
    format.strikeout = font.strikeout;
    format.underline = font.underline;
    format.color = font.color;
    format.fill = ReadConditionalFill(Child(node, "fill"));
    if (const pugi::xml_node border = Child(node, "border")) {
      format.border = ReadBorder(border);
      format.border.edges[static_cast<std::size_t>(Edge::Diagonal)] = {};  // no condition draws one
      format.border.diagonals = 0;
    }
    if (const pugi::xml_node number_format = Child(node, "numFmt"))
      format.number_format = UsableFormat(CleanText(Attribute(number_format, "formatCode")));
    return format;
  }

  // A condition's pattern is solid unless told, and its colour is that of the background.
  FillStyle ReadConditionalFill(pugi::xml_node node) {
    FillStyle fill = ReadFill(node);
    const pugi::xml_node pattern = Child(node, "patternFill");
    if (!pattern || (fill.pattern != kSolidFill && HasAttribute(pattern, "patternType"))) return fill;
    const Color background = colors_.Read(Child(pattern, "bgColor"));
    const Color color = background != kAutomatic ? background : colors_.Read(Child(pattern, "fgColor"));
    if (color == kAutomatic) return {};
    return {kSolidFill, color, kAutomatic};
  }

  std::string NumberFormatOf(std::int32_t id) {
    is_lossy_ = is_lossy_ || lossy_number_formats_.contains(id);
    if (const auto own = number_formats_.find(id); own != number_formats_.end()) return own->second;
    if (const auto built_in = BuiltInFormat(id)) return std::string(*built_in);
    Lose("Number format " + std::to_string(id) + ", which depends on the region, becomes General.");
    return "General";
  }

  // The item that an attribute names; `lossy` tells of which something is lost.
  template <class T>
  T At(const std::vector<T>& list, const std::vector<bool>& lossy, pugi::xml_node node,
       std::string_view attribute) {
    const auto index = Number<std::size_t>(node, attribute).value_or(0);
    if (index < lossy.size() && lossy[index]) is_lossy_ = true;
    if (index < list.size()) return list[index];
    if (index == 0) return T();
    throw Damaged(xml_.name(), std::string(attribute) + " " + std::to_string(index) + " does not exist");
  }

  static Alignment ReadAlignment(pugi::xml_node node) {
    Alignment alignment;
    alignment.horizontal =
        NumberOf(kHorizontalNames, Attribute(node, "horizontal")).value_or(alignment.horizontal);
    alignment.vertical = PlaceOf(kVerticalNames, Attribute(node, "vertical")).value_or(0);
    alignment.indent = static_cast<std::uint8_t>(
        std::min<std::uint32_t>(Number<std::uint32_t>(node, "indent").value_or(0), kGreatestIndent));
    alignment.rotation = RotationOf(Number<std::int32_t>(node, "textRotation").value_or(0));
    alignment.wrap = Flag(node, "wrapText", false);
    alignment.shrink = Flag(node, "shrinkToFit", false);
    return alignment;
  }

  // Files count 0 to 90 upwards, 91 to 180 downwards, and 255 for letters one below the other.
  static std::int16_t RotationOf(std::int32_t angle) {
    if (angle == 255) return 270;
    if (angle < 0 || angle > 180) return 0;
    return static_cast<std::int16_t>(angle <= 90 ? angle : 90 - angle);
  }

  void Lose(std::string what) {
    is_lossy_ = true;
    losses_.Add(std::move(what));
  }

  // Reads an item, and notes in `lossy` whether something of it is lost.
  template <class ReadOne>
  std::invoke_result_t<ReadOne> Noting(std::vector<bool>& lossy, ReadOne&& read_one) {
    is_lossy_ = false;
    auto item = read_one();
    lossy.push_back(is_lossy_);
    return item;
  }

  XmlPart xml_;
  ColorReader& colors_;
  Losses& losses_;
  std::size_t most_;
  std::map<std::int32_t, std::string> number_formats_;
  std::vector<FontStyle> fonts_;
  std::vector<FillStyle> fills_;
  std::vector<BorderStyle> borders_;

  bool is_lossy_ = false;  // what is being read
  std::set<std::int32_t> lossy_number_formats_;
  std::vector<bool> lossy_fonts_;
  std::vector<bool> lossy_fills_;
};

}  // namespace

FileStyles ReadStyles(Package& package, const std::string& part, ColorReader& colors, Losses& losses) {
  return StyleReader(package, part, colors, losses).Read();
}

}  // namespace mirelo::workbook
