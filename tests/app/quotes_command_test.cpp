// mirelo quotes, run against a stand-in that serves in this process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <thread>
#include <vector>

#include "app/program.h"
#include "quotetracker/server.h"
#include "support/built_program.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

class Quotes : public ::testing::Test {
 protected:
  ProgramResult Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "quotes");
    arguments.insert(arguments.end(), {"--http-port", std::to_string(server_.HttpPort())});
    return RunMirelo(folder_.path(), arguments);
  }

  TempDirectory folder_;
  quotetracker::Server server_;
};

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
    lines.push_back(text.substr(begin, end - begin));
  }
  return lines;
}

TEST_F(Quotes, StandInATableWithTheUsersColumns) {
  const auto result = Run({"MSFT", "IBM"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  const auto lines = Lines(result.out);
  ASSERT_THAT(lines, SizeIs(4));
  for (const char* column : {"Ticker", "Last", "Change", "Bid", "Ask", "Date", "Time"}) {
    EXPECT_THAT(lines[0], HasSubstr(column));
  }
  EXPECT_THAT(lines[2], StartsWith("MSFT"));
  EXPECT_THAT(lines[3], StartsWith("IBM"));
}

TEST_F(Quotes, StandInTheColumnsAskedFor) {
  const auto result = Run({"MSFT", "--csv", "--columns", "Last,Ticker"});
  const auto lines = Lines(result.out);
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ(lines[0], "Last,Ticker");
  EXPECT_THAT(lines[1], EndsWith(",MSFT"));
}

TEST_F(Quotes, TakeBlanksOffTheNamesOfColumnsAndRefuseUnknownOnes) {
  const auto result = Run({"MSFT", "--csv", "--columns", " last, TICKER"});
  EXPECT_THAT(result.out, StartsWith("Last,Ticker\n")) << result.err;
  const auto refused = Run({"MSFT", "--columns", "Ticker,Price"});
  EXPECT_EQ(refused.exit_code, 2);
  EXPECT_THAT(refused.err, HasSubstr("\"Price\" is not allowed here"));
}

TEST_F(Quotes, ShowPricesInTheirTableAsTheSheetDoes) {
  RunMirelo(folder_.path(), {"settings", "set", "txtDecimalPlaces", "4"});
  const auto lines = Lines(Run({"MSFT", "--columns", "Last,Change,Volume"}).out);
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_THAT(lines[2], ::testing::MatchesRegex(" *[0-9]+\\.[0-9]{4} +-?[0-9]+\\.[0-9]{4} +[0-9]+"));
}

TEST_F(Quotes, RefuseAFormatThatIsNoDates) {
  for (const char* format : {"foo", "hh:nn", "", "/"}) {
    const auto result = Run({"MSFT", "--date-format", format});
    EXPECT_EQ(result.exit_code, 2) << format;
    EXPECT_THAT(result.err, HasSubstr("is no format of a date; write mm/dd/yyyy"));
  }
  EXPECT_EQ(Run({"MSFT", "--date-format", "d.m.yy"}).exit_code, 0);
}

TEST_F(Quotes, AreJsonObjectsALineEach) {
  const auto result = Run({"MSFT", "IBM", "--json"});
  EXPECT_THAT(Lines(result.out),
              ElementsAre(AllOf(StartsWith("{\"Ticker\":\"MSFT\",\"Last\":"), EndsWith("}")),
                          StartsWith("{\"Ticker\":\"IBM\"")));
}

TEST_F(Quotes, ComeForListsThatFillTheirLastBatchToo) {
  for (const int count : {80, 81, 82, 162}) {
    SCOPED_TRACE(count);
    std::vector<std::string> arguments{"--csv"};
    for (int i = 1; i <= count; ++i) arguments.push_back("T" + std::to_string(i));
    const auto result = Run(arguments);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    const auto lines = Lines(result.out);
    ASSERT_THAT(lines, SizeIs(count + 1));
    EXPECT_THAT(lines.back(), StartsWith("T" + std::to_string(count) + ","));
  }
}

TEST_F(Quotes, AreMissedWithOneAndAWordOnWhatToDo) {
  server_.SetHttpFault(quotetracker::HttpFaultPlan::Parse("drop", 1));
  const auto result = Run({"MSFT"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("Data retrieval error."), HasSubstr("mirelo settings get HTTPPort")));
}

TEST_F(Quotes, EndAtCtrlCThoughAnAnswerIsDue) {
  server_.SetHttpFault(quotetracker::HttpFaultPlan::Parse("stall", 1));
  const std::string program = BuiltProgram("mirelo");
  ProgramResult result;
  std::thread watching([&] {
    const std::string arguments =
        " quotes MSFT --watch --csv --http-port " + std::to_string(server_.HttpPort());
    result =
        RunProgram("/bin/sh", folder_.path(), {"-c", "echo $$ > pid; exec '" + program + "'" + arguments});
  });
  while (server_.Requests().empty()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  std::this_thread::sleep_for(std::chrono::milliseconds(3300));  // until it tells that it waits
  pid_t pid = 0;
  std::ifstream(folder_ / "pid") >> pid;
  EXPECT_GT(pid, 0);
  if (pid > 0) ::kill(pid, SIGINT);
  watching.join();
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, HasSubstr("QuoteTracker has not answered yet. Ctrl-C ends the waiting.\n"));
}

// With Seconds 0 that is every second.
TEST_F(Quotes, AreAskedForAgainUntilCtrlCThoughOneAnswerFails) {
  RunMirelo(folder_.path(), {"settings", "set", "Seconds", "0"});
  server_.SetHttpFault(quotetracker::HttpFaultPlan::Parse("drop:2", 1));
  const std::string program = BuiltProgram("mirelo");
  ProgramResult result;
  std::thread watching([&] {
    const std::string arguments =
        " quotes MSFT --watch --csv --http-port " + std::to_string(server_.HttpPort());
    result =
        RunProgram("/bin/sh", folder_.path(), {"-c", "echo $$ > pid; exec '" + program + "'" + arguments});
  });
  // Once it asks a fourth time, it has printed the third answer; whether it prints the fourth is open.
  while (server_.Requests().size() < 4) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  pid_t pid = 0;
  std::ifstream(folder_ / "pid") >> pid;
  EXPECT_GT(pid, 0);
  if (pid > 0) ::kill(pid, SIGINT);
  watching.join();

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, HasSubstr("Data retrieval error."));
  std::vector<std::string> lines = Lines(result.out);
  ASSERT_GE(lines.size(), 3U);
  lines.resize(3);
  EXPECT_THAT(lines, ElementsAre(StartsWith("Ticker,"), StartsWith("MSFT,"), StartsWith("MSFT,")));
}

}  // namespace
}  // namespace mirelo::testing
