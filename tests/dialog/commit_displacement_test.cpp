#include <string>

#include "dialog/commit_test.h"
#include "dialog/time_zones.h"

namespace mirelo::testing {
namespace {

using ::testing::IsEmpty;

class Displacement : public CommitTest {
 protected:
  // Whether a commit with this zone and offset stores these hours and minutes.
  void Expect(const char* zone, const char* offset, const char* hours, const char* minutes) {
    SCOPED_TRACE(std::string(zone) + " " + offset);
    EXPECT_EQ(Go(OnSettings([&](frmMirelo& form) {
                form.ComDisplayTimezone.UserEdit(zone);
                form.ComDisplayOffset.UserEdit(offset);
              })),
              78);
    EXPECT_THAT(log.writes, ::testing::Contains(Number("DisplacementHour", hours)));
    EXPECT_THAT(log.writes, ::testing::Contains(Number("DisplacementMinute", minutes)));
    EXPECT_THAT(log.writes, ::testing::Contains(Text("DisplayTimezone", zone)));
    EXPECT_THAT(log.writes, ::testing::Contains(Text("DisplayOffset", offset)));
    EXPECT_THAT(desktop.reports, IsEmpty());
  }
};

TEST_F(Displacement, IsThatOfTheZone) {
  struct Case {
    const char* zone;
    const char* hours;
    const char* minutes;
  };
  for (const Case& c :
       {Case{"(ET-1)Us Central", "-1", "0"}, Case{"(ET) US Eastern", "0", "0"},
        Case{"(ET+1) Argentina", "1", "0"}, Case{"(ET+1) Brazil", "1", "0"},
        Case{"(ET+4) GMT -1 (MoneyAM BF)", "4", "0"}, Case{"(ET+4) UTC", "4", "0"},
        Case{"(ET+5) Europe GMT(UK/Portugal,etc)", "5", "0"},
        Case{"(ET+5) GMT - No Daylight Savings", "5", "0"},
        Case{"(ET+6) Europe GET(France/Germany,etc)", "6", "0"},
        Case{"(ET+6) South Africa(Johannesburg)", "6", "0"},
        Case{"(ET+7) Europe EET(Finland/Greece)", "7", "0"}, Case{"(ET+7) Middle East(Riyadh)", "7", "0"},
        Case{"(ET+9.5) India", "9", "30"}, Case{"(ET+12) Singapore/Hong Kong", "12", "0"},
        Case{"(ET+13) Japan/Korea", "13", "0"}, Case{"(ET+14) Australia(Sydney)", "14", "0"},
        Case{"(ET+16) New ZealandTicker", "16", "0"}}) {
    Expect(c.zone, "0:00", c.hours, c.minutes);
  }
}

TEST_F(Displacement, IsMovedByTheOffsetBothWays) {
  struct Case {
    const char* offset;
    const char* hours;
    const char* minutes;
  };
  for (const Case& c : {Case{"-1:30", "-1", "-30"}, Case{"1:30", "1", "30"}, Case{"23:30", "23", "30"},
                        Case{"-23:30", "-23", "-30"}, Case{"-2:00", "-2", "0"}, Case{"0:30", "0", "30"},
                        Case{"-0:30", "0", "30"}}) {
    Expect("(ET) US Eastern", c.offset, c.hours, c.minutes);
  }
}

TEST_F(Displacement, AddsTheOffsetToTheHalfHourOfIndia) {
  Expect("(ET+9.5) India", "1:30", "10", "60");
  Expect("(ET+9.5) India", "-1:30", "8", "0");
}

TEST_F(Displacement, HasTheOffsetOnlyForAZoneThatIsNotListed) {
  Expect("(ET+30) Mars", "2:30", "2", "30");
  Expect("", "-2:30", "-2", "-30");
}

TEST_F(Displacement, TakesWhatItCanOfAnOffsetThatWasTyped) {
  struct Case {
    const char* offset;
    const char* hours;
    const char* minutes;
  };
  for (const Case& c : {Case{"", "0", "0"}, Case{"5", "0", "5"}, Case{"-5", "0", "-5"},
                        Case{"an hour:or so", "0", "0"}, Case{"2:", "2", "0"}, Case{":15", "0", "15"},
                        Case{"-2:15:30", "-2", "-15"}, Case{"1.5:00", "2", "0"}}) {
    Expect("(ET) US Eastern", c.offset, c.hours, c.minutes);
  }
}

TEST_F(Displacement, LeavesHoursUnwrittenThatNoNumberHolds) {
  Save("DisplacementHour", 3);
  Go(OnSettings([](frmMirelo& form) { form.ComDisplayOffset.UserEdit("3000000000:30"); }));
  EXPECT_EQ(Stored("Settings", "DisplacementHour").ToInt32(), 3);
  EXPECT_EQ(Stored("Settings", "DisplacementMinute").ToInt32(), 30);
  EXPECT_THAT(desktop.reports, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
