#include "adapters/workbook/xlsx/result_remover.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/editable_xml.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/address.h"

namespace mirelo::workbook {

namespace {

// A mark between "<" and ">" of well-formed XML.
struct Markup {
  std::string_view text;
  enum class Kind { Start, End, Whole, Other } kind;
  std::string_view name;  // without its prefix
};

std::size_t EndBehind(std::string_view text, std::string_view mark, std::size_t from) {
  const std::size_t at = text.find(mark, from);
  return at == std::string_view::npos ? text.size() : at + mark.size();
}

// The end of a tag, in whose values a ">" may stand.
std::size_t EndOfTag(std::string_view text) {
  char quote = '\0';
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (quote != '\0') {
      if (text[i] == quote) quote = '\0';
    } else if (text[i] == '"' || text[i] == '\'') {
      quote = text[i];
    } else if (text[i] == '>') {
      return i + 1;
    }
  }
  return text.size();
}

// The markup at the beginning of the text.
Markup MarkupAt(std::string_view text) {
  if (text.starts_with("<!--")) return {text.substr(0, EndBehind(text, "-->", 4)), Markup::Kind::Other, ""};
  if (text.starts_with("<![CDATA["))
    return {text.substr(0, EndBehind(text, "]]>", 9)), Markup::Kind::Other, ""};
  if (text.starts_with("<?")) return {text.substr(0, EndBehind(text, "?>", 2)), Markup::Kind::Other, ""};
  if (text.starts_with("<!")) return {text.substr(0, EndBehind(text, ">", 2)), Markup::Kind::Other, ""};
  text = text.substr(0, EndOfTag(text));
  const bool is_end = text.starts_with("</");
  const std::size_t start = is_end ? 2 : 1;
  std::string_view name = text.substr(start, text.find_first_of(" \t\r\n/>", start) - start);
  name.remove_prefix(name.find(':') + 1);
  const auto kind = is_end                 ? Markup::Kind::End
                    : text.ends_with("/>") ? Markup::Kind::Whole
                                           : Markup::Kind::Start;
  return {text, kind, name};
}

constexpr std::string_view kBlanks = " \t\r\n";

// An attribute of a tag with the blanks before it; both empty when the tag has none of this name.
struct FoundAttribute {
  std::string_view whole;
  std::string_view value;
};
FoundAttribute FindIn(std::string_view tag, std::string_view name) {
  std::size_t at = tag.find_first_of(kBlanks);
  while (at < tag.size()) {
    const std::size_t start = tag.find_first_not_of(kBlanks, at);
    const std::size_t quote = tag.find_first_of("\"'", at);
    if (quote == std::string_view::npos) return {};
    const std::size_t end = tag.find(tag[quote], quote + 1);
    if (end == std::string_view::npos) return {};
    const std::string_view own_name = tag.substr(start, tag.find_first_of(" \t\r\n=", start) - start);
    if (own_name == name) return {tag.substr(at, end + 1 - at), tag.substr(quote + 1, end - quote - 1)};
    at = end + 1;
  }
  return {};
}

class ResultRemover {
 public:
  ResultRemover(std::string_view sheet, const std::vector<CellPlace>& cells)
      : rest_(sheet), next_(cells.begin()), end_(cells.end()) {}

  std::string Remove() {
    out_.reserve(rest_.size());
    while (!rest_.empty()) {
      CopyContent();
      if (rest_.empty()) break;
      const Markup markup = MarkupAt(rest_);
      if (markup.name == "sheetData") is_in_cells_ = markup.kind == Markup::Kind::Start;
      const bool begins = markup.kind == Markup::Kind::Start || markup.kind == Markup::Kind::Whole;
      if (is_in_cells_ && begins && markup.name == "row") BeginRow(markup.text);
      if (is_in_cells_ && begins && markup.name == "c" && IsNextCell(markup.text)) {
        CopyCell(markup);
      } else {
        Copy(markup.text.size());
      }
    }
    return std::move(out_);
  }

 private:
  void Copy(std::size_t size) {
    out_ += rest_.substr(0, size);
    rest_.remove_prefix(size);
  }
  void Take(std::size_t size, bool is_left_out) {
    if (!is_left_out) return Copy(size);
    rest_.remove_prefix(size);
  }
  void CopyContent() { Copy(std::min(rest_.find('<'), rest_.size())); }

  void BeginRow(std::string_view tag) {
    const auto row = ParseWhole<std::int32_t>(FindIn(tag, "r").value);
    place_ = {row.value_or(place_.row + 1), 0};
  }

  bool IsNextCell(std::string_view tag) {
    const auto named = ParseCellName(FindIn(tag, "r").value);
    place_.column = named ? named->column : place_.column + 1;
    while (next_ != end_ && *next_ < place_) ++next_;
    return next_ != end_ && *next_ == place_;
  }

  // A cell without its type and without the elements that hold its value.
  void CopyCell(const Markup& start) {
    const std::string_view type = FindIn(start.text, "t").whole;
    const std::size_t before =
        type.empty() ? start.text.size() : static_cast<std::size_t>(type.data() - start.text.data());
    out_ += start.text.substr(0, before);
    out_ += start.text.substr(before + type.size());
    rest_.remove_prefix(start.text.size());
    if (start.kind == Markup::Kind::Whole) return;

    std::size_t depth = 1;
    bool is_in_value = false;
    while (!rest_.empty() && depth > 0) {
      Take(std::min(rest_.find('<'), rest_.size()), is_in_value);
      if (rest_.empty()) return;
      const Markup markup = MarkupAt(rest_);
      const bool is_value = depth == 1 && (markup.name == "v" || markup.name == "is");
      if (markup.kind == Markup::Kind::Start) {
        ++depth;
        is_in_value = is_in_value || is_value;
      }
      Take(markup.text.size(), is_in_value || is_value);
      if (markup.kind == Markup::Kind::End && --depth == 1) is_in_value = false;
    }
  }

  std::string_view rest_;
  std::vector<CellPlace>::const_iterator next_;
  std::vector<CellPlace>::const_iterator end_;
  CellPlace place_{0, 0};
  bool is_in_cells_ = false;
  std::string out_;
};

// Whether bytes below 128 are what they are in ASCII. Two bytes for a letter show in the first four bytes.
bool IsAsciiBased(std::string_view text) {
  return !text.starts_with("\xFE\xFF") && !text.starts_with("\xFF\xFE") &&
         text.substr(0, 4).find('\0') == std::string_view::npos;
}

}  // namespace

std::string WithoutResults(const std::string& part, std::string sheet, const std::vector<CellPlace>& cells) {
  if (!IsAsciiBased(sheet)) sheet = EditableXml(part, sheet).Text();
  return ResultRemover(sheet, cells).Remove();
}

}  // namespace mirelo::workbook
