// Programs whose output is not read any more, or cannot be written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "app/program.h"
#include "quotetracker/server.h"
#include "support/built_program.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

using Words = std::vector<std::string>;

const std::string kMireloCommand = BuiltProgram("mirelo");
constexpr int kReaderHasGone = 141;

class UnreadOutput : public ::testing::Test {
 protected:
  // What the commands need that listen to the stream or print something stored.
  void Prepare() {
    RunMirelo(folder_.path(), {"credentials", "set"}, "MireloDemo\ndemo-secret\n");
    RunMirelo(folder_.path(), {"settings", "set", "SocketPort", std::to_string(server_.StreamPort())});
    RunMirelo(folder_.path(), {"sources", "--update"});
    workbook::Spreadsheet::New().Save(folder_ / "mine.xlsx");
  }

  std::string HttpPort() const { return std::to_string(server_.HttpPort()); }

  // Commands that are there for what they print, each with some output at once or soon.
  std::vector<Words> Printers() const {
    return {{"--version"},
            {"--help"},
            {"quotes", "--help"},
            {"quotes", "MSFT", "--http-port", HttpPort()},
            {"quotes", "MSFT", "--csv", "--http-port", HttpPort()},
            {"quotes", "MSFT", "--json", "--http-port", HttpPort()},
            {"quotes", "MSFT", "--watch", "--http-port", HttpPort()},
            {"stream", "MSFT", "--source", "SWISS.SDF", "--seconds", "0.3"},
            {"stream", "MSFT", "--source", "SWISS.SDF", "--csv"},
            {"stream", "MSFT", "--source", "SWISS.SDF", "--json"},
            {"show", "mine.xlsx", "--range", "A1:C3"},
            {"show", "mine.xlsx", "--list"},
            {"sources"},
            {"settings", "list"},
            {"settings", "get", "Seconds"},
            {"settings", "export"},
            {"credentials", "show-name"},
            {"go", "--tickers", "MSFT", "--http-port", HttpPort()}};
  }

  TempDirectory folder_;
  quotetracker::Server server_;
};

TEST_F(UnreadOutput, EndsACommandThatIsThereForItsOutputQuietly) {
  Prepare();
  for (const Words& words : Printers()) {
    SCOPED_TRACE(::testing::PrintToString(words));
    const auto result = RunMireloUnread(folder_.path(), words);
    EXPECT_EQ(result.exit_code, kReaderHasGone);
    EXPECT_EQ(result.signal, 0) << "it ends by itself";
    EXPECT_THAT(result.err, Not(HasSubstr("error")));
  }
}

TEST_F(UnreadOutput, ForWantOfRoomIsAnError) {
  Prepare();
  for (const Words& words : Printers()) {
    SCOPED_TRACE(::testing::PrintToString(words));
    const auto result = RunMireloOnFullDisk(folder_.path(), words);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err,
                HasSubstr("error: cannot write the output: No space left on device; it is not complete\n"));
  }
}

TEST_F(UnreadOutput, ToAClosedStreamIsAnErrorAndGoesNowhereElse) {
  const auto result =
      RunProgram("/bin/sh", folder_.path(),
                 {"-c", "exec '" + kMireloCommand + "' quotes MSFT --http-port " + HttpPort() + " >&-"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("error: cannot write the output: Bad file descriptor"));
  EXPECT_EQ(RunMirelo(folder_.path(), {"settings", "get", "Seconds"}).out, "10\n");
}

// The first line is all that is wanted of a stream without an end.
TEST_F(UnreadOutput, EndsAStreamInAPipeline) {
  Prepare();
  const auto result =
      RunProgram("/bin/sh", folder_.path(),
                 {"-c", "'" + kMireloCommand + "' stream MSFT --source SWISS.SDF --csv | head -1"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.out, HasSubstr("Ticker,Last,"));
}

TEST_F(UnreadOutput, LeavesADayAlone) {
  const Words day{"run",   "--tickers", "MSFT",  "--http-port", HttpPort(),
                  "--set", "Seconds=1", "--for", "300ms"};
  for (const bool errors_too : {false, true}) {
    SCOPED_TRACE(errors_too);
    const auto result = RunMireloUnread(folder_.path(), day, errors_too);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_TRUE(std::filesystem::remove(folder_ / "quotes.xlsx")) << "it was saved";
  }
}

TEST_F(UnreadOutput, OfADayForWantOfRoomIsToldAndNoFailure) {
  const auto result = RunMireloOnFullDisk(
      folder_.path(),
      {"run", "--tickers", "MSFT", "--http-port", HttpPort(), "--set", "Seconds=1", "--for", "300ms"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, HasSubstr("warning: cannot write the output: No space left on device\n"));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "quotes.xlsx"));
}

TEST_F(UnreadOutput, KeepsTheCodeOfAFailure) {
  const auto result = RunMireloUnread(folder_.path(), {"quotes", "MSFT", "--http-port", "1", "--csv"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("No quotes."));
}

// The program that shows windows is not started with signals that this one ignores.
TEST_F(UnreadOutput, GivesTheProgramOfWindowsItsSignalsBack) {
  std::filesystem::copy_file(kMireloCommand, folder_ / "mirelo");
  std::ofstream(folder_ / "mirelo-windows") << "#!/bin/sh\ngrep SigIgn /proc/self/status\n";
  ::chmod((folder_ / "mirelo-windows").c_str(), 0700);
  const auto result = RunProgram(folder_ / "mirelo", folder_.path(), {"dialog"});
  ASSERT_THAT(result.out, HasSubstr("SigIgn:\t"));
  const auto ignored = std::stoull(result.out.substr(result.out.find('\t') + 1), nullptr, 16);
  EXPECT_EQ(ignored >> (SIGPIPE - 1) & 1, 0U) << result.out;
}

TEST_F(UnreadOutput, OfTheStandInDoesNotEndIt) {
  const auto result = RunProgram("/bin/sh", folder_.path(),
                                 {"-c", "'" + BuiltProgram("quotetracker") +
                                            "' --http-port 0 --stream-port 0 --port-file ports "
                                            ">/dev/full & pid=$!; while [ ! -e ports ]; do sleep 0.01; done; "
                                            "sleep 0.05; kill $pid; wait $pid"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("quotetracker: cannot write the output: No space left on device"));
  const auto help = RunProgram("/bin/sh", folder_.path(),
                               {"-c", "'" + BuiltProgram("quotetracker") + "' --help >/dev/full"});
  EXPECT_EQ(help.exit_code, 1);
}

}  // namespace
}  // namespace mirelo::testing
