#include "adapters/workbook/xlsx/formula_references.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "automation/text.h"

namespace mirelo::workbook {

namespace {

constexpr std::size_t kLongestReadFormula = 64 << 10;  // programs take 8 KiB, some 64 KiB

// Functions whose result hangs on more than the cells that they are given.
constexpr std::array kOpenFunctions = std::to_array<std::string_view>({
    "CALL",
    "CELL",
    "CUBEKPIMEMBER",
    "CUBEMEMBER",
    "CUBEMEMBERPROPERTY",
    "CUBERANKEDMEMBER",
    "CUBESET",
    "CUBESETCOUNT",
    "CUBEVALUE",
    "CURRENT",
    "DDE",
    "EVALUATE",
    "FIELDVALUE",
    "GETPIVOTDATA",
    "INDIRECT",
    "INFO",
    "MULTIPLE.OPERATIONS",
    "NOW",
    "OFFSET",
    "RAND",
    "RAND.NV",
    "RANDARRAY",
    "RANDBETWEEN",
    "RANDBETWEEN.NV",
    "REGISTER.ID",
    "RTD",
    "SHEET",
    "SHEETS",
    "STOCKHISTORY",
    "STYLE",
    "TABLE",
    "TODAY",
    "WEBSERVICE",
});

// Functions that read a range as large as another one, wherever it ends by itself.
constexpr std::array kStretchingFunctions = std::to_array<std::string_view>({"SUMIF", "AVERAGEIF"});

bool IsOneOf(std::string_view name, const auto& names) {
  return std::any_of(names.begin(), names.end(), [&](std::string_view n) { return EqualText(n, name); });
}

bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }
bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
// Of a name, a number or an address. All of a letter beyond ASCII.
bool IsOfWord(char c) {
  return IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' || c == '.' || c == '\\' || c == '?' || c == '$' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsBetweenOperands(char c) {
  return std::string_view("+-*/^&=<>%,;(){}@ \t\r\n").find(c) != std::string_view::npos;
}

// One end of a range: "$B$3", "B" or "3".
struct RangeEnd {
  std::int32_t row = 0;  // 0 where it tells none
  std::int32_t column = 0;
  bool moves_row = false;
  bool moves_column = false;
};

std::optional<RangeEnd> ParseRangeEnd(std::string_view word) {
  RangeEnd corner;
  std::size_t at = 0;
  const auto take_dollar = [&] { return at < word.size() && word[at] == '$' && ++at > 0; };
  bool is_fixed = take_dollar();
  const std::size_t column_letters = at;
  for (; at < word.size() && IsAsciiLetter(word[at]) && at - column_letters < 4; ++at)
    corner.column = corner.column * 26 + ((word[at] & ~0x20) - 'A' + 1);
  if (at > column_letters) {
    corner.moves_column = !is_fixed;
    is_fixed = take_dollar();
  }
  const std::size_t digits = at;
  for (; at < word.size() && IsAsciiDigit(word[at]) && at - digits < 8; ++at)
    corner.row = corner.row * 10 + (word[at] - '0');
  if (at > digits) {
    corner.moves_row = !is_fixed;
    if (corner.row == 0) return std::nullopt;
  }
  const bool is_whole = at == word.size() && at > column_letters && word.back() != '$';
  if (!is_whole || corner.row > kRows || corner.column > kColumns) return std::nullopt;
  return corner;
}

std::optional<CellsReference> Between(const RangeEnd& a, const RangeEnd& b) {
  if ((a.row == 0) != (b.row == 0) || (a.column == 0) != (b.column == 0)) return std::nullopt;
  CellsReference cells;
  cells.area = Area::Sheet();
  if (a.row != 0) {
    const bool is_in_order = a.row <= b.row;
    cells.area.first_row = std::min(a.row, b.row);
    cells.area.last_row = std::max(a.row, b.row);
    cells.moves_first_row = is_in_order ? a.moves_row : b.moves_row;
    cells.moves_last_row = is_in_order ? b.moves_row : a.moves_row;
  }
  if (a.column != 0) {
    const bool is_in_order = a.column <= b.column;
    cells.area.first_column = std::min(a.column, b.column);
    cells.area.last_column = std::max(a.column, b.column);
    cells.moves_first_column = is_in_order ? a.moves_column : b.moves_column;
    cells.moves_last_column = is_in_order ? b.moves_column : a.moves_column;
  }
  return cells;
}

// What stands before a "!".
struct Prefix {
  std::string first_sheet;
  std::string last_sheet;
  bool is_elsewhere = false;  // in another workbook
};

class FormulaReader {
 public:
  explicit FormulaReader(std::string_view text) : text_(text) {}

