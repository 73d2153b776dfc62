// What the classes compute by themselves, on every machine alike, held against what Windows computes.

#include "com/system.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/windows/user_format.h"
#include "automation/ansi.h"
#include "automation/date.h"
#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "automation/wide_text.h"
#include "com/errors.h"
#include "com/text.h"

namespace mirelo::testing {
namespace {

constexpr LCID kAmerican = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

// Numbers of every size, and those that quotes are: of few digits behind the separator.
std::vector<double> Numbers() {
  std::vector<double> numbers{0, 1, -1, 0.1, 0.01, 1e-4, 1e15, 123456789012345, 1e16, 1e20, 1e-20, 1.5e300};
  std::mt19937_64 chance(7);
  std::uniform_int_distribution<std::int64_t> digits(-99'999'999, 99'999'999);
  std::uniform_int_distribution<int> exponent(-12, 12);
  for (int i = 0; i < 5000; ++i) {
    numbers.push_back(static_cast<double>(digits(chance)) / std::pow(10, i % 7));
    numbers.push_back(static_cast<double>(digits(chance)) * std::pow(10, exponent(chance)));
  }
  return numbers;
}

std::string WindowsText(double number, LCID place = kAmerican) {
  BSTR text = nullptr;
  com::Require(::VarBstrFromR8(number, place, LOCALE_NOUSEROVERRIDE, &text));
  std::string told = com::TextOf(text);
  ::SysFreeString(text);
  return told;
}

std::optional<double> WindowsNumber(std::string_view text, LCID place = kAmerican) {
  double number = 0;
  std::wstring wide = WideText(text);
  if (FAILED(::VarR8FromStr(wide.data(), place, LOCALE_NOUSEROVERRIDE, &number))) return std::nullopt;
  return number;
}

// Small numbers of so many digits that more than 15 would stand behind the point are written with an
// exponent, "3.33333333333333E-02", by Visual Basic and by us; Wine writes them out.
bool NeedsAnExponent(double number) {
  const std::string text = NumberText(number);
  return std::fabs(number) < 1 && text.find('E') != text.npos;
}

TEST(WindowsFunctions, WriteNumbersAsWeDo) {
  int compared = 0;
  for (const double number : Numbers()) {
    if (NeedsAnExponent(number)) continue;
    EXPECT_EQ(NumberText(number), WindowsText(number));
    ++compared;
  }
  EXPECT_GT(compared, 8000);
}

// Wine's last binary digit may be another.
void ExpectSameNumber(std::optional<double> ours, std::optional<double> theirs, std::string_view text) {
  ASSERT_EQ(ours.has_value(), theirs.has_value()) << '"' << text << '"';
  if (!ours) return;
  EXPECT_NEAR(*ours, *theirs, std::fabs(*ours) * 4e-16) << '"' << text << '"';
}

TEST(WindowsFunctions, ReadNumbersAsWeDo) {
  for (const double number : Numbers()) {
    const std::string text = NumberText(number);
    ExpectSameNumber(ParseNumber(text), WindowsNumber(text), text);
  }
  for (const char* text :
       {"1,234", "1,234.5", "-5",  "+5", " 12 ", "1e3", "1E-3", "",     " ",     "-", "abc",
        "1x",    "1.2.3",   "12.", ".5", "1 2",  "--1", "0x10", "&H10", "1,2,3", "5-"}) {
    ExpectSameNumber(ParseNumber(text), WindowsNumber(text), text);
  }
}

constexpr LCID kGerman = MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), SORT_DEFAULT);

TEST(WindowsFunctions, WriteNumbersOfARegionAsWeDo) {
  const RegionalFormat german = windows::UserFormat(L"de-DE");
  for (const double number : Numbers()) {
    const std::string text = Variant(number).ToText(german);
    // Wine writes the point of America into numbers with an exponent.
    if (NeedsAnExponent(number) || text.find('E') != text.npos) continue;
    EXPECT_EQ(text, WindowsText(number, kGerman));
  }
}

TEST(WindowsFunctions, ReadNumbersOfARegionAsWeDo) {
  const RegionalFormat german = windows::UserFormat(L"de-DE");
  for (const double number : Numbers()) {
    const std::string text = Variant(number).ToText(german);
    ExpectSameNumber(ParseNumber(text, german), WindowsNumber(text, kGerman), text);
  }
  for (const char* text : {"1.234", "1.234,5", "1,5", "-0,25", " 12,5 ", "1,5e3", "1,2,3", ",5", "5,", ","}) {
    ExpectSameNumber(ParseNumber(text, german), WindowsNumber(text, kGerman), text);
  }
}

// Nothing where it does not fit.
template <class Integer>
std::optional<Integer> Ours(Integer (*round)(double), double number) {
  try {
    return round(number);
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), 6) << number;
    return std::nullopt;
  }
}
template <class Integer>
std::optional<Integer> Theirs(HRESULT(WINAPI* round)(double, Integer*), double number) {
  Integer rounded = 0;
  const HRESULT result = round(number, &rounded);
  EXPECT_TRUE(SUCCEEDED(result) || result == DISP_E_OVERFLOW) << number;
  return SUCCEEDED(result) ? std::optional(rounded) : std::nullopt;
}

