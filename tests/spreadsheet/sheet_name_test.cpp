#include "spreadsheet/sheet_name.h"

#include <gtest/gtest.h>

#include <string>

namespace mirelo::spreadsheet {
namespace {

bool IsNeverTaken(std::string_view /*name*/) { return false; }

TEST(SheetNames, AreOfAtMostThirtyOneCharactersAndWithoutThoseOfReferences) {
  EXPECT_EQ(NameObjection(std::string(31, 'x'), IsNeverTaken), "");
  EXPECT_EQ(NameObjection(std::string(32, 'x'), IsNeverTaken),
            "A sheet's name cannot be longer than 31 characters.");
  for (const char character : std::string(":\\/?*[]"))
    EXPECT_NE(NameObjection(std::string("a") + character, IsNeverTaken), "") << character;
  EXPECT_NE(NameObjection("", IsNeverTaken), "");
  EXPECT_NE(NameObjection("'a", IsNeverTaken), "");
  EXPECT_NE(NameObjection("history", IsNeverTaken), "");
}

TEST(SheetNames, AreTakenAsTheSpreadsheetTells) {
  const auto is_taken = [](std::string_view name) { return name == "Quotes"; };
  EXPECT_EQ(NameObjection("Quotes", is_taken), "Another sheet bears this name already.");
  EXPECT_EQ(NameObjection("Others", is_taken), "");
}

}  // namespace
}  // namespace mirelo::spreadsheet
