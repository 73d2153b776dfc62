// The line between a program and the office that it has started.

#include "libreoffice/errand/errand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "automation/text.h"

namespace mirelo::libreoffice {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

Errand ADay() {
  Errand errand;
  errand.folder = "/of/its/own";
  errand.http_port = 16239;
  errand.stream_port = 65535;
  errand.open = "/quotes.ods";
  errand.wishes.settings = {{"Seconds", "5"}};
  errand.wishes.ticks = {{"MSFT", "Last"}};
  errand.wishes.columns = {"Ticker", "Last"};
  errand.wishes.tickers = {"MSFT", "IBM"};
  errand.wishes.charts = true;
  errand.time = 90s;
  errand.store = "/stored \"now\".ods";
  return errand;
}

TEST(ErrandLine, TellsAllOfADay) {
  const auto told = ErrandOf(LineOf(ADay()));
  ASSERT_TRUE(told);
  EXPECT_FALSE(told->command);
  EXPECT_EQ(told->http_port, 16239);
  EXPECT_EQ(told->stream_port, 65535);
  EXPECT_EQ(told->wishes.settings.at(0).key, "Seconds");
  EXPECT_EQ(told->wishes.ticks.at(0).field, "Last");
  EXPECT_THAT(told->wishes.tickers, ElementsAre("MSFT", "IBM"));
  EXPECT_EQ(told->time, 90s);
  EXPECT_EQ(told->store, "/stored \"now\".ods");
  EXPECT_EQ(LineOf(*told), LineOf(ADay()));
}

TEST(ErrandLine, TellsACommandLine) {
  Errand errand;
  errand.command = {.words = {"show", "a\nb.ods"}, .programs = "/usr/bin", .output = 5, .errors = 6};
  const std::string line = LineOf(errand);
  EXPECT_EQ(line.find('\n'), std::string::npos);
  const auto told = ErrandOf(line);
  ASSERT_TRUE(told && told->command);
  EXPECT_THAT(told->command->words, ElementsAre("show", "a\nb.ods"));
  EXPECT_EQ(told->command->output, 5);
  EXPECT_EQ(told->command->errors, 6);
}

TEST(ErrandLine, TellsNews) {
  const auto told = NewsOf(LineOf(News{News::Kind::kStored, "\xFF of no text", true, 12}));
  ASSERT_TRUE(told);
  EXPECT_EQ(told->kind, News::Kind::kStored);
  EXPECT_EQ(told->text, "\xEF\xBF\xBD of no text");
  EXPECT_TRUE(told->is_of_wish);
  EXPECT_EQ(told->quotes, 12);
}

TEST(ErrandLine, OfNumbersThatNobodySendsIsNone) {
  const std::string day = LineOf(ADay());
  for (const char* number : {"1e300", "-1e300", "1.5", "2147483648", "-2147483649", "18446744073709551615",
                             "true", "\"5\"", "null"}) {
    SCOPED_TRACE(number);
    EXPECT_FALSE(ErrandOf(Replace(day, ":16239", ":" + std::string(number))));
  }
  EXPECT_FALSE(ErrandOf(Replace(day, ":90000", ":1e300")));
  EXPECT_FALSE(ErrandOf(Replace(day, ":90000", ":18446744073709551615")));
}

TEST(ErrandLine, OfAKindThatNobodySendsIsNone) {
  const std::string news = LineOf(News{News::Kind::kTold, "text", false, 12});
  ASSERT_TRUE(NewsOf(news));
  for (const char* kind : {"4", "-1", "0.5", "4294967296"}) {
    EXPECT_FALSE(NewsOf(Replace(news, "\"kind\":0", "\"kind\":" + std::string(kind)))) << kind;
  }
}

TEST(ErrandLine, ThatIsNoneIsNothing) {
  for (const char* line : {"", "end", "begins", "{", "{}", "[]", "null", "\"text\""}) {
    EXPECT_FALSE(ErrandOf(line)) << line;
    EXPECT_FALSE(NewsOf(line)) << line;
  }
}

}  // namespace
}  // namespace mirelo::libreoffice