TEST(WindowsFunctions, RoundAsWeDo) {
  std::vector<double> numbers = Numbers();
  for (const double edge : {0.0, 32767.0, 32768.0, 2147483647.0, 2147483648.0}) {
    for (const double more : {-1.5, -1.0, -0.5, -0.4999, 0.0, 0.4999, 0.5, 0.5001, 1.0, 1.5, 2.5}) {
      numbers.insert(numbers.end(), {edge + more, -edge + more});
    }
  }
  for (const double number : numbers) {
    EXPECT_EQ(Ours<std::int16_t>(RoundToInt16, number), Theirs<SHORT>(::VarI2FromR8, number)) << number;
    const auto whole = Theirs<LONG>(::VarI4FromR8, number);
    const auto ours = Ours<std::int32_t>(RoundToInt32, number);
    ASSERT_EQ(ours.has_value(), whole.has_value()) << number;
    if (!whole) continue;
    EXPECT_EQ(*ours, *whole) << number;
  }
}

TEST(WindowsFunctions, WriteTruthAsWeDo) {
  for (const bool is_true : {false, true}) {
    BSTR text = nullptr;
    com::Require(::VarBstrFromBool(is_true ? VARIANT_TRUE : VARIANT_FALSE, kAmerican, 0, &text));
    EXPECT_EQ(Variant(is_true).ToText(), com::TextOf(text));
    ::SysFreeString(text);
  }
}

TEST(WindowsFunctions, ReadTruthAsWeDo) {
  for (const char* text :
       {"True", "False", "true", "FALSE", "1", "0", "-1", "0.5", "abc", "", "Truer", "yes"}) {
    VARIANT_BOOL told = VARIANT_FALSE;
    std::wstring wide = WideText(text);
    const HRESULT result = ::VarBoolFromStr(wide.data(), kAmerican, LOCALE_NOUSEROVERRIDE, &told);
    try {
      const bool ours = Variant(text).ToBoolean();
      EXPECT_TRUE(SUCCEEDED(result)) << text;
      EXPECT_EQ(ours, told != VARIANT_FALSE) << text;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), 13) << text;
      EXPECT_EQ(result, DISP_E_TYPEMISMATCH) << text;
    }
  }
}

TEST(WindowsFunctions, TakeAmountsOfMoneyWhichAreNoNumbersHere) {
  for (const char* text : {"$5", "(5)"}) {
    EXPECT_TRUE(WindowsNumber(text)) << text;
    EXPECT_FALSE(ParseNumber(text)) << text;
  }
}

TEST(WindowsFunctions, TakeDatesApartAsWeDo) {
  std::mt19937 chance(11);
  std::uniform_int_distribution<std::int32_t> second(0, 86'399);
  for (int day = -60'000; day < 80'000; day += 37) {
    const double fraction = second(chance) / 86'400.0;
    const Date date{day < 0 ? day - fraction : day + fraction};
    SYSTEMTIME told{};
    ASSERT_TRUE(::VariantTimeToSystemTime(date.serial, &told)) << date.serial;
    const CivilTime ours = ToCivil(date);
    EXPECT_EQ(ours.year, told.wYear) << date.serial;
    EXPECT_EQ(ours.month, told.wMonth) << date.serial;
    EXPECT_EQ(ours.day, told.wDay) << date.serial;
    EXPECT_EQ(ours.hour, told.wHour) << date.serial;
    EXPECT_EQ(ours.minute, told.wMinute) << date.serial;
    EXPECT_EQ(ours.second, told.wSecond) << date.serial;
    EXPECT_EQ(WeekdayOf(date), told.wDayOfWeek + 1) << date.serial;
    double back = 0;
    ASSERT_TRUE(::SystemTimeToVariantTime(&told, &back));
    EXPECT_NEAR(ToDate(ours).serial, back, 1e-9);
  }
}

TEST(WindowsFunctions, KnowTheCharactersOfTheCodePageAsWeDo) {
  for (int byte = 1; byte < 256; ++byte) {
    const char letter = static_cast<char>(byte);
    wchar_t wide = 0;
    ASSERT_EQ(::MultiByteToWideChar(1252, 0, &letter, 1, &wide, 1), 1);
    const std::string text = NarrowText(std::wstring_view(&wide, 1));
    EXPECT_EQ(AnsiToText(std::string_view(&letter, 1)), text) << byte;
    EXPECT_EQ(TextToAnsi(text), std::string(1, letter)) << byte;
  }
}

TEST(WindowsFunctions, HaveNoByteForTheCharactersThatHaveNoneHere) {
  for (int code = 0x100; code <= 0xFFFF; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;  // halves of letters
    const auto wide = static_cast<wchar_t>(code);
    BOOL is_replaced = FALSE;
    char letter = 0;
    ASSERT_EQ(::WideCharToMultiByte(1252, WC_NO_BEST_FIT_CHARS, &wide, 1, &letter, 1, nullptr, &is_replaced),
              1);
    EXPECT_EQ(TextToAnsi(NarrowText(std::wstring_view(&wide, 1))), std::string(1, letter)) << int{wide};
  }
}

TEST(WideCharacters, AreThoseOfWindows) {
  for (int code = 1; code <= 0xFFFF; ++code) {
    const auto wide = static_cast<wchar_t>(code);
    char narrow[8] = "";
    const int length = ::WideCharToMultiByte(CP_UTF8, 0, &wide, 1, narrow, sizeof narrow, nullptr, nullptr);
    ASSERT_EQ(NarrowText({&wide, 1}), std::string(narrow, static_cast<std::size_t>(length))) << code;
  }
  wchar_t pair[4] = L"";
  ASSERT_EQ(::MultiByteToWideChar(CP_UTF8, 0, "\xF0\x9F\x92\xB9", 4, pair, 4), 2);
  EXPECT_EQ(WideText("\xF0\x9F\x92\xB9"), std::wstring_view(pair, 2));
}

}  // namespace
}  // namespace mirelo::testing
