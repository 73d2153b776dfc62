// --log and --explain of mirelo run and mirelo stream.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "app/program.h"
#include "quotetracker/server.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Explain : public ::testing::Test {
 protected:
  std::string LogText(const std::filesystem::path& name = "day.log") {
    std::ifstream in(folder_ / name);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  TempDirectory folder_;
};

TEST_F(Explain, FollowsAQuoteFromItsRecordToTheSaveThatHoldsIt) {
  const auto result =
      RunMirelo(folder_.path(), {"run", "--demo", "--for", "2s", "--explain", "msft", "--log", "day.log"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.err, HasSubstr("What becomes of the quotes of msft is written to day.log\n"));
  const std::string log = LogText();
  std::size_t at = 0;
  for (const char* step :
       {"MSFT: a record of ", "MSFT: quote a0: Ticker=MSFT Last=", "MSFT: written to Dovanta2_Quotes!B3",
        " begins, with all that has been written until now", "quotes.xlsx\n", "the day is over"}) {
    at = log.find(step, at);
    ASSERT_NE(at, std::string::npos) << step << " in\n" << log;
  }
  EXPECT_THAT(log, Not(HasSubstr("IBM: ")));
}

TEST_F(Explain, WithoutATickerTheLogHoldsWhatPeopleAreTold) {
  const auto result = RunMirelo(folder_.path(), {"run", "--demo", "--for", "1s", "--log", "day.log"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(LogText(), AllOf(HasSubstr("[info] Logged in\n"), HasSubstr("[info] save 1 is in "),
                               Not(HasSubstr("MSFT: "))));
}

TEST_F(Explain, HoldsNoMoreThanItsLevel) {
  const auto result = RunMirelo(
      folder_.path(), {"run", "--demo", "--for", "1s", "--log", "day.log", "--log-level", "warning"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(LogText(), "");
  EXPECT_EQ(RunMirelo(folder_.path(), {"run", "--demo", "--log", "day.log", "--log-level", "loud"}).exit_code,
            2);
}

TEST_F(Explain, HoldsASaveThatFailedAsAWarning) {
  std::ofstream(folder_ / ".~lock.quotes.xlsx#") << "of a program that has it open";
  const auto result = RunMirelo(
      folder_.path(), {"run", "--demo", "--for", "1s", "--log", "day.log", "--log-level", "warning"});
  EXPECT_THAT(LogText(), AllOf(HasSubstr("[warning] save 1 failed: "), Not(HasSubstr("begins"))))
      << result.err;
}

TEST_F(Explain, SaysWhatBecomesOfQuotesWhateverTheLevel) {
  const auto result = RunMirelo(folder_.path(), {"run", "--demo", "--for", "1s", "--explain", "MSFT", "--log",
                                                 "day.log", "--log-level", "error"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(LogText(), HasSubstr("MSFT: quote a"));
}

TEST_F(Explain, WritesToTheUsersLogWhereNoneIsNamed) {
  ASSERT_EQ(RunMirelo(folder_.path(), {"run", "--demo", "--for", "1s", "--explain", "IBM,MSFT"}).exit_code,
            0);
  bool found = false;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.path())) {
    if (!entry.path().string().ends_with("mirelo/mirelo.log")) continue;
    found = true;
    std::ifstream in(entry.path());
    EXPECT_THAT(std::string(std::istreambuf_iterator<char>(in), {}),
                AllOf(HasSubstr("IBM: quote"), HasSubstr("MSFT: quote")));
  }
  EXPECT_TRUE(found);
}

TEST_F(Explain, RefusesALogThatIsNoFileBeforeTheDayBegins) {
  const auto result = RunMirelo(folder_.path(), {"run", "--demo", "--for", "60s", "--log", "/dev/null"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("Cannot write the log /dev/null: it is no regular file"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "quotes.xlsx"));
}

TEST_F(Explain, FollowsQuotesOfAStreamThatIsPrinted) {
  quotetracker::Server server;
  RunMirelo(folder_.path(), {"credentials", "set"}, "MireloDemo\ndemo-secret\n");
  const auto result = RunMirelo(
      folder_.path(), {"stream", "MSFT", "IBM", "--source", "SWISS.SDF", "--seconds", "1", "--explain",
                       "MSFT", "--log", "day.log", "--socket-port", std::to_string(server.StreamPort())});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(LogText(), AllOf(HasSubstr("MSFT: a record of "), HasSubstr("MSFT: quote a"),
                               HasSubstr("MSFT: shown in the table"), Not(HasSubstr("IBM: "))));
}

}  // namespace
}  // namespace mirelo::testing
