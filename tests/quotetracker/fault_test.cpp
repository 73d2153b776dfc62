#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "quotetracker/fault_rule.h"
#include "quotetracker/http_fault.h"
#include "quotetracker/stream_fault.h"

namespace mirelo::quotetracker {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string Strikes(FaultRule rule, int occasions) {
  std::string strikes;
  for (int i = 0; i < occasions; ++i) strikes += rule.Strikes() ? 'x' : '.';
  return strikes;
}

template <typename Parse>
std::string RefusalOf(Parse parse) {
  try {
    parse();
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "accepted";
}

TEST(FaultRule, NeverStrikesUnlessTold) { EXPECT_EQ(Strikes(FaultRule(), 5), "....."); }

TEST(FaultRule, StrikesEachTimeWhenNothingMoreIsSaid) {
  EXPECT_EQ(Strikes(FaultRule::Parse("", 1), 5), "xxxxx");
}

TEST(FaultRule, StrikesEveryNthTime) {
  EXPECT_EQ(Strikes(FaultRule::Parse("1", 1), 4), "xxxx");
  EXPECT_EQ(Strikes(FaultRule::Parse("3", 1), 9), "..x..x..x");
}

TEST(FaultRule, StrikesByChanceAndAlikeForTheSameSeed) {
  const std::string strikes = Strikes(FaultRule::Parse("25%", 9), 4000);
  const auto count = std::ranges::count(strikes, 'x');
  EXPECT_GT(count, 850);
  EXPECT_LT(count, 1150);
  EXPECT_EQ(Strikes(FaultRule::Parse("25%", 9), 4000), strikes);
  EXPECT_NE(Strikes(FaultRule::Parse("25%", 10), 4000), strikes);
  EXPECT_EQ(Strikes(FaultRule::Parse("0%", 9), 50), std::string(50, '.'));
  EXPECT_EQ(Strikes(FaultRule::Parse("100%", 9), 50), std::string(50, 'x'));
  EXPECT_THAT(Strikes(FaultRule::Parse("0.5%", 9), 4000), HasSubstr("x"));
}

TEST(FaultRule, RefusesTextThatDoesNotSayWhen) {
  for (const char* text : {"0", "-1", "x", "3x", "%", "101%", "-1%", "nan%", "1%%", " 3"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(RefusalOf([&] { FaultRule::Parse(text, 1); }),
              "\"" + std::string(text) +
                  "\" does not say when a fault strikes: 3 is each third time, 25% one time in four");
  }
}

TEST(HttpFaultPlan, IsANameAndARule) {
  HttpFaultPlan plan = HttpFaultPlan::Parse("truncate-body:2", 1);
  EXPECT_EQ(plan.Next(), HttpFault::kNone);
  EXPECT_EQ(plan.Next(), HttpFault::kTruncateBody);
  EXPECT_EQ(HttpFaultPlan::Parse("drop", 1).Next(), HttpFault::kDrop);
  EXPECT_EQ(HttpFaultPlan().Next(), HttpFault::kNone);
}

TEST(HttpFaultPlan, RefusesUnknownNames) {
  EXPECT_EQ(RefusalOf([] { HttpFaultPlan::Parse("burn:2", 1); }),
            "\"burn\" is no fault of a reply; there are none, drop, reset, stall, truncate-head, "
            "truncate-body, garbage, "
            "wrong-status, short-length, long-length");
  EXPECT_THAT(RefusalOf([] { HttpFaultPlan::Parse("drop:often", 1); }), StartsWith("\"often\" does not say"));
}

TEST(StreamFaultPlan, IsANameAStepAndARule) {
  StreamFaultPlan plan = StreamFaultPlan::Parse("reset@quotes:2", 1);
  EXPECT_EQ(plan.Next(StreamStep::kQuotes), StreamFault::kNone);
  EXPECT_EQ(plan.Next(StreamStep::kLogin), StreamFault::kNone) << "another step is no occasion";
  EXPECT_EQ(plan.Next(StreamStep::kQuotes), StreamFault::kReset);
}

TEST(StreamFaultPlan, KnowsEachFaultAndStep) {
  struct Case {
    const char* text;
    StreamFault fault;
    StreamStep step;
  };
  for (const auto& [text, fault, step] :
       {Case{"drop@greeting", StreamFault::kDrop, StreamStep::kGreeting},
        Case{"stall@login", StreamFault::kStall, StreamStep::kLogin},
        Case{"truncate@sources", StreamFault::kTruncate, StreamStep::kSources},
        Case{"garbage@streamer", StreamFault::kGarbage, StreamStep::kStreamer},
        Case{"split@quotes", StreamFault::kSplit, StreamStep::kQuotes},
        Case{"long-length@quotes", StreamFault::kLongLength, StreamStep::kQuotes},
        Case{"short-length@quotes", StreamFault::kShortLength, StreamStep::kQuotes},
        Case{"zero-length@quotes", StreamFault::kZeroLength, StreamStep::kQuotes},
        Case{"negative-length@quotes", StreamFault::kNegativeLength, StreamStep::kQuotes}}) {
    SCOPED_TRACE(text);
    const StreamFaultPlan plan = StreamFaultPlan::Parse(text, 1);
    EXPECT_EQ(plan.fault, fault);
    EXPECT_EQ(plan.step, step);
  }
}

TEST(StreamFaultPlan, RefusesWhatCannotBe) {
  EXPECT_EQ(RefusalOf([] { StreamFaultPlan::Parse("drop", 1); }),
            "\"drop\" names no step, as drop@greeting does");
  EXPECT_THAT(RefusalOf([] { StreamFaultPlan::Parse("burn@login", 1); }),
              StartsWith("\"burn\" is no fault of the stream"));
  EXPECT_EQ(RefusalOf([] { StreamFaultPlan::Parse("drop@lunch:2", 1); }),
            "\"lunch\" is no step of the stream; there are greeting, login, sources, streamer, quotes");
  EXPECT_EQ(RefusalOf([] { StreamFaultPlan::Parse("zero-length@login", 1); }),
            "only quotes have a length that can lie");
}

TEST(LieAboutLength, ChangesTheFirstRecordsLengthOnly) {
  using namespace std::string_literals;
  const std::string good = "S1\x2C\x01"s + std::string(296, 'x') + "L1\x04\0"s;  // lengths 300 and 4
  struct Case {
    StreamFault fault;
    std::string length;
  };
  for (const Case& c :
       {Case{StreamFault::kLongLength, "\x14\x05"s}, Case{StreamFault::kShortLength, "\x96\0"s},
        Case{StreamFault::kZeroLength, "\0\0"s}, Case{StreamFault::kNegativeLength, "\xD4\xFE"s}}) {
    std::string bytes = good;
    LieAboutLength(bytes, c.fault);
    EXPECT_EQ(bytes, "S1" + c.length + good.substr(4));
  }
}

TEST(LieAboutLength, LeavesLessThanARecordAlone) {
  std::string bytes = "S1";
  LieAboutLength(bytes, StreamFault::kZeroLength);
  EXPECT_EQ(bytes, "S1");
}

}  // namespace
}  // namespace mirelo::quotetracker
