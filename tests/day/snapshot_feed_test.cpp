// The macros' part of the snapshot route, against a QuoteTracker that has something wrong with one ticker.

#include "day/snapshot_feed.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "automation/text.h"
#include "day/quote_trail.h"
#include "support/facade_test.h"
#include "support/recorded_log.h"
#include "wire/mended_replies.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using ReplyLines = std::vector<std::string>;

std::string Record(const std::string& ticker, const std::string& last, const std::string& volume,
                   const std::string& date = "01/20/2011") {
  return ticker + "," + date + ",09:30:00," + last + ",28.34,28.36,-0.10,U," + volume +
         ",29,28,100,200,77,150,12,28.5,20,35";
}

std::string Reply(const ReplyLines& records) { return "OK\r\n" + Join(records, "\r\n"); }

class SnapshotFeed : public FacadeTest {
 protected:
  SnapshotFeed() {
    host.Use(replies);
    Save("ListRight", "Ticker,Last,Volume,LastVolume,52w High");
    internet.answer = [this](const AnsweringInternet::Request&) { return reply; };
  }

  void Watch(std::vector<std::string> tickers) {
    feed.emplace(*facade, replies, std::move(tickers));
    feed->Told.Subscribe([this](const std::string& text) { told.push_back(text); });
  }
  // The quotes as texts.
  std::vector<std::vector<std::string>> Fetch(const std::string& text) {
    reply = text;
    const auto rows = feed->Fetch();
    EXPECT_TRUE(rows) << "no quotes at all";
    EXPECT_THAT(desktop.reports, IsEmpty());
    EXPECT_THAT(desktop.boxes, IsEmpty());
    std::vector<std::vector<std::string>> texts(feed->Tickers().size(), {feed->Columns().size(), ""});
    if (rows) std::ranges::transform(*rows, texts.begin(), day::TextsOf);
    return texts;
  }

  wire::MendedReplies replies{internet};
  std::string reply;
  std::vector<std::string> told;
  std::optional<day::SnapshotFeed> feed;
};

constexpr const char* kBad = "BAD";

// What the reply to request number `n` says of the ticker BAD, between records of A and C.
struct OneBadTicker {
  const char* what;
  std::function<std::string(const ReplyLines& a_bad_c, int n)> reply;
  bool is_told;
};

OneBadTicker WithRecord(const char* what, const std::string& record, bool is_told) {
  return {what, [record](const ReplyLines& l, int) { return Reply({l[0], record, l[2]}); }, is_told};
}
OneBadTicker WithVolume(const char* volume, bool is_told) {
  return WithRecord(volume, Record(kBad, "1", volume), is_told);
}

const std::vector<OneBadTicker>& BadTickers() {
  static const std::string kDigits(400, '9');
  static const std::vector<OneBadTicker> cases{
      WithVolume("N/A", true),
      WithVolume("", true),
      WithVolume("-", true),
      WithVolume("1.2.3", true),
      WithVolume("1e400", true),
      WithVolume("1e300", true),
      WithVolume(kDigits.c_str(), true),
      WithVolume("\033[2J", true),
      WithVolume("5000000000", false),
      WithVolume("-5", false),
      WithVolume("1e14", false),
      WithRecord("a date that is none", Record(kBad, "1", "10", "N/A"), false),
      WithRecord("no date", Record(kBad, "1", "10", ""), false),
      WithRecord("a price that is none", Record(kBad, "N/A", "10"), false),
      WithRecord("a record of one field", kBad, true),
      WithRecord("five fields", "BAD,01/20/2011,09:30:00,1,2", true),
      WithRecord("thirteen fields", "BAD,01/20/2011,09:30:00,1,2,3,4,U,10,6,7,8,9", true),
      WithRecord("eighteen fields", "BAD,01/20/2011,09:30:00,1,2,3,4,U,10,6,7,8,9,10,11,12,13,14", true),
      WithRecord("forty fields", Record(kBad, "1", "10") + Replace(std::string(21, 'x'), "x", ",1"), false),
      WithRecord("an empty line", "", true),
      {"a volume that is none now and then",
       [](const ReplyLines& l, int n) {
         return Reply({l[0], Record(kBad, "1", n % 2 == 1 ? "N/A" : std::to_string(100 * n)), l[2]});
       },
       true},
      {"no record",
       [](const ReplyLines& l, int) {
         return Reply({l[0], l[2]});
       },
       true},
      {"two records",
       [](const ReplyLines& l, int) {
         return Reply({l[0], l[1], l[1], l[2]});
       },
       false},
      {"a record of another order",
       [](const ReplyLines& l, int) {
         return Reply({l[1], l[2], l[0]});
       },
       false},
      {"a record of somebody else",
       [](const ReplyLines& l, int) {
         return Reply({l[0], Record("BAD/X", "1", "10"), l[2]});
       },
       false},
      {"records that nobody asked for",
       [](const ReplyLines& l, int) {
         return Reply({l[0], Record("X", "1", "2"), l[1], l[2], l[1]});
       },
       false},
      {"a line end behind the records", [](const ReplyLines& l, int) { return Reply(l) + "\r\n"; }, false},
      {"many line ends behind the records",
       [](const ReplyLines& l, int) { return Reply(l) + Replace(std::string(999, 'x'), "x", "\r\n"); },
       false},
  };
  return cases;
}

