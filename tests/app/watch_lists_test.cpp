// mirelo list, and the commands that take a list in place of tickers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/program.h"
#include "quotetracker/server.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

class Lists : public ::testing::Test {
 protected:
  ProgramResult Run(std::vector<std::string> arguments) { return RunMirelo(folder_.path(), arguments); }
  std::string Show(const std::string& name) { return Run({"list", "show", name}).out; }

  TempDirectory folder_;
  quotetracker::Server server_;
};

TEST_F(Lists, AreMadeFilledEmptiedAndRemoved) {
  EXPECT_EQ(Run({"list", "add", "tech", "msft", "IBM,ORCL"}).exit_code, 0);
  EXPECT_EQ(Run({"list", "add", "TECH", "DELL", "ibm"}).exit_code, 0);
  EXPECT_EQ(Show("tech"), "MSFT\nIBM\nORCL\nDELL\n");
  EXPECT_EQ(Run({"list", "remove", "tech", "Msft", "ORCL"}).exit_code, 0);
  EXPECT_EQ(Show("tech"), "IBM\nDELL\n");
  EXPECT_THAT(Run({"list", "show"}).out, HasSubstr("tech  IBM,DELL"));
  EXPECT_EQ(Run({"list", "delete", "tech"}).exit_code, 0);
  EXPECT_EQ(Run({"list", "show", "tech"}).exit_code, 1);
  EXPECT_THAT(Run({"list", "show"}).err, HasSubstr("There are no watch lists yet."));
}

TEST_F(Lists, AreRefusedUnderBadNamesAndWithBadTickers) {
  EXPECT_EQ(Run({"list", "add", "my list", "MSFT"}).exit_code, 2);
  EXPECT_EQ(Run({"list", "add", "a\\b", "MSFT"}).exit_code, 2);
  EXPECT_EQ(Run({"list", "add", "tech", "F(T)"}).exit_code, 2);
  EXPECT_EQ(Run({"list", "add", "tech"}).exit_code, 2);
  const auto result = Run({"list", "remove", "tech", "MSFT"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("no watch list is named \"tech\"; mirelo list show names them all"));
  Run({"list", "add", "tech", "IBM"});
  EXPECT_THAT(Run({"list", "remove", "tech", "MSFT"}).err, HasSubstr("MSFT is not on the list tech"));
}

TEST_F(Lists, StandInPlaceOfTickers) {
  const std::string port = std::to_string(server_.HttpPort());
  Run({"list", "add", "tech", "MSFT", "IBM"});
  EXPECT_EQ(Run({"quotes", "--list", "tech", "--http-port", port}).exit_code, 0);
  EXPECT_THAT(server_.Requests(), Contains("/req?GetLastQuote(MSFT,IBM)"));
  const auto day =
      Run({"run", "--list", "tech", "--tickers", "GE", "--set", "UpdateEvery=0", "--http-port", port});
  EXPECT_EQ(day.exit_code, 0) << day.err;
  EXPECT_THAT(server_.Requests(), Contains("/req?GetLastQuote(GE,MSFT,IBM)"));
  EXPECT_EQ(Run({"go", "--list", "tech", "--http-port", port}).exit_code, 0);
  Run({"credentials", "set"});
  for (const char* command : {"quotes", "stream", "run", "go"}) {
    const auto result = Run({command, "--list", "other"});
    EXPECT_EQ(result.exit_code, 1) << command;
    EXPECT_THAT(result.err, HasSubstr("no watch list is named \"other\"")) << command;
  }
  EXPECT_EQ(Run({"quotes"}).exit_code, 2);
}

TEST_F(Lists, TravelWithTheSettings) {
  Run({"list", "add", "tech", "MSFT", "IBM"});
  const std::string text = Run({"settings", "export"}).out;
  EXPECT_THAT(text, HasSubstr("Settings\\WatchList\ttech\ttext\tMSFT,IBM\n"));
  Run({"list", "delete", "tech"});
  EXPECT_EQ(RunMirelo(folder_.path(), {"settings", "import"}, text).exit_code, 0);
  EXPECT_EQ(Show("tech"), "MSFT\nIBM\n");
  EXPECT_THAT(
      RunMirelo(folder_.path(), {"settings", "import"}, "Settings\\WatchList\ttech\ttext\tF(T)\n").err,
      HasSubstr("tickers parted by commas"));
}

}  // namespace
}  // namespace mirelo::testing