  FormulaReferences Read() {
    while (at_ < text_.size() && !found_.is_open) ReadNext();
    if (stretches_) {
      for (CellsReference& cells : found_.cells) cells.area = Area::Sheet();
    }
    return std::move(found_);
  }

 private:
  char Here() const { return at_ < text_.size() ? text_[at_] : '\0'; }

  bool Take(char c) {
    if (Here() != c) return false;
    ++at_;
    return true;
  }

  std::string_view TakeWord() {
    const std::size_t start = at_;
    while (at_ < text_.size() && IsOfWord(text_[at_])) ++at_;
    return text_.substr(start, at_ - start);
  }

  void ReadNext() {
    const char c = Here();
    if (IsBetweenOperands(c)) {
      ++at_;
    } else if (c == '"') {
      if (!TakeQuoted('"')) found_.is_open = true;
    } else if (c == '#') {
      TakeError();
    } else if (c == '\'') {
      const auto sheet = TakeQuoted('\'');
      if (!sheet || !Take('!')) return Open();
      ReadBehind(PrefixOf(*sheet));
    } else if (c == '[') {
      ReadBehindBook();
    } else if (IsOfWord(c)) {
      ReadWord();
    } else {
      Open();  // as for a range whose end a function tells
    }
  }

  void Open() { found_.is_open = true; }

