#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "automation/text.h"
#include "spreadsheet/display/displayed_text.h"
#include "spreadsheet/display/fixed_decimal.h"
#include "spreadsheet/format_code.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::size_t kMostDecimals = 30;

// An item of a section: a digit's place (0, # or ?), the decimal point, the exponent's mark, or text.
struct NumberItem {
  enum class Kind { Digit, Point, Exponent, Text, General } kind;
  char digit =
      '0';  // of a place, its letter; of an exponent, its sign's rule (+ always, - only when negative)
  std::string text;
};

struct Section {
  std::vector<NumberItem> items;
  bool grouped = false;
  int scale = 0;  // powers of ten to multiply by: percent signs, and commas behind the last place
  bool fraction = false;
};

bool IsPlace(char c) { return c == '0' || c == '#' || c == '?'; }

std::string LiteralText(std::string_view literal) {
  switch (literal.front()) {
    case '"':
      return std::string(literal.substr(1, literal.size() - 2));
    case '\\':
      return std::string(literal.substr(1));
    case '_':
      return " ";
    default:
      return "";
  }
}

// A comma groups thousands when places follow before the point, and scales by a thousand when none do.
void ReadComma(Section& section, std::string_view behind) {
  const std::size_t next = behind.find_first_not_of(',');
  if (next != std::string_view::npos && IsPlace(behind[next])) {
    section.grouped = true;
  } else {
    section.scale -= 3;
  }
}

// Reads one item at the start of `code`; its length.
std::size_t ReadItem(Section& section, std::string_view code) {
  using Kind = NumberItem::Kind;
  const std::size_t literal = LiteralLength(code);
  if (literal == std::string_view::npos) return code.size();
  if (literal > 0) {
    section.items.push_back({Kind::Text, 0, LiteralText(code.substr(0, literal))});
    return literal;
  }
  const char c = code.front();
  const auto seen = [&](Kind kind) {
    return std::any_of(section.items.begin(), section.items.end(),
                       [&](const NumberItem& i) { return i.kind == kind; });
  };
  if (EqualText(code.substr(0, 7), "General")) {
    section.items.push_back({Kind::General, 0, ""});
    return 7;
  }
  if (IsPlace(c)) {
    section.items.push_back({Kind::Digit, c, ""});
  } else if (c == '.' && !seen(Kind::Point)) {
    section.items.push_back({Kind::Point, 0, ""});
  } else if ((c == 'E' || c == 'e') && code.size() > 1 && (code[1] == '+' || code[1] == '-') &&
             !seen(Kind::Exponent)) {
    section.items.push_back({Kind::Exponent, code[1], std::string(1, c)});
    return 2;
  } else if (c == ',' && seen(Kind::Digit)) {
    ReadComma(section, code.substr(1));
  } else {
    if (c == '%') section.scale += 2;
    if (c == '/' && seen(Kind::Digit)) section.fraction = true;
    section.items.push_back({Kind::Text, 0, std::string(1, c)});
  }
  return 1;
}

Section ReadSection(std::string_view code) {
  Section section;
  while (!code.empty()) code.remove_prefix(ReadItem(section, code));
  return section;
}

// The places of one part of the number (whole, decimals, exponent): the indexes of their items.
struct Places {
  std::vector<std::size_t> whole;
  std::vector<std::size_t> decimals;
  std::vector<std::size_t> exponent;
};

Places FindPlaces(const Section& section) {
  Places places;
  std::vector<std::size_t>* part = &places.whole;
  for (std::size_t i = 0; i < section.items.size(); ++i) {
    switch (section.items[i].kind) {
      case NumberItem::Kind::Point:
        part = &places.decimals;
        break;
      case NumberItem::Kind::Exponent:
        part = &places.exponent;
        break;
      case NumberItem::Kind::Digit:
        part->push_back(i);
        break;
      default:
        break;
    }
  }
  return places;
}

std::string Fixed(double number, std::size_t decimals) {
  return FixedDecimal(number, std::min(decimals, kMostDecimals));
}

