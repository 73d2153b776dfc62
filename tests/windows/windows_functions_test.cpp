// What the classes compute by themselves, on every machine alike, held against what Windows computes.

#include "com/system.h"

#include <bcrypt.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "automation/ansi.h"
#include "automation/date.h"
#include "automation/number.h"
#include "automation/wide_text.h"
#include "com/errors.h"
#include "com/text.h"
#include "streaming/MD5.h"

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

std::string WindowsText(double number) {
  BSTR text = nullptr;
  com::Require(::VarBstrFromR8(number, kAmerican, LOCALE_NOUSEROVERRIDE, &text));
  std::string told = com::TextOf(text);
  ::SysFreeString(text);
  return told;
}

std::optional<double> WindowsNumber(std::string_view text) {
  double number = 0;
  std::wstring wide = WideText(text);
  if (FAILED(::VarR8FromStr(wide.data(), kAmerican, LOCALE_NOUSEROVERRIDE, &number))) return std::nullopt;
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
  for (wchar_t wide = 0x100; wide < 0x2200; ++wide) {
    BOOL is_replaced = FALSE;
    char letter = 0;
    ASSERT_EQ(::WideCharToMultiByte(1252, WC_NO_BEST_FIT_CHARS, &wide, 1, &letter, 1, nullptr, &is_replaced),
              1);
    EXPECT_EQ(TextToAnsi(NarrowText(std::wstring_view(&wide, 1))), std::string(1, letter)) << int{wide};
  }
}

std::string WindowsDigest(const std::string& bytes) {
  BCRYPT_ALG_HANDLE method = nullptr;
  EXPECT_EQ(::BCryptOpenAlgorithmProvider(&method, BCRYPT_MD5_ALGORITHM, nullptr, 0), 0);
  BCRYPT_HASH_HANDLE hash = nullptr;
  EXPECT_EQ(::BCryptCreateHash(method, &hash, nullptr, 0, nullptr, 0, 0), 0);
  auto* const data = reinterpret_cast<UCHAR*>(const_cast<char*>(bytes.data()));
  EXPECT_EQ(::BCryptHashData(hash, data, static_cast<ULONG>(bytes.size()), 0), 0);
  UCHAR digest[16] = {};
  EXPECT_EQ(::BCryptFinishHash(hash, digest, sizeof(digest), 0), 0);
  ::BCryptDestroyHash(hash);
  ::BCryptCloseAlgorithmProvider(method, 0);
  return {digest, digest + sizeof(digest)};
}

TEST(WindowsFunctions, DigestAsWeDo) {
  std::mt19937 chance(13);
  for (std::size_t size = 0; size < 300; ++size) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(chance());
    const MD5::Digest digest = MD5::Of(bytes);
    EXPECT_EQ(std::string(digest.begin(), digest.end()), WindowsDigest(bytes)) << size;
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
