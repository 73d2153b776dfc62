// Attacks what reads text from outside: dates, numbers, formats, and the text functions under them. The input
// is a text and, behind its first NUL byte, a format.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "automation/ansi.h"
#include "automation/format.h"
#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"

namespace {

using namespace mirelo;

void Require(bool holds) {
  if (!holds) std::abort();
}

RegionalFormat German() {
  RegionalFormat german;
  german.date_order = RegionalFormat::DateOrder::DayMonthYear;
  german.date_separator = ".";
  german.decimal_separator = ",";
  german.group_separator = ".";
  german.short_date = "dd/mm/yyyy";
  german.long_time = "hh:nn:ss";
  german.am = "";
  german.pm = "";
  return german;
}

void AttackDates(std::string_view text, std::string_view format, const RegionalFormat& regional) {
  Format(text, format, regional);
  const auto date = ParseDate(text, regional);
  if (!date) return Require(Format(text, format, regional) == text);
  Require(ToDate(ToCivil(*date)) == *date);
  Require(ParseDate(GeneralDate(*date, regional), regional) == date);
  Format(*date, format, regional);
}

void AttackNumbers(std::string_view text, const RegionalFormat& regional) {
  Require(!std::isnan(Val(text)));
  const auto number = ParseNumber(text, regional);
  Require(IsNumeric(text, regional) == number.has_value());
  if (!number) return;
  Require(std::isfinite(*number));
  const auto printed = Val(NumberText(*number));
  Require(std::fabs(printed - *number) <= std::fabs(*number) * 1e-14);
}

void AttackText(std::string_view text, std::string_view other) {
  const std::int32_t length = Len(text);
  std::string rebuilt;
  for (std::int32_t at = 1; at <= length; at += 7) rebuilt += Mid(text, at, 7);
  Require(rebuilt == text);
  Require(EqualText(text, text));
  Require(EqualText(text, other) == (StrComp(text, other, Compare::Text) == 0));
  if (EqualText(text, other)) Require(HashText(text) == HashText(other));
  Require(EqualText(text, LCase(text)));
  Require(TextToAnsi(AnsiToText(text)) == text);
  const std::int32_t found = InStr(1, text, other, Compare::Text);
  if (found > 0 && !other.empty()) Require(EqualText(Mid(text, found, Len(other)), other));
  Require(Join(Split(text, ","), ",") == text);
  Replace(text, other, "x", Compare::Text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string_view text = input.substr(0, input.find('\0'));
  const std::string_view format = input.substr(std::min(text.size() + 1, input.size()));
  static const RegionalFormat german = German();
  for (const RegionalFormat* regional : {&RegionalFormat::Standard(), &german}) {
    AttackDates(text, format, *regional);
    AttackNumbers(text, *regional);
  }
  AttackText(text, format);
  return 0;
}