// Puts digits into places from the right; those that find none go before the first. Places without a digit
// show a zero, a blank or nothing.
void FillFromRight(std::vector<std::string>& shown, const Section& section,
                   const std::vector<std::size_t>& places, std::string digits, bool grouped) {
  if (digits == "0") digits.clear();  // an optional place shows no zero
  std::size_t written = 0;
  const auto write = [&](std::string& where, char digit) {
    if (grouped && written != 0 && written % 3 == 0) where.insert(where.begin(), ',');
    where.insert(where.begin(), digit);
    ++written;
  };
  for (auto place = places.rbegin(); place != places.rend(); ++place) {
    const char kind = section.items[*place].digit;
    if (!digits.empty()) {
      write(shown[*place], digits.back());
      digits.pop_back();
    } else if (kind == '0') {
      write(shown[*place], '0');
    } else if (kind == '?') {
      shown[*place] = ' ';
    }
  }
  for (; !places.empty() && !digits.empty(); digits.pop_back()) write(shown[places.front()], digits.back());
}

void FillDecimals(std::vector<std::string>& shown, const Section& section,
                  const std::vector<std::size_t>& places, const std::string& digits) {
  std::size_t needed = digits.find_last_not_of('0') + 1;  // npos + 1 is 0
  for (std::size_t i = 0; i < places.size(); ++i) {
    const char kind = section.items[places[i]].digit;
    if (i < digits.size() && (i < needed || kind == '0')) {
      shown[places[i]] = std::string(1, digits[i]);
    } else if (kind == '?') {
      shown[places[i]] = ' ';
    }
  }
}

// Brings `number` to as many whole digits as there are places, and returns the power of ten that was taken
// out.
int TakeExponent(double& number, const Places& places) {
  if (number == 0) return 0;
  const int step = std::max<int>(1, static_cast<int>(places.whole.size()));
  const auto shift = [&](int exponent) { return exponent - (((exponent % step) + step) % step); };
  int exponent = shift(static_cast<int>(std::floor(std::log10(number))));
  double mantissa = number / std::pow(10.0, exponent);
  const std::string rounded = Fixed(mantissa, places.decimals.size());
  if (rounded.substr(0, rounded.find('.')).size() > static_cast<std::size_t>(step)) {  // 9.99 became 10.0
    exponent += step;
    mantissa = number / std::pow(10.0, exponent);
  }
  number = mantissa;
  return exponent;
}

}  // namespace

std::string NumberInSection(double number, std::string_view code) {
  const Section section = ReadSection(code);
  if (section.fraction) return GeneralNumber(number);
  const Places places = FindPlaces(section);
  const bool has_places = !places.whole.empty() || !places.decimals.empty();

  double size = std::fabs(number) * std::pow(10.0, section.scale);
  std::vector<std::string> shown(section.items.size());
  for (std::size_t i = 0; i < section.items.size(); ++i) {
    const NumberItem& item = section.items[i];
    if (item.kind == NumberItem::Kind::Text) shown[i] = item.text;
    if (item.kind == NumberItem::Kind::Point) shown[i] = '.';
    if (item.kind == NumberItem::Kind::General) shown[i] = GeneralNumber(std::fabs(number));
    if (item.kind == NumberItem::Kind::Exponent) {
      const int exponent = TakeExponent(size, places);
      shown[i] = item.text + (exponent < 0 ? "-" : item.digit == '+' ? "+" : "");
      FillFromRight(shown, section, places.exponent, std::to_string(std::abs(exponent)), false);
    }
  }
  const std::string digits = Fixed(size, places.decimals.size());
  const std::size_t point = digits.find('.');
  FillFromRight(shown, section, places.whole, digits.substr(0, point), section.grouped);
  if (point != std::string::npos) FillDecimals(shown, section, places.decimals, digits.substr(point + 1));

  std::string text;
  for (const std::string& piece : shown) text += piece;
  const bool shows_number = !has_places || digits.find_first_not_of("0.") != std::string::npos;
  return number < 0 && shows_number ? "-" + text : text;
}

}  // namespace mirelo::spreadsheet