TEST_F(SnapshotFeed, GivesTheOtherTickersTheirQuotesOnEveryRequest) {
  for (const OneBadTicker& bad : BadTickers()) {
    SCOPED_TRACE(bad.what);
    told.clear();
    Watch({"A", kBad, "C"});
    for (int n = 0; n < 4; ++n) {
      const std::string price = std::to_string(10 + n);
      const ReplyLines good{Record("A", price, std::to_string(1000 + 100 * n)),
                            Record(kBad, price, std::to_string(1000 + 100 * n)),
                            Record("C", price, std::to_string(2000 + 7 * n))};
      const auto rows = Fetch(bad.reply(good, n));
      EXPECT_THAT(rows[0],
                  ElementsAre("A", price, std::to_string(1000 + 100 * n), n == 0 ? "0" : "100", "35"));
      EXPECT_THAT(rows[2], ElementsAre("C", price, std::to_string(2000 + 7 * n), n == 0 ? "0" : "7", "35"));
    }
    EXPECT_THAT(told, SizeIs(bad.is_told ? 1 : 0)) << "once, or not at all";
  }
}

TEST_F(SnapshotFeed, ShowsAVolumeThatIsNoNumberAndLeavesOutWhatCannotBeWorkedOut) {
  Watch({kBad});
  EXPECT_THAT(Fetch(Reply({Record(kBad, "1", "N/A")}))[0], ElementsAre(kBad, "1", "N/A", "", "35"));
  EXPECT_THAT(told, ElementsAre("The volume is no number, so LastVolume stays empty, for BAD (\"N/A\")"));
}

TEST_F(SnapshotFeed, TellsWhatIsWrongWithAVolume) {
  struct Case {
    const char* volume;
    const char* told;
  };
  for (const auto& [volume, text] :
       {Case{"", "QuoteTracker sent no volume, so LastVolume stays empty, for BAD"},
        Case{"-", "The volume is no number, so LastVolume stays empty, for BAD (\"-\")"},
        Case{"1000000000000000",
             "The volume is too large to count with, so LastVolume stays empty, for BAD "
             "(\"1000000000000000\")"},
        Case{"-1e300",
             "The volume is too large to count with, so LastVolume stays empty, for BAD (\"-1e300\")"}}) {
    SCOPED_TRACE(volume);
    told.clear();
    Watch({kBad});
    EXPECT_THAT(Fetch(Reply({Record(kBad, "1", volume)}))[0], ElementsAre(kBad, "1", volume, "", "35"));
    EXPECT_THAT(told, ElementsAre(text));
  }
}

