// A day on the screen of a terminal, as a person there sees and leads it. The terminal is one of another
// make.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "support/built_program.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

class LiveScreen : public ::testing::Test {
 protected:
  // What the watcher prints of a day with the demonstration's quotes.
  std::string Watch(const std::string& size, const std::vector<std::string>& steps,
                    const std::string& command = "run --demo --save-every 1h") {
    std::string line = "cd '" + folder_.path().string() + "' && HOME='" + (folder_ / "home").string() +
                       "' XDG_DATA_HOME= PYTHONIOENCODING=utf-8 " MIRELO_PYTHON " '" MIRELO_APP_TESTS
                       "/watch_screen.py' " +
                       size;
    for (const std::string& step : steps) line += " '" + step + "'";
    line += " -- '" + BuiltProgram("mirelo") + "' " + command + " 2>&1";
    std::string output;
    FILE* pipe = ::popen(line.c_str(), "r");
    char buffer[4096];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
      output.append(buffer, count);
    EXPECT_EQ(::pclose(pipe), 0) << output;
    return output;
  }

  TempDirectory folder_;
};

constexpr const char* kGivenBack = "\nmodes: same\n";

TEST_F(LiveScreen, ShowsADayAndFollowsTheKeys) {
  const std::string seen =
      Watch("24x80", {"until:MSFT", "until: a second", "show", "type:?", "until:PgDn", "type:?",
                      "until:? help", "type:s", "until:Workbook saved", "type:>>", "until:Last^", "type:r",
                      "until:Lastv", "type:\\eOC", "until:<- columns", "show", "type:q"});
  EXPECT_THAT(seen, ContainsRegex("\\|   Ticker +Last +Change +% +Bid"));
  EXPECT_THAT(seen, ContainsRegex("\\| [*o ] MSFT +[0-9.]+ +-?[0-9.]+ +[+-][0-9.]+ "));
  EXPECT_THAT(seen,
              AllOf(HasSubstr("| Streaming( Alpstein Finance (delayed) )  "), HasSubstr("; 0 reconnects"),
                    HasSubstr("? help  s save  q end  columns ->"), HasSubstr("  <- columns")));
  EXPECT_THAT(seen, ContainsRegex("Workbook saved [0-9:]+ \\([0-9.]+ KB\\)"));
  EXPECT_THAT(seen, ContainsRegex("left: [^\n]*Ticker[^\n]*Last"))
      << "the last quotes stay on the usual screen";
  EXPECT_THAT(seen, AllOf(HasSubstr("left: Saved in "), HasSubstr("\nstatus: 0"), HasSubstr(kGivenBack)));
  EXPECT_NO_THROW(workbook::Spreadsheet::Open(folder_ / "quotes.xlsx"));
}

TEST_F(LiveScreen, IsCutToTheWindowAndFollowsItsSize) {
  const std::string seen =
      Watch("24x200", {"until:MSFT", "until:Time", "until: a second", "size:5x30", "until:rows 1 to ", "show",
                       "type:\\e[B", "until:rows 2 to", "size:30x100", "until:DELL", "type:q"});
  EXPECT_THAT(seen, ContainsRegex("\\|   Ticker +Last +Change"));
  EXPECT_THAT(seen, AllOf(HasSubstr("\nstatus: 0"), HasSubstr(kGivenBack)));
}

TEST_F(LiveScreen, WritesNoMoreThanWhatChanges) {
  const std::string seen = Watch("24x80", {"until:saved", "until:a second", "type:?", "until:Marks",
                                           "for:0.4", "bytes", "for:1.5", "bytes", "type:q"});
  EXPECT_THAT(seen, HasSubstr("\nbytes: 0\n")) << "the help stands still\n" << seen;
}

TEST_F(LiveScreen, GivesTheTerminalBackHoweverItEnds) {
  const struct {
    const char* what;
    std::vector<std::string> steps;
    const char* status;
  } cases[] = {{"Ctrl-C", {"type:\\x03"}, "status: 0"},
               {"the end of the terminal's session", {"signal:SIGHUP"}, "status: 0"},
               {"a fault", {"signal:SIGSEGV"}, "status: signal 11"},
               {"an abort", {"signal:SIGABRT"}, "status: signal 6"}};
  for (const auto& [what, steps, status] : cases) {
    SCOPED_TRACE(what);
    // A day in which no quote came ends otherwise.
    std::vector<std::string> all{"until:MSFT", "until: a second"};
    all.insert(all.end(), steps.begin(), steps.end());
    EXPECT_THAT(Watch("24x80", all),
                AllOf(HasSubstr(status), HasSubstr(kGivenBack), Not(HasSubstr("was not left"))));
  }
}

// Ctrl-S, and later Ctrl-Q.
TEST_F(LiveScreen, GoesOnBehindATerminalThatAPersonHasStopped) {
  const std::string seen =
      Watch("24x80", {"until:MSFT", "until: a second", "type:\\x13", "for:1", "bytes", "note:quotes.xlsx",
                      "type:?s", "renewed:quotes.xlsx", "for:1", "bytes", "type:\\x11", "until:Marks",
                      "type:?", "until:MSFT", "type:q"});
  EXPECT_THAT(seen, HasSubstr("\nbytes: 0\n"));
  EXPECT_THAT(seen, AllOf(HasSubstr("\nstatus: 0"), HasSubstr(kGivenBack)));
}

TEST_F(LiveScreen, EndsInOrderBehindATerminalThatAPersonHasStopped) {
  const std::string seen = Watch("24x80", {"until:MSFT", "until: a second", "type:\\x13", "for:1",
                                           "size:30x90", "for:0.5", "type:?", "for:0.5", "signal:SIGTERM"});
  EXPECT_THAT(seen, AllOf(HasSubstr("left: Saved in "), HasSubstr("\nstatus: 0"), HasSubstr(kGivenBack)));
  EXPECT_NO_THROW(workbook::Spreadsheet::Open(folder_ / "quotes.xlsx"));
}

TEST_F(LiveScreen, GivesTheTerminalBackWhileItIsStopped) {
  const std::string seen = Watch("24x80", {"until:MSFT", "type:\\x1a", "stopped", "signal:SIGCONT", "for:0.3",
                                           "until:MSFT", "show", "type:q"});
  EXPECT_THAT(seen, ContainsRegex("\\| [*o ] MSFT"));
  EXPECT_THAT(seen, AllOf(HasSubstr("\nstatus: 0"), HasSubstr(kGivenBack)));
}

}  // namespace
}  // namespace mirelo::testing
