#include "app/duration.h"

#include <gtest/gtest.h>

#include <chrono>

namespace mirelo::app {
namespace {

using namespace std::chrono_literals;

TEST(ParseDuration, ReadsWhatPeopleWrite) {
  const struct {
    const char* text;
    std::chrono::milliseconds time;
  } cases[] = {{"20s", 20s},         {"20", 20s},      {"1.5h", 90min}, {"1h30m", 90min},
               {"8h30m15s", 30615s}, {"250ms", 250ms}, {"2d", 48h},     {"0.5", 500ms}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(ParseDuration(c.text), c.time);
  }
}

TEST(ParseDuration, TakesNothingElse) {
  for (const char* text :
       {"", "0", "0s", "-5s", "soon", "5 s", "5x", "s", "1h30", "1e3s", "nan", "inf", "99999999d"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ParseDuration(text), std::nullopt);
  }
}

}  // namespace
}  // namespace mirelo::app