TEST_F(SnapshotFeed, CountsFromTheLastVolumeThatWasOne) {
  Watch({kBad});
  Fetch(Reply({Record(kBad, "1", "1000")}));
  Fetch(Reply({Record(kBad, "1", "N/A")}));
  Fetch(Reply({""}));
  Fetch(Reply({"BAD,01/20/2011"}));
  EXPECT_EQ(Fetch(Reply({Record(kBad, "1", "1300")}))[0][3], "300");
  Fetch(Reply({Record(kBad, "1", "N/A", "01/21/2011")}));
  EXPECT_EQ(Fetch(Reply({Record(kBad, "1", "50", "01/21/2011")}))[0][3], "0") << "another day";
  EXPECT_EQ(Fetch(Reply({Record(kBad, "1", "5000000000", "01/21/2011")}))[0][3], "4999999950");
}

TEST_F(SnapshotFeed, HasNothingButTheTickerWhereThereIsNoRecord) {
  Watch({"A", kBad});
  EXPECT_THAT(Fetch(Reply({Record("A", "1", "10")}))[1], ElementsAre(kBad, "", "", "", ""));
  EXPECT_THAT(told, ElementsAre("QuoteTracker sent no quote for BAD"));
}

// What QuoteTracker sends for a ticker that it does not know.
TEST_F(SnapshotFeed, TakesAQuoteOfNothingForNoneAndTellsItOnce) {
  Watch({"A", kBad});
  const std::string zeros =
      "BAD,01/20/2011,09:30:00,0.00,0.00,0.00,0.00,,0,0.00,0.00,0,0,0,0,0,0.00,0.00,0.00";
  const std::string nothing = "BAD,,,,,,,,,,,,,,,,,,";
  for (const std::string& record : {zeros, nothing, zeros}) {
    EXPECT_THAT(Fetch(Reply({Record("A", "1", "10"), record})),
                ElementsAre(ElementsAre("A", "1", "10", "0", "35"), ElementsAre(kBad, "", "", "", "")));
  }
  EXPECT_THAT(told, ElementsAre("QuoteTracker knows no quote of BAD"));
  EXPECT_TRUE(feed->HasQuote(0));
  EXPECT_FALSE(feed->HasQuote(1));
}

