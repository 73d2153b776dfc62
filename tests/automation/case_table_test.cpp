// The case pairs of ours beside those of the C library of the machine that this is built on, of the same
// Unicode.

#include <gtest/gtest.h>
#include <locale.h>
#include <wctype.h>

#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>

#include "automation/case_table.h"
#include "automation/utf8.h"

namespace mirelo {
namespace {

struct Freeing {
  void operator()(locale_t locale) const { freelocale(locale); }
};
using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, Freeing>;

constexpr char32_t kEnd = 0x20000;  // nothing behind has cases

// The C.UTF-8 of the C library carries Unicode's tables without any locale being installed.
Locale Unicode() { return Locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)); }

TEST(CaseTable, HasTheUpperCaseLettersOfTheCLibrary) {
  const Locale unicode = Unicode();
  ASSERT_NE(unicode, nullptr);
  for (char32_t code = 0; code < kEnd; ++code) {
    ASSERT_EQ(utf8::Upper(code), towupper_l(static_cast<wint_t>(code), unicode.get())) << std::size_t{code};
  }
}

TEST(CaseTable, HasTheLowerCaseLettersOfTheCLibrary) {
  const Locale unicode = Unicode();
  ASSERT_NE(unicode, nullptr);
  for (char32_t code = 0; code < kEnd; ++code) {
    ASSERT_EQ(utf8::Lower(code), towlower_l(static_cast<wint_t>(code), unicode.get())) << std::size_t{code};
  }
}

// It is searched by halves.
void ExpectOrder(std::span<const utf8::CaseRun> runs) {
  ASSERT_GT(runs.size(), 100U);
  char32_t before = 0x7F;
  for (const utf8::CaseRun& run : runs) {
    EXPECT_GT(run.first, before);
    EXPECT_GE(run.last, run.first);
    EXPECT_EQ((run.last - run.first) % run.step, 0U);
    EXPECT_NE(run.distance, 0);
    before = run.last;
  }
}

TEST(CaseTable, StandsInTheOrderOfTheLetters) {
  ExpectOrder(utf8::RunsToUpper());
  ExpectOrder(utf8::RunsToLower());
}

}  // namespace
}  // namespace mirelo