  // A text in quotes, in which a quote stands twice; nothing when it does not end.
  std::optional<std::string> TakeQuoted(char quote) {
    std::string content;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == quote && (++at_ >= text_.size() || text_[at_] != quote)) return content;
      content += text_[at_];
    }
    return std::nullopt;
  }

  // "#REF!", and the mark of what a formula has spilled into, which hangs on the cell before it.
  void TakeError() {
    ++at_;
    if (!IsAsciiLetter(Here())) return;
    while (IsAsciiLetter(Here()) || IsAsciiDigit(Here()) || Here() == '/' || Here() == '_') ++at_;
    if (!Take('!')) Take('?');
  }

  // "[1]Sheet1!", where the number tells the workbook.
  void ReadBehindBook() {
    const std::size_t end = text_.find(']', at_);
    if (end == std::string_view::npos) return Open();
    std::string sheet(text_.substr(at_, end + 1 - at_));
    at_ = end + 1;
    sheet += TakeWord();
    if (Take(':')) sheet.append(":").append(TakeWord());
    if (!Take('!')) return Open();
    ReadBehind(PrefixOf(sheet));
  }

  static constexpr std::string_view kOwnBook = "[0]";

  std::optional<Prefix> PrefixOf(std::string_view sheets) const {
    if (sheets.starts_with(kOwnBook)) sheets.remove_prefix(kOwnBook.size());
    Prefix prefix;
    if (sheets.starts_with('[')) {
      const std::size_t end = sheets.find(']');
      const std::string_view number = sheets.substr(1, end == std::string_view::npos ? 0 : end - 1);
      if (number.empty() || !std::all_of(number.begin(), number.end(), IsAsciiDigit)) return std::nullopt;
      prefix.is_elsewhere = true;
      return prefix;
    }
    if (sheets.find('[') != std::string_view::npos) return std::nullopt;  // a workbook by its name
    const std::size_t colon = sheets.find(':');
    prefix.first_sheet = sheets.substr(0, colon);
    if (colon != std::string_view::npos) prefix.last_sheet = sheets.substr(colon + 1);
    if (colon != std::string_view::npos && (prefix.first_sheet.empty() || prefix.last_sheet.empty()))
      return std::nullopt;
    return prefix;
  }

  void ReadWord() {
    const std::string_view word = TakeWord();
    if (Take('!')) return ReadBehind(Prefix{std::string(word), "", false});
    if (Here() == ':') {
      const std::size_t colon = at_++;
      const std::string_view other = TakeWord();
      if (!other.empty() && Take('!'))
        return ReadBehind(Prefix{std::string(word), std::string(other), false});
      at_ = colon;
    }
    ReadOperand(word, {});
  }

  void ReadBehind(const std::optional<Prefix>& prefix) {
    if (!prefix) return Open();
    if (Here() == '#') return TakeError();
    const std::string_view word = TakeWord();
    if (word.empty() || Here() == '(') return Open();
    ReadOperand(word, *prefix);
  }

  void ReadOperand(std::string_view word, const Prefix& prefix) {
    if (Here() == '(') return AddFunction(word);
    if (Here() == '[') {
      if (!TakeBrackets()) return Open();
      if (!prefix.is_elsewhere) found_.names.emplace_back(word);
      return;
    }
    const auto corner = ParseRangeEnd(word);
    if (Take(':')) {
      const auto end = ParseRangeEnd(TakeWord());
      const bool is_range = corner && end && Here() != '(' && Here() != '!' && Here() != '[' && Here() != ':';
      const auto cells = is_range ? Between(*corner, *end) : std::nullopt;
      return cells ? AddCells(*cells, prefix) : Open();
    }
    if (corner && corner->row != 0 && corner->column != 0)
      return AddCells(*Between(*corner, *corner), prefix);
    if (IsAsciiDigit(word.front()) || word.front() == '.') return;  // a number
    if (!prefix.is_elsewhere) AddName(word);
  }

  // The columns of a table, in brackets that nest, where "'" goes before a bracket of a name.
  bool TakeBrackets() {
    std::size_t depth = 0;
    for (; at_ < text_.size(); ++at_) {
      if (text_[at_] == '\'') {
        ++at_;
      } else if (text_[at_] == '[') {
        ++depth;
      } else if (text_[at_] == ']' && --depth == 0) {
        ++at_;
        return Here() != ':';
      }
    }
    return false;
  }

  void AddCells(CellsReference cells, const Prefix& prefix) {
    if (prefix.is_elsewhere) return;
    cells.first_sheet = prefix.first_sheet;
    cells.last_sheet = prefix.last_sheet;
    found_.cells.push_back(std::move(cells));
  }

  void AddName(std::string_view name) {
    constexpr std::string_view kParameter = "_xlpm.";
    if (name.starts_with(kParameter) || EqualText(name, "TRUE") || EqualText(name, "FALSE")) return;
    found_.names.emplace_back(name);
  }

  void AddFunction(std::string_view name) {
    for (const std::string_view newer : {"_xlfn.", "_xlws.", "ORG.LIBREOFFICE.", "COM.MICROSOFT."}) {
      if (name.starts_with(newer)) name.remove_prefix(newer.size());
    }
    if (name.starts_with('_') || name.starts_with("GET.") || IsOneOf(name, kOpenFunctions)) return Open();
    if (IsOneOf(name, kStretchingFunctions)) stretches_ = true;
    found_.functions.emplace_back(name);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  FormulaReferences found_;
  bool stretches_ = false;
};

}  // namespace

FormulaReferences ReadFormula(std::string_view formula) {
  if (formula.empty() || formula.size() > kLongestReadFormula) return {{}, {}, {}, true};
  return FormulaReader(formula).Read();
}

}  // namespace mirelo::workbook
