#include "automation/iso_text.h"

#include <gtest/gtest.h>

#include "support/error_number.h"

namespace mirelo {
namespace {

TEST(IsoText, OfADayHasNoTime) {
  EXPECT_EQ(IsoText(ToDate({.year = 2026, .month = 11, .day = 22, .hour = 0})), "2026-11-22");
  EXPECT_EQ(IsoText(ToDate({.year = 123, .month = 1, .day = 2, .hour = 0})), "0123-01-02");
}

TEST(IsoText, OfATimeOfDayHasNoDay) {
  EXPECT_EQ(IsoText(Date{0}), "00:00:00");
  EXPECT_EQ(IsoText(Date{(14 * 3600 + 5 * 60 + 9) / 86400.0}), "14:05:09");
}

TEST(IsoText, OfBothPartsThemWithALetter) {
  EXPECT_EQ(IsoText(ToDate({.year = 2026, .month = 2, .day = 3, .hour = 23, .minute = 59, .second = 58})),
            "2026-02-03T23:59:58");
}

TEST(IsoText, HasNoDayOutsideTheCalendar) {
  EXPECT_EQ(testing::NumberOf([] { IsoText(Date{1e9}); }), 5);
}

}  // namespace
}  // namespace mirelo
