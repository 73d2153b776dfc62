#include "app/output/text_table.h"

#include <gtest/gtest.h>

namespace mirelo::app {
namespace {

TEST(TextTable, AlignsTextLeftAndNumbersRight) {
  TextTable table({"Ticker", "Last"});
  table.AddRow({"MSFT", "27.5"});
  table.AddRow({"A", "103.25"});
  EXPECT_EQ(table.ToText(false).Bytes(),
            "Ticker    Last\n"
            "------  ------\n"
            "MSFT      27.5\n"
            "A       103.25\n");
}

TEST(TextTable, FillsMissingCellsAndCutsBlanksAtLineEnds) {
  TextTable table({"Ticker", "Note"});
  table.AddRow({"MSFT"});
  EXPECT_EQ(table.ToText(false).Bytes(),
            "Ticker  Note\n"
            "------  ----\n"
            "MSFT\n");
}

TEST(TextTable, CountsCharactersNotBytes) {
  TextTable table({"Name", "x"});
  table.AddRow({"\xC3\xA4\xC3\xB6\xC3\xBC", "y"});
  EXPECT_EQ(table.ToText(false).Bytes(),
            "Name  x\n"
            "----  -\n"
            "\xC3\xA4\xC3\xB6\xC3\xBC   y\n");
}

TEST(TextTable, MakesCellsAsWideAsTheyAreShown) {
  TextTable table({"Na\tme", "x"});
  table.AddRow({"a\nb\033", "y"});
  table.AddRow({"株価", "\u202E"});
  EXPECT_EQ(table.ToText(false).Bytes(),
            "Na\\tme      x\n"
            "----------  ------\n"
            "a\\nb\\u001B  y\n"
            "株価        \\u202E\n");
}

TEST(TextTable, PaintsChangesByTheirSign) {
  TextTable table({"Change"});
  table.AddRow({"0.5"});
  table.AddRow({"-0.5"});
  table.AddRow({"0"});
  const std::string text = table.ToText(true).Bytes();
  EXPECT_NE(text.find("\033[32m   0.5\033[0m"), std::string::npos) << text;
  EXPECT_NE(text.find("\033[31m  -0.5\033[0m"), std::string::npos) << text;
  EXPECT_NE(text.find("\n     0\n"), std::string::npos) << text;
}

TEST(TextTable, WithoutRowsShowsItsHeaders) {
  EXPECT_EQ(TextTable({"Ticker"}).ToText(false).Bytes(), "Ticker\n------\n");
}

}  // namespace
}  // namespace mirelo::app
