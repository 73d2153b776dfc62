// mirelo quotes, run against a stand-in that serves in this process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "app/program.h"
#include "quotetracker/server.h"
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

}  // namespace
}  // namespace mirelo::testing
