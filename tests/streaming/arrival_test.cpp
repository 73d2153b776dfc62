// The texts of a quote's dates: the server's stamp, and the moment of arrival in the user's zone.

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "streaming/arrival_clock.h"
#include "streaming/stamp_texts.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

class Arrival : public StreamTest {
 protected:
  Arrival() { stream->connect(); }

  std::shared_ptr<cQTData> QuoteAt(std::string_view stamp) {
    Deliver(Level1Wire().Symbol("X").Last(price_++).Stamp(stamp));
    const auto quotes = Take();
    return quotes.size() == 1 ? quotes[0] : std::make_shared<cQTData>();
  }
  void Displace(const Variant& hours, const Variant& minutes) {
    Setting("DisplacementHour", hours);
    Setting("DisplacementMinute", minutes);
    Renew();
    stream->connect();
  }
  static constexpr std::string_view kStamp = "12312010235958";

 private:
  double price_ = 1;
};

TEST_F(Arrival, FormatsTheServersStampForTheUser) {
  struct Case {
    const char* format;
    const char* text;
  };
  for (const auto& [format, text] : {
           Case{"", "12/31/2010 23:59:58"},
           {"dd.mm.yyyy", "31.12.2010"},
           {"yyyy-mm-dd hh:nn:ss", "2010-12-31 23:59:58"},
           {"mm/dd/yyyy", "12/31/2010"},
           {"hh:mm:ss AM/PM", "11:59:58 PM"},
           {"ddd w ww", "Fri 6 53"},
       }) {
    stream->DovantaFormatUserDate(format);
    EXPECT_EQ(QuoteAt(kStamp)->Date_Time(), text) << format;
  }
}

TEST_F(Arrival, LeavesAStampThatIsNoDateAsItIs) {
  stream->DovantaFormatUserDate("dd.mm.yyyy");
  EXPECT_EQ(QuoteAt("99999999999999")->Date_Time(), "99/99/9999 99:99:99");
  EXPECT_EQ(QuoteAt("\xE4"
                    "bcdefghijklmn")
                ->Date_Time(),
            "äb/cd/efgh ij:kl:mn");
  EXPECT_EQ(QuoteAt(std::string(14, '\0'))->Date_Time(),
            std::string("\0\0/\0\0/\0\0\0\0 \0\0:\0\0:\0\0", 19));
}

TEST_F(Arrival, ReadsAStampInItsOwnOrderWhateverTheRegion) {
  using Order = RegionalFormat::DateOrder;
  clock.regional.date_separator = ".";
  clock.regional.short_date = "dd.mm.yyyy";
  for (const Order order : {Order::MonthDayYear, Order::DayMonthYear, Order::YearMonthDay}) {
    SCOPED_TRACE(static_cast<int>(order));
    clock.regional.date_order = order;
    Renew();
    stream->DovantaFormatUserDate("yyyy-mm-dd ddddd hh:nn:ss");
    stream->connect();
    EXPECT_EQ(QuoteAt("01022006093015")->Date_Time(), "2006-01-02 02.01.2006 09:30:15");
    EXPECT_EQ(QuoteAt("12112006235958")->Date_Time(), "2006-12-11 11.12.2006 23:59:58");
    EXPECT_EQ(QuoteAt("13012006000000")->Date_Time(), "2006-01-13 13.01.2006 00:00:00")
        << "there is no month 13";
  }
}

TEST_F(Arrival, StatesWhenTheRecordCame) {
  stream->DovantaFormatUserDate("dd.mm.yyyy");
  const auto quote = QuoteAt(kStamp);
  EXPECT_EQ(quote->DateQT(), "20.01.2011");
  EXPECT_EQ(quote->TimeQT(), "08:36:13");
}

TEST_F(Arrival, WritesTheGeneralFormWithoutAFormat) {
  EXPECT_EQ(QuoteAt(kStamp)->DateQT(), "1/20/2011 8:36:13 AM");
}

