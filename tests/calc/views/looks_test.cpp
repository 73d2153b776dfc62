// What controls look like, as far as it is told without a toolkit.

#include <gmock/gmock.h>

#include <string>

#include "adapters/calc/views/color.h"
#include "adapters/calc/views/graphics.h"
#include "adapters/calc/views/marked_letter.h"
#include "adapters/calc/views/pictures.h"
#include "calc/in_office/run_in_office.h"

namespace mirelo::calc {
namespace {

using ::testing::HasSubstr;

TEST(Pictures, AreReadByTheOffice) {
  Graphics graphics(OfficeContext());
  for (const char* name : {"left", "all-left", "right", "all-right", "up", "down", "delete", "chart", "error",
                           "send", "ignore", "retry", "abort"}) {
    EXPECT_TRUE(graphics.Of(PictureText(name, 16)).is()) << name;
  }
  for (const bool ticked : {false, true}) EXPECT_TRUE(graphics.Of(CheckCellText(ticked, "chart", 14)).is());
  EXPECT_FALSE(graphics.Of(PictureText("no such picture", 16)).is());
}

TEST(Pictures, OfCheckCellsDiffer) {
  EXPECT_NE(CheckCellText(true, "", 14), CheckCellText(false, "", 14));
  EXPECT_NE(CheckCellText(true, "chart", 14), CheckCellText(true, "", 14));
  EXPECT_EQ(CheckCellText(true, "no such picture", 14), CheckCellText(true, "", 14));
  EXPECT_THAT(CheckCellText(true, "chart", 16), HasSubstr("width=\"36\""));
}

TEST(MarkedLetter, IsMarkedAsTheOfficeDoes) {
  EXPECT_EQ(WithMarkedLetter("&Tickers"), "~Tickers");
  EXPECT_EQ(WithMarkedLetter("Bid && Ask"), "Bid & Ask");
  EXPECT_EQ(WithMarkedLetter("Go"), "Go");
}

TEST(Colors, AreToldAsTheOfficeHasThem) {
  EXPECT_EQ(OfficeColor(0x0000FF), 0xFF0000);
  EXPECT_EQ(OfficeColor(0x123456), 0x563412);
  EXPECT_EQ(OfficeColor(forms::kFaceBackground), std::nullopt);
  EXPECT_EQ(InkOn(0xFFFF00), 0x000000);
  EXPECT_EQ(InkOn(0x000080), 0xFFFFFF);
}

}  // namespace
}  // namespace mirelo::calc