TEST_F(SnapshotFeed, TakesAQuoteOfWhichOneValueIsKnownForOne) {
  Watch({kBad});
  for (std::size_t known = 3; known < 19; ++known) {
    if (known == 7 || known == 13) continue;  // the tick says nothing, and the last volume is worked out
    std::vector<std::string> fields(19, "0");
    fields[0] = kBad;
    fields[known] = "5";
    Fetch(Reply({Join(fields, ",")}));
    EXPECT_TRUE(feed->HasQuote(0)) << known;
  }
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(SnapshotFeed, TakesARecordThatBreaksOffBeforeItSaysAnythingForNoQuote) {
  Save("ListRight", "Ticker,Last,Date,Time");  // of which the last two are made here
  Watch({kBad});
  for (const char* record : {"BAD", "BAD,01/20/2011,", "BAD,01/20/2011,09:30:00,2"}) {
    Fetch(Reply({record}));
    EXPECT_FALSE(feed->HasQuote(0)) << record;
  }
  Fetch(Reply({"BAD,01/20/2011,09:30:00,26.5,"}));
  EXPECT_TRUE(feed->HasQuote(0));
}

TEST_F(SnapshotFeed, CountsQuotesOfWhichNoColumnShowsAnything) {
  for (const char* columns : {"Ticker", "Ticker,Nonsense"}) {
    SCOPED_TRACE(columns);
    Save("ListRight", columns);
    Watch({"A", kBad, "C"});
    EXPECT_FALSE(feed->ShowsQuotes());
    Fetch(Reply({Record("A", "1", "10"), "BAD,,,,,,,,,,,,,,,,,,", "C"}));
    EXPECT_TRUE(feed->HasQuote(0));
    EXPECT_FALSE(feed->HasQuote(1));
    EXPECT_FALSE(feed->HasQuote(2));
  }
  Save("ListRight", "Ticker,Time");
  Watch({"A"});
  EXPECT_TRUE(feed->ShowsQuotes());
}

TEST_F(SnapshotFeed, ExplainsThatATickerCannotBeAskedForThoughNoneCan) {
  RecordedLog log;
  const day::QuoteTrail trail(log, {"A(1)"});
  Watch({"A(1)"});
  feed->Follow(trail);
  Fetch("");
  EXPECT_THAT(log.lines, ElementsAre("A(1): it cannot be asked for, as a ticker holds no comma or bracket"));
  feed.reset();
}

TEST_F(SnapshotFeed, CountsVolumesOnOverAQuoteOfNothing) {
  Watch({kBad});
  Fetch(Reply({Record(kBad, "1", "1000")}));
  Fetch(Reply({"BAD,01/20/2011,09:30:00,0,0,0,0,,0,0,0,0,0,0,0,0,0,0,0"}));
  EXPECT_EQ(Fetch(Reply({Record(kBad, "1", "1300")}))[0][3], "300");
}

TEST_F(SnapshotFeed, CountsWithVolumesOfMoreThan32Bits) {
  Watch({"A"});
  Fetch(Reply({Record("A", "1", "4294967290")}));
  EXPECT_THAT(Fetch(Reply({Record("A", "1", "4294967296")}))[0],
              ElementsAre("A", "1", "4294967296", "6", "35"));
  reply = Reply({Record("A", "1", "999999999999999")});
  const auto rows = feed->Fetch();
  EXPECT_EQ(rows.value()[0][2].ToCell(), Variant(999'999'999'999'999.0));
  EXPECT_EQ(rows.value()[0][3].ToCell(), Variant(999'995'705'032'703.0));
}

TEST_F(SnapshotFeed, ShowsNoVolumeBelowZeroWhereTheDaysVolumeBeginsAnew) {
  Watch({"A"});
  Fetch(Reply({Record("A", "1", "1000")}));
  EXPECT_EQ(Fetch(Reply({Record("A", "1", "1500")}))[0][3], "500");
  EXPECT_EQ(Fetch(Reply({Record("A", "1", "200")}))[0][3], "0");
  EXPECT_EQ(Fetch(Reply({Record("A", "1", "260")}))[0][3], "60");
}

TEST_F(SnapshotFeed, FillsWhatARecordHasAndTellsWhatIsMissing) {
  Watch({"A", kBad});
  EXPECT_THAT(Fetch(Reply({Record("A", "1", "10"), "BAD,01/20/2011,09:30:00,26.5,"}))[1],
              ElementsAre(kBad, "26.5", "", "", ""));
  EXPECT_THAT(told, ElementsAre("QuoteTracker sent too few fields for BAD (4 of 19)"));
}

TEST_F(SnapshotFeed, KeepsWhatARecordThatBreaksOffLacks) {
  Watch({"A,X", "A", kBad});  // of the first nobody is asked, so places differ from the reply's
  const auto fetch = [&](const std::string& record) {
    return Fetch(Reply({Record("A", "1", "10"), record}))[2];
  };
  EXPECT_THAT(fetch(Record(kBad, "26", "1000")), ElementsAre(kBad, "26", "1000", "0", "35"));
  EXPECT_THAT(fetch("BAD,01/20/2011,09:30:00,26.5,"), ElementsAre(kBad, "26.5", "1000", "", "35"));
  EXPECT_THAT(fetch("BAD,01/20/2011,"), ElementsAre(kBad, "", "", "", "")) << "it is no quote";
  EXPECT_THAT(fetch("BAD,01/20/2011,09:30:00,26.6,"), ElementsAre(kBad, "26.6", "1000", "", "35"));
  EXPECT_THAT(fetch("BAD,01/20/2011,09:30:00,27,1,2,3,U,1300,5,"),
              ElementsAre(kBad, "27", "1300", "300", "35"));
}

TEST_F(SnapshotFeed, KeepsItOverARequestWithoutQuotes) {
  Watch({kBad});
  Fetch(Reply({Record(kBad, "26", "1000")}));
  reply = "ERROR";
  EXPECT_EQ(feed->Fetch(), std::nullopt);
  desktop.boxes.clear();
  Fetch(Reply({""}));
  EXPECT_THAT(Fetch(Reply({"BAD,01/20/2011,09:30:00,27,"}))[0], ElementsAre(kBad, "27", "1000", "", "35"));
}

// A field that came is no lacking one, even where it is empty.
TEST_F(SnapshotFeed, DoesNotKeepWhatCameEmpty) {
  Watch({kBad});
  Fetch(Reply({Record(kBad, "26", "1000")}));
  EXPECT_EQ(Fetch(Reply({Record(kBad, "", "1000")}))[0][1], "");
  EXPECT_EQ(Fetch(Reply({Record(kBad, "26", "1000")}))[0][1], "26");
  EXPECT_THAT(Fetch(Reply({"BAD,01/20/2011,09:30:00,,1,2,3,U,1300,5,"}))[0],
              ElementsAre(kBad, "", "1300", "300", "35"));
}

TEST_F(SnapshotFeed, TellsNothingOfWhatNoColumnShows) {
  Save("ListRight", "Ticker,Last");
  Watch({"A", kBad});
  EXPECT_THAT(Fetch(Reply({Record("A", "1", "N/A"), "BAD,01/20/2011,09:30:00,26.5,"}))[1],
              ElementsAre(kBad, "26.5"));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(SnapshotFeed, TellsOfManyTickersInOneLine) {
  std::vector<std::string> tickers;
  for (int i = 1; i <= 9; ++i) tickers.push_back("T" + std::to_string(i));
  Watch(tickers);
  Fetch(Reply({}));
  Fetch(Reply({}));
  EXPECT_THAT(told, ElementsAre("QuoteTracker sent no quote for T1, T2, T3, T4, T5 and 4 more"));
}

TEST_F(SnapshotFeed, KeepsLaterBatchesInTheirRows) {
  std::vector<std::string> tickers;
  for (int i = 1; i <= 200; ++i) tickers.push_back("T" + std::to_string(i));
  Watch(tickers);
  internet.answer = [](const AnsweringInternet::Request& request) {
    const auto open = request.resource.find('(') + 1;
    ReplyLines records;
    for (const auto& ticker : Split(request.resource.substr(open, request.resource.size() - 1 - open), ",")) {
      if (ticker != "T3" && ticker != "T150") records.push_back(Record(ticker, ticker.substr(1), "10"));
    }
    return Reply(records);
  };
  for (int n = 0; n < 2; ++n) {
    const auto rows = Fetch("");
    ASSERT_THAT(rows, SizeIs(200));
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const bool is_missing = i + 1 == 3 || i + 1 == 150;
      EXPECT_EQ(rows[i][0], "T" + std::to_string(i + 1));
      EXPECT_EQ(rows[i][1], is_missing ? "" : std::to_string(i + 1));
    }
  }
  EXPECT_THAT(told, ElementsAre("QuoteTracker sent no quote for T3, T150"));
}

// Such a name would make two of one, or end the request, and nobody's quote would stand in its row.
TEST_F(SnapshotFeed, DoesNotAskForWhatNoRequestCanName) {
  Watch({"A", "B,X", "C", "D)", "(E", "", "F\n"});
  const auto rows = Fetch(Reply({Record("A", "1", "10"), Record("C", "2", "10")}));
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(A,C)"));
  EXPECT_EQ(rows[0][1], "1");
  EXPECT_EQ(rows[2][1], "2");
  for (const std::size_t row : {1U, 3U, 4U, 5U, 6U}) EXPECT_THAT(rows[row], ElementsAre("", "", "", "", ""));
  Fetch(reply);
  EXPECT_THAT(told,
              ElementsAre("Not asked for, as a ticker holds no comma or bracket: \"B,X\", \"D)\", \"(E\", "
                          "\"\", \"F\\n\""));
}

TEST_F(SnapshotFeed, AsksNobodyWhereNoTickerCanBeNamed) {
  Watch({"A,B"});
  EXPECT_THAT(Fetch(""), SizeIs(1));
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(SnapshotFeed, StillSaysWhenAReplyIsNoSuccess) {
  Watch({"A"});
  for (const char* bad : {"", "ERROR", "\r\nOK",
                          "OK\n"
                          "A,1",
                          "OK?\r\nA"}) {
    SCOPED_TRACE(bad);
    desktop.boxes.clear();
    reply = bad;
    EXPECT_EQ(feed->Fetch(), std::nullopt);
    EXPECT_THAT(desktop.boxes,
                ElementsAre(::testing::Field(&ScriptedDesktop::Box::text, "Data retrieval error.")));
  }
  EXPECT_THAT(told, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
