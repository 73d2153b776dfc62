#include "adapters/workbook/xlsx/comment_reader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/comment_boxes.h"
#include "adapters/workbook/xlsx/style_names.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/address.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

class CommentReader {
 public:
  CommentReader(SheetContext& context, const std::string& part, const CommentBoxes& boxes, Sheet& sheet)
      : context_(context), xml_(context.package, part, "comments"), boxes_(boxes), sheet_(sheet) {}

  void Read() {
    ForEachChild(Child(xml_.root(), "authors"), "author",
                 [&](pugi::xml_node node) { authors_.push_back(UnescapeText(Text(node))); });
    ForEachChild(Child(xml_.root(), "commentList"), "comment",
                 [&](pugi::xml_node node) { ReadComment(node); });
    if (formatted_ > 0) {
      context_.losses.Add(sheet_.name, "not kept: formats within the text of comments (comments: " +
                                           std::to_string(formatted_) + ").");
    }
  }

 private:
  void ReadComment(pugi::xml_node node) {
    const auto place = ParseCellName(Attribute(node, "ref"));
    if (!place) throw Damaged(xml_.name(), "a comment is on no cell");
    context_.budget.TakeCell(xml_.name());

    const pugi::xml_node text = Child(node, "text");
    Comment comment;
    comment.text = ReadText(text).text;
    if (Utf16Length(comment.text) > kLongestText)
      throw Damaged(xml_.name(), "the comment on " + NameOf(*place) + " is longer than a comment can be");
    context_.budget.TakeText(comment.text.size(), xml_.name());
    comment.author = AuthorOf(node, *place);
    ReadFont(Child(Child(text, "r"), "rPr"), comment);
    if (HasFormatsWithin(text)) ++formatted_;
    boxes_.Fit(*place, comment);
    sheet_.comments.Set(place->row, place->column, std::move(comment));
  }

  std::string AuthorOf(pugi::xml_node node, const CellPlace& place) const {
    const auto index = Number<std::size_t>(node, "authorId");
    if (!index || *index >= authors_.size())
      throw Damaged(xml_.name(), "the author of the comment on " + NameOf(place) + " does not exist");
    return authors_[*index];
  }

  static void ReadFont(pugi::xml_node font, Comment& comment) {
    const std::string name = CleanText(Attribute(Child(font, "rFont"), "val"));
    if (!name.empty() && name.size() <= kLongestFontName) comment.font_name = name;
    const auto size = Number<double>(Child(font, "sz"), "val");
    if (size && kLeastFontSize <= *size && *size <= kGreatestFontSize) comment.font_size = *size;
  }

  // Whether runs of the text look different, or its font is other than plain.
  static bool HasFormatsWithin(pugi::xml_node text) {
    std::optional<std::pair<std::string_view, std::string_view>> first;
    bool is_formatted = false;
    ForEachChild(text, "r", [&](pugi::xml_node run) {
      const pugi::xml_node font = Child(run, "rPr");
      const std::pair look{Attribute(Child(font, "rFont"), "val"), Attribute(Child(font, "sz"), "val")};
      if (!first) first = look;
      is_formatted = is_formatted || look != *first || Child(font, "b") || Child(font, "i") ||
                     Child(font, "u") || Child(font, "strike");
    });
    return is_formatted;
  }

  static std::string NameOf(const CellPlace& place) { return CellName(place.row, place.column); }

  SheetContext& context_;
  XmlPart xml_;
  const CommentBoxes& boxes_;
  Sheet& sheet_;
  std::vector<std::string> authors_;
  std::size_t formatted_ = 0;
};

}  // namespace

void ReadComments(SheetContext& context, const Relationships& relationships, Sheet& sheet) {
  const CommentBoxes boxes(context, relationships, sheet.name);
  const Relationship* relationship = relationships.FindType("comments");
  if (relationship != nullptr && !relationship->external)
    CommentReader(context, relationship->target, boxes, sheet).Read();
}

}  // namespace mirelo::workbook