TEST_F(Arrival, FollowsTheClock) {
  EXPECT_EQ(QuoteAt(kStamp)->TimeQT(), "08:36:13");
  clock.Advance(1);
  EXPECT_EQ(QuoteAt(kStamp)->TimeQT(), "08:36:14");
  clock.Set({2011, 1, 21, 0, 0, 0});
  EXPECT_EQ(QuoteAt(kStamp)->TimeQT(), "00:00:00") << "midnight has no time in the general form";
}

TEST_F(Arrival, IsDisplacedByTheHoursAndMinutesOfTheSettings) {
  struct Case {
    Variant hours;
    Variant minutes;
    const char* time;
    const char* date;
  };
  for (const auto& [hours, minutes, time, date] : {
           Case{0, 0, "08:36:13", "20"},
           {6, 0, "14:36:13", "20"},
           {-9, 0, "23:36:13", "19"},
           {0, 30, "09:06:13", "20"},
           {"-1", "-45", "06:51:13", "20"},
           {"16", "0", "00:36:13", "21"},
       }) {
    SCOPED_TRACE(time);
    Displace(hours, minutes);
    stream->DovantaFormatUserDate("dd");
    const auto quote = QuoteAt(kStamp);
    EXPECT_EQ(quote->TimeQT(), time);
    EXPECT_EQ(quote->DateQT(), date);
  }
}

TEST_F(Arrival, ReadsTheDisplacementWhenTheStreamIsMade) {
  Setting("DisplacementHour", 6);
  EXPECT_EQ(QuoteAt(kStamp)->TimeQT(), "08:36:13");
}

TEST_F(Arrival, NeedsADisplacementOfNumbersWhenTheStreamIsMade) {
  for (const char* setting : {"DisplacementHour", "DisplacementMinute"}) {
    Setting(setting, "noon");
    EXPECT_EQ(NumberOf([] { std::make_shared<cQTStreaming>(); }), 13) << setting;
    Setting(setting, 0);
  }
}

TEST_F(Arrival, IsLeftOutForARecordWithoutStamp) {
  Deliver(Level1Wire().Symbol("X").Last(1));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u);
  EXPECT_EQ(quotes[0]->DateQT(), "");
  EXPECT_EQ(quotes[0]->TimeQT(), "");
  EXPECT_EQ(quotes[0]->Date_Time(), "");
}

TEST_F(Arrival, FailsAtEveryStampWhenTheDisplacementLeavesTheCalendar) {
  Displace(2'000'000'000, 0);
  EXPECT_EQ(NumberOf([&] { QuoteAt(kStamp); }), 5);
  Deliver(Level1Wire().Symbol("Y").Last(1));
  EXPECT_EQ(Take().size(), 1u) << "a record without stamp doesn't look at the clock";
  EXPECT_EQ(ErrorNumberOf(Level1Wire().Symbol("Y").Last(1).Stamp(kStamp).Bytes()), 5)
      << "also when it changes nothing";
}

TEST_F(Arrival, RemembersTheTextsOfManyStamps) {
  stream->DovantaFormatUserDate("hh:mm:ss");
  for (int round = 0; round < 2; ++round) {
    for (int second = 0; second < 3000; ++second) {
      char stamp[20];
      char text[20];
      std::snprintf(stamp, sizeof stamp, "0120201109%02d%02d", second / 60, second % 60);
      std::snprintf(text, sizeof text, "09:%02d:%02d", second / 60, second % 60);
      ASSERT_EQ(QuoteAt(stamp)->Date_Time(), text);
    }
  }
}

TEST_F(Arrival, FollowsANewFormat) {
  stream->DovantaFormatUserDate("yyyy");
  EXPECT_EQ(QuoteAt(kStamp)->Date_Time(), "2010");
  stream->DovantaFormatUserDate("dd");
  const auto quote = QuoteAt(kStamp);
  EXPECT_EQ(quote->Date_Time(), "31");
  EXPECT_EQ(quote->DateQT(), "20");
}

}  // namespace
}  // namespace mirelo::testing
