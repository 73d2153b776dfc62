#include "terminal/output.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace mirelo::terminal {
namespace {

constexpr char kOwnWords[] = "\033[2Jown\n";

template <class... Pieces>
std::string Printed(const Pieces&... pieces) {
  TextOutput out;
  (out << ... << pieces);
  return out.Text();
}

TEST(Output, LeavesTheProgramsOwnWordsAsTheyAre) {
  TextOutput out;
  out << "error: \t" << kOwnWords;
  EXPECT_EQ(out.Text(), "error: \t\033[2Jown\n");
  EXPECT_EQ(ShownText(kOwnWords).Bytes(), kOwnWords);
}

// What an array holds that is only known at run time is nobody's own words. (One that is const as well is
// refused where it is used; see filled_array.cpp.)
template <class Text>
concept IsPrinted = requires(Output& out, Text text) {
  out << text;
};
template <class Text>
concept IsShown = requires(Text text) {
  ShownText(text);
};
static_assert(IsPrinted<const std::string&> && IsPrinted<const char*> && IsPrinted<std::string_view>);
static_assert(IsShown<const std::string&> && IsShown<const char*> && IsShown<std::string_view>);
static_assert(!IsPrinted<char (&)[4]> && !IsShown<char (&)[4]> && !IsPrinted<char>);

TEST(Output, MakesEveryOtherTextVisible) {
  const std::string text = "a\033[31m\nb";
  const char* const characters = text.c_str();
  EXPECT_EQ(Printed(text), "a\\u001B[31m\\nb");
  EXPECT_EQ(Printed(std::string_view(text)), "a\\u001B[31m\\nb");
  EXPECT_EQ(Printed(characters), "a\\u001B[31m\\nb");
}

TEST(Output, WritesNumbers) { EXPECT_EQ(Printed(-5, std::size_t{7}), "-57"); }

TEST(ShownText, KeepsLinesOnlyWhereItIsTold) {
  EXPECT_EQ(Printed(ShownText(std::string_view("a\nb"))), "a\\nb");
  EXPECT_EQ(Printed(Lines("a\r\n\tb\033\r")), "a\n\tb\\u001B\\r");
  EXPECT_EQ(Printed(Indented("a\nerror: b\n  c")), "a\n  error: b\n  c");
  EXPECT_EQ(Printed(Indented("\nerror: b")), "\n  error: b");
  EXPECT_EQ(Printed(Indented("")), "");
}

TEST(ShownText, IsPaintedWithNothingButColours) {
  const ShownText text(std::string_view("x\a"));
  EXPECT_EQ(Printed(Painted(text, "1;32")), "\033[1;32mx\\u0007\033[0m");
  EXPECT_EQ(Printed(Painted(text, "2J\a1")), "\033[21mx\\u0007\033[0m");
}

}  // namespace
}  // namespace mirelo::terminal
