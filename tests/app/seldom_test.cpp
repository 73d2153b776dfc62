#include "app/live/seldom.h"

#include <gtest/gtest.h>

namespace mirelo::app {
namespace {

using namespace std::chrono_literals;

TEST(Seldom, LetsALineThroughOnceAMinuteWhateverItsNumbersAre) {
  Seldom seldom;
  const Seldom::Time begin{1h};
  EXPECT_TRUE(seldom.IsDue("2 quotes", begin));
  EXPECT_FALSE(seldom.IsDue("12 quotes", begin + 10s));
  EXPECT_TRUE(seldom.IsDue("Streaming", begin + 10s));
  EXPECT_FALSE(seldom.IsDue("3 quotes", begin + 59s));
  EXPECT_TRUE(seldom.IsDue("4 quotes", begin + 60s));
  EXPECT_FALSE(seldom.IsDue("5 quotes", begin + 61s));
}

}  // namespace
}  // namespace mirelo::app
