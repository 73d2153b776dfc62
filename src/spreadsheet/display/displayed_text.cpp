#include "spreadsheet/display/displayed_text.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

#include "automation/text.h"
#include "spreadsheet/display/fixed_decimal.h"
#include "spreadsheet/format_code.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::size_t kTextSection = 3;

// The text that a literal of a format puts into a cell.
void AppendLiteral(std::string& shown, std::string_view literal) {
  switch (literal.front()) {
    case '"':
      shown += literal.substr(1, literal.size() - 2);
      return;
    case '\\':
      shown += literal.substr(1);
      return;
    case '_':
      shown += ' ';
      return;  // room as wide as the character
    default:
      return;  // fill characters and bracketed items show nothing here
  }
}

std::string TextInSection(std::string_view text, std::string_view section) {
  std::string shown;
  while (!section.empty()) {
    const std::size_t literal = LiteralLength(section);
    if (literal == std::string_view::npos) break;
    if (literal > 0) {
      AppendLiteral(shown, section.substr(0, literal));
    } else if (section.front() == '@') {
      shown += text;
    } else {
      shown += section.front();
    }
    section.remove_prefix(literal > 0 ? literal : 1);
  }
  return shown;
}

// Positive; negative; zero. With two sections zero is positive, with one everything is.
std::string NumberInFormat(double number, std::string_view format) {
  const std::vector<std::string_view> sections = FormatSections(format);
  std::size_t index = 0;
  if (number < 0 && sections.size() > 1) index = 1;
  if (number == 0 && sections.size() > 2) index = 2;
  const std::string_view section = sections[index];

  if (section.empty()) return sections.size() > 1 ? "" : GeneralNumber(number);
  if (IsDateFormat(section)) return DateInSection(number, section);
  return NumberInSection(index == 1 ? -number : number, section);
}

}  // namespace

std::string DisplayedText(const CellValue& value, std::string_view format) {
  if (const double* number = value.IfNumber()) return NumberInFormat(*number, format);
  if (const bool* boolean = value.IfBoolean()) return *boolean ? "TRUE" : "FALSE";
  if (const CellError* error = value.IfError()) return std::string(ErrorText(*error));
  if (value.IsNotCalculated()) return "not calculated";
  const std::string* text = value.IfText();
  if (text == nullptr) return "";
  const std::vector<std::string_view> sections = FormatSections(format);
  if (sections.size() <= kTextSection) return *text;
  return TextInSection(*text, sections[kTextSection]);
}

std::string GeneralNumber(double number) {
  constexpr std::size_t kDigits = 10;  // and the decimal point
  const double size = std::fabs(number);
  if (size != 0 && (size >= 1e11 || size < 1e-4)) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.5E", number);
    std::string text(buffer);
    const std::size_t e = text.find('E');
    std::size_t end = text.find_last_not_of('0', e - 1) + 1;
    if (text[end - 1] == '.') --end;
    return text.erase(end, e - end);
  }
  const std::size_t whole_digits = FixedDecimal(std::floor(size), 0).size();
  std::string text = FixedDecimal(size, whole_digits < kDigits ? kDigits - whole_digits : 0);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return number < 0 && text != "0" ? "-" + text : text;
}

}  // namespace mirelo::spreadsheet
