#include "adapters/workbook/xlsx/sheet_transplant.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

// The file writer's parts are of one regular form: attributes in double quotes with one blank in front, no
// ">" in their values, and no "<" that begins no tag.
class Tag {
 public:
  explicit Tag(std::string_view text) : text_(text) {}

  std::string_view Name() const { return text_.substr(1, text_.find_first_of(" />", 1) - 1); }

  // The value of an attribute, written as ` name="`.
  std::optional<std::string_view> Value(std::string_view mark) const {
    const std::size_t at = text_.find(mark);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view rest = text_.substr(at + mark.size());
    return rest.substr(0, rest.find('"'));
  }

  // The tag with another value of the attribute, which it has.
  std::string With(std::string_view mark, std::string_view value) const {
    const std::string_view old = *Value(mark);
    const auto at = static_cast<std::size_t>(old.data() - text_.data());
    return std::string(text_.substr(0, at)).append(value).append(text_.substr(at + old.size()));
  }

  // The tag with one attribute more.
  std::string Adding(std::string_view attribute) const {
    const std::size_t end = Name().size() + 1;
    return std::string(text_.substr(0, end)).append(attribute).append(text_.substr(end));
  }

 private:
  std::string_view text_;
};

class Transplant {
 public:
  Transplant(const StyleIndexes& styles, const std::vector<std::string>& shared_strings, bool is_selected)
      : styles_(styles), shared_strings_(shared_strings), is_selected_(is_selected) {}

  std::string Of(std::string_view sheet) {
    out_.reserve(sheet.size() + sheet.size() / 8);
    while (!sheet.empty()) {
      const std::size_t start = std::min(sheet.find('<'), sheet.size());
      AddContent(sheet.substr(0, start));
      sheet.remove_prefix(start);
      const std::size_t end =
          std::min(sheet.find('>'), sheet.size() - std::min<std::size_t>(sheet.size(), 1));
      if (!sheet.empty()) AddTag(sheet.substr(0, end + 1));
      sheet.remove_prefix(std::min(end + 1, sheet.size()));
    }
    return std::move(out_);
  }

 private:
  void AddContent(std::string_view content) {
    if (!is_shared_text_ || content.empty()) {
      out_ += content;
      return;
    }
    const auto place = ParseWhole<std::size_t>(content);
    if (place && *place < shared_strings_.size()) out_ += shared_strings_[*place];
  }

  void AddTag(std::string_view text) {
    const Tag tag(text);
    const std::string_view name = tag.Name();
    if (name == "c") return AddCell(text);
    if (name == "row") return AddMapped(tag, text, " s=\"", styles_.cells);
    if (name == "col") return AddMapped(tag, text, " style=\"", styles_.cells);
    if (name == "cfRule") return AddMapped(tag, text, " dxfId=\"", styles_.differential);
    if (name == "sheetView") return AddView(tag, text);
    if (is_shared_text_ && (text == "<v>" || text == "</v>")) {
      out_ += text == "<v>" ? "<is>" : "</is>";
      if (text == "</v>") is_shared_text_ = false;
      return;
    }
    out_ += text;
  }

  void AddCell(std::string_view text) {
    std::string cell(text);
    if (Tag(cell).Value(" t=\"") == "s") {
      cell = Tag(cell).With(" t=\"", "inlineStr");
      is_shared_text_ = true;
    }
    const Tag tag(cell);
    const bool has_style = tag.Value(" s=\"").has_value();
    // A cell that tells no format has the first one, which may have gone elsewhere.
    if (!has_style && !styles_.cells.empty() && styles_.cells.front() != 0) {
      out_ += tag.Adding(" s=\"" + std::to_string(styles_.cells.front()) + "\"");
    } else {
      AddMapped(tag, cell, " s=\"", styles_.cells);
    }
  }

  void AddMapped(const Tag& tag, std::string_view text, std::string_view mark,
                 const std::vector<std::size_t>& new_indexes) {
    const auto value = tag.Value(mark);
    const auto old = value ? ParseWhole<std::size_t>(*value) : std::nullopt;
    if (old && *old < new_indexes.size()) {
      out_ += tag.With(mark, std::to_string(new_indexes[*old]));
    } else {
      out_ += text;
    }
  }

  void AddView(const Tag& tag, std::string_view text) {
    constexpr std::string_view kMark = " tabSelected=\"";
    if (tag.Value(kMark)) {
      out_ += tag.With(kMark, is_selected_ ? "1" : "0");
    } else if (is_selected_) {
      out_ += tag.Adding(std::string(kMark) + "1\"");
    } else {
      out_ += text;
    }
  }

  const StyleIndexes& styles_;
  const std::vector<std::string>& shared_strings_;
  bool is_selected_;
  bool is_shared_text_ = false;  // of the cell being copied
  std::string out_;
};

}  // namespace

std::string TransplantSheet(std::string_view sheet, const StyleIndexes& styles,
                            const std::vector<std::string>& shared_strings, bool is_selected) {
  return Transplant(styles, shared_strings, is_selected).Of(sheet);
}

std::vector<std::string> SharedStringsIn(std::string_view part) {
  constexpr std::string_view kStart = "<si>";
  constexpr std::string_view kEnd = "</si>";
  std::vector<std::string> texts;
  for (std::size_t start = part.find(kStart); start != std::string_view::npos;
       start = part.find(kStart, start)) {
    start += kStart.size();
    const std::size_t end = std::min(part.find(kEnd, start), part.size());
    texts.emplace_back(part.substr(start, end - start));
  }
  return texts;
}

std::string WithoutSelectedTab(std::string sheet) {
  constexpr std::string_view kName = "tabSelected";
  const std::size_t cells = sheet.find("sheetData");  // views stand in front of the cells
  for (std::size_t at = sheet.find(kName); at < cells; at = sheet.find(kName, at)) {
    at = sheet.find_first_of("\"'", at);
    if (at == std::string::npos) break;
    const std::size_t end = sheet.find(sheet[at], at + 1);
    if (end == std::string::npos) break;
    sheet.replace(at + 1, end - at - 1, "0");
  }
  return sheet;
}

}  // namespace mirelo::workbook
