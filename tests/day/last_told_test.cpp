#include "day/last_told.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace mirelo::testing {
namespace {

using day::LastTold;
using ::testing::ElementsAre;

TEST(LastTold, IsShownUntilAQuoteComesBehindIt) {
  LastTold told;
  EXPECT_EQ(told.Line(0), "");
  told.Tell("Connecting", 0);
  told.Tell("Streaming", 0);
  EXPECT_EQ(told.Line(0), "Streaming");
  EXPECT_EQ(told.Line(1), "");
  told.Tell("The connection was closed", 7);
  EXPECT_EQ(told.Line(7), "The connection was closed");
  EXPECT_EQ(told.Line(8), "");
}

TEST(LastTold, ShowsAnExplanationWhateverIsToldBesideIt) {
  LastTold told;
  told.Explain("The login was refused", 0);
  told.Tell("reconnecting in 2 seconds", 0);
  EXPECT_EQ(told.Line(0), "The login was refused");
  told.Tell("reconnecting in 4 seconds", 3);
  EXPECT_EQ(told.Line(3), "reconnecting in 4 seconds") << "quotes came in between";
}

TEST(LastTold, KeepsTheLastSixTextsOnceEach) {
  LastTold told;
  told.Tell("a", 0);
  told.Explain("b", 0);
  told.Tell("a", 1);
  EXPECT_THAT(told.Lines(), ElementsAre("b", "a"));
  for (const char* text : {"1", "2", "3", "4", "5"}) told.Tell(text, 1);
  EXPECT_THAT(told.Lines(), ElementsAre("a", "1", "2", "3", "4", "5"));
}

}  // namespace
}  // namespace mirelo::testing
