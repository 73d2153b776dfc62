// mirelo run, and the workbook that it leaves.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "app/child_process.h"
#include "app/program.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/sheet.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "quotetracker/server.h"
#include "support/built_program.h"
#include "support/loopback_server.h"
#include "support/refused_calls.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

namespace excel = host::excel;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Arguments = std::vector<std::string>;

std::shared_ptr<excel::Worksheet> SheetOf(const workbook::Spreadsheet& spreadsheet, const char* name) {
  return spreadsheet.Application()->ActiveWorkbook()->Worksheets()->Item(name);
}

std::string TextAt(excel::Worksheet& sheet, std::int32_t row, std::int32_t column) {
  return sheet.Cells(row, column)->Value().ToText();
}

class Run : public ::testing::Test {
 protected:
  ProgramResult RunWith(Arguments arguments) {
    arguments.insert(arguments.begin(), "run");
    return RunMirelo(folder_.path(), arguments);
  }

  TempDirectory folder_;
};

TEST_F(Run, DemonstratesAWholeDayWithoutSettings) {
  const auto result = RunWith({"--demo", "--headless", "--for", "3s"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, AllOf(HasSubstr("MSFT"), HasSubstr("IBM"),
                                HasSubstr("Saved in " + (folder_ / "quotes.xlsx").string()),
                                HasSubstr("Dovanta2_Quotes"), HasSubstr("Quotes_Vertical(MSFT) and 5 more")));
  EXPECT_THAT(result.err, HasSubstr("Streaming"));

  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  EXPECT_THAT(spreadsheet.Losses(), IsEmpty());
  const auto table = SheetOf(spreadsheet, "Dovanta2_Quotes");
  EXPECT_EQ(TextAt(*table, 1, 1), "Streaming( Alpstein Finance (delayed) )");
  EXPECT_EQ(TextAt(*table, 2, 1), "Ticker");
  EXPECT_EQ(TextAt(*table, 3, 1), "MSFT");
  EXPECT_EQ(table->Cells(3, 2)->Value().type(), Variant::Type::Double);
  EXPECT_EQ(table->Cells(3, 8)->Value().type(), Variant::Type::Date);
  EXPECT_EQ(TextAt(*table, 8, 1), "DELL");
  EXPECT_TRUE(table->Cells(9, 1)->Value().IsEmpty());

  const auto history = SheetOf(spreadsheet, "Quotes_Vertical(MSFT)");
  EXPECT_EQ(TextAt(*history, 1, 2), "MSFT");
  EXPECT_EQ(TextAt(*history, 2, 1), "Last");
  EXPECT_EQ(history->Cells(3, 1)->Value().type(), Variant::Type::Double);
}

TEST_F(Run, LeavesTheUsersSettingsAloneWhenItDemonstrates) {
  RunWith({"--demo", "--for", "1s"});
  EXPECT_FALSE(std::filesystem::exists(folder_ / "home/.local"));
}

TEST_F(Run, KeepsWhatElseTheWorkbookHolds) {
  {
    auto mine = workbook::Spreadsheet::New();
    const auto sheet = mine.Application()->ActiveWorkbook()->Worksheets()->Item(1);
    sheet->Name("Mine");
    sheet->Cells(7, 3)->Value(Variant(42.0));
    mine.Save(folder_ / "quotes.xlsx");
  }
  ASSERT_EQ(RunWith({"--demo", "--for", "1s"}).exit_code, 0);
  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  EXPECT_EQ(TextAt(*SheetOf(spreadsheet, "Mine"), 7, 3), "42");
}

TEST_F(Run, AsksOnceAndEndsWhereUpdatesAreOff) {
  const auto result = RunWith({"--demo", "--tickers", "MSFT,IBM", "--set", "UpdateEvery=0"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.err, HasSubstr("\n2 quotes\n"));
  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  EXPECT_EQ(TextAt(*SheetOf(spreadsheet, "Dovanta2_Quotes"), 1, 1), "SnapShot( Update Onse )");
  EXPECT_FALSE(SheetOf(spreadsheet, "Quotes_Vertical(IBM)")->Cells(3, 1)->Value().IsEmpty());
  EXPECT_TRUE(SheetOf(spreadsheet, "Quotes_Vertical(IBM)")->Cells(4, 1)->Value().IsEmpty());
}

TEST_F(Run, GoesWellThoughTheTableShowsNothingOfItsQuotesAndSaysSo) {
  quotetracker::Server server;
  const auto result = RunWith({"--tickers", "MSFT,IBM", "--columns", "Ticker", "--set", "UpdateEvery=0",
                               "--http-port", std::to_string(server.HttpPort())});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.err, HasSubstr("nothing of them is shown"));
  EXPECT_THAT(result.err, Not(HasSubstr("no quote came")));
}

TEST_F(Run, AsksAtThePaceOfTheSettings) {
  quotetracker::Server server;
  const auto result = RunWith({"--tickers", "MSFT", "--set", "Seconds=1", "--for", "3500ms", "--http-port",
                               std::to_string(server.HttpPort())});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  const auto requests = server.Requests();
  EXPECT_GE(std::count(requests.begin(), requests.end(), "/req?GetLastQuote(MSFT)"), 3);
}

TEST_F(Run, TellsTheSameNoMoreThanOnceAMinuteWithoutATerminal) {
  const auto result = RunWith({"--demo", "--tickers", "MSFT", "--set", "Seconds=1", "--for", "3500ms"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  const std::size_t first = result.err.find("1 quote\n");
  ASSERT_NE(first, std::string::npos) << result.err;
  EXPECT_EQ(result.err.find("1 quote", first + 1), std::string::npos) << result.err;
}

TEST_F(Run, LeavesNoOldTickerWhenTheListShrinks) {
  const Arguments once{"--demo", "--set", "UpdateEvery=0"};
  Arguments first = once;
  first.insert(first.end(), {"--tickers", "A,B,C"});
  ASSERT_EQ(RunWith(first).exit_code, 0);
  Arguments second = once;
  second.insert(second.end(), {"--tickers", "E,F"});
  ASSERT_EQ(RunWith(second).exit_code, 0);
  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  const auto table = SheetOf(spreadsheet, "Dovanta2_Quotes");
  EXPECT_EQ(TextAt(*table, 3, 1), "E");
  EXPECT_EQ(TextAt(*table, 4, 1), "F");
  EXPECT_TRUE(table->Cells(5, 1)->Value().IsEmpty());
}

TEST_F(Run, GoesOnWithTheTickersOfTheWorkbook) {
  ASSERT_EQ(RunWith({"--demo", "--set", "UpdateEvery=0", "--tickers", "A,B"}).exit_code, 0);
  quotetracker::Server server;
  const auto result = RunWith({"--set", "UpdateEvery=0", "--http-port", std::to_string(server.HttpPort())});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(server.Requests(), ::testing::Contains("/req?GetLastQuote(A,B)"));
}

TEST_F(Run, RefusesADamagedWorkbookAndLeavesItAsItIs) {
  std::ofstream(folder_ / "quotes.xlsx") << "no workbook";
  const auto result = RunWith({"--demo", "--for", "1s"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("quotes.xlsx"));
  EXPECT_EQ(std::filesystem::file_size(folder_ / "quotes.xlsx"), 11U);
}

TEST_F(Run, AsksForTickersWhenThereAreNone) {
  const auto result = RunWith({});
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_THAT(result.err, AllOf(HasSubstr("--tickers"), HasSubstr("Nothing was committed")));
}

TEST_F(Run, BeginsNoDayWithoutQuoteTracker) {
  const auto result = RunWith({"--tickers", "MSFT", "--http-port", "1"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("Nothing was committed"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "quotes.xlsx"));
}

TEST_F(Run, TakesAListOfTickersApart) {
  quotetracker::Server server;
  const auto result = RunWith({"--set", "UpdateEvery=0", "--http-port", std::to_string(server.HttpPort()),
                               "--tickers", "ge, F T,IBM"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(server.Requests(), ::testing::Contains("/req?GetLastQuote(GE,F,T,IBM)"));
}

TEST_F(Run, NamesNoChartsWhereThereAreNone) {
  quotetracker::Server server;
  const auto result = RunWith({"--set", "UpdateEvery=0", "--tickers", "MSFT", "--history", "Last,Time",
                               "--http-port", std::to_string(server.HttpPort())});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("and at Quotes_Vertical(MSFT) for the history\n"));
}

TEST_F(Run, KeepsHistoriesWithChartsThatOneOptionAsksFor) {
  quotetracker::Server server;
  const auto result = RunWith({"--set", "UpdateEvery=0", "--tickers", "MSFT,IBM", "--charts", "--http-port",
                               std::to_string(server.HttpPort())});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out,
              HasSubstr("and at Quotes_Vertical(MSFT) and 1 more like it for the history and its charts\n"));
  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  EXPECT_FALSE(SheetOf(spreadsheet, "Quotes_Vertical(IBM)")->Cells(3, 1)->Value().IsEmpty());
  EXPECT_EQ(spreadsheet.Application()->ActiveSheet()->Name(), "Dovanta2_Quotes") << "the sheet in front";
}

TEST_F(Run, SaysAtItsStartThatItCannotSave) {
  std::ofstream(folder_ / ".~lock.quotes.xlsx#") << "somebody";
  const auto result = RunWith({"--demo", "--for", "1s"});
  const auto told = result.err.find("Not saved, going on: ");
  EXPECT_LT(told, result.err.find("Connecting to host")) << result.err;
}

TEST_F(Run, CostsNothingWithoutBeingAllowedTo) {
  ASSERT_EQ(RunWith({"--demo", "--for", "1s"}).exit_code, 0);
  EXPECT_EQ(RunWith({"--demo", "--for", "1s"}).exit_code, 0) << "the same again costs nothing";
  const auto result = RunWith({"--demo", "--for", "1s", "--history", "Bid"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("is cleared"), HasSubstr("add --yes")));
}

TEST_F(Run, FailsWhenNoQuoteCameInTheWholeDay) {
  // The dialog gets its portfolios, and quotes are refused.
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    const bool is_for_quotes = peer.ReceiveUntil("\r\n\r\n").find("GetLastQuote") != std::string::npos;
    peer.Send("HTTP/1.0 200 OK\r\n\r\n" + std::string(is_for_quotes ? "ERROR\r\n" : "OK\r\nMain"));
  });
  const auto result = RunWith({"--tickers", "MSFT", "--set", "Seconds=1", "--for", "300ms", "--http-port",
                               std::to_string(server.Port())});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("QuoteTracker gave no quotes; going on"),
                                HasSubstr("error: no quote came in the whole day")));
}

TEST_F(Run, SaysThatCredentialsAreMissingAndKeepsTheTablesOfGo) {
  quotetracker::Server server;
  const auto result =
      RunWith({"--tickers", "MSFT", "--source", "Alpstein", "--http-port", std::to_string(server.HttpPort()),
               "--socket-port", std::to_string(server.StreamPort()), "--for", "60s"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("mirelo credentials set"));
  EXPECT_EQ(TextAt(*SheetOf(workbook::Spreadsheet::Open(folder_ / "quotes.xlsx"), "Dovanta2_Quotes"), 3, 1),
            "MSFT");
}

TEST_F(Run, GoesOnUnderNohupWhenItsTerminalEnds) {
  const std::string mirelo = BuiltProgram("mirelo");
  const auto start = std::chrono::steady_clock::now();
  const auto result = RunProgram("/bin/sh", folder_.path(),
                                 {"-c", "nohup '" + mirelo + R"(' run --demo --headless --for 3s >out 2>err &
      for i in $(seq 600); do grep -q Streaming err && break; sleep 0.05; done
      kill -HUP $!
      wait $!)"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(3)) << "it goes on to its end";
}

TEST_F(Run, SaysWhatADurationIs) {
  const auto result = RunWith({"--demo", "--for", "soon"});
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_THAT(result.err, HasSubstr("20s, 90m or 8h30m"));
}

TEST_F(Run, SavesBesideAWorkbookThatIsOpenInAnotherProgram) {
  std::ofstream(folder_ / ".~lock.quotes.xlsx#") << "somebody";
  const auto result = RunWith({"--demo", "--for", "1s"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.err, HasSubstr("quotes.xlsx: another program has it open; close it there"));
  EXPECT_THAT(result.out, HasSubstr("Saved in " + (folder_ / "quotes-1.xlsx").string()));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "quotes.xlsx"));
  EXPECT_NO_THROW(workbook::Spreadsheet::Open(folder_ / "quotes-1.xlsx"));
}

// Two days on one workbook

class TwoRuns : public Run {
 protected:
  // The first one has begun when its first save is there.
  TwoRuns() {
    for (const auto end = std::chrono::steady_clock::now() + kPatience;
         !std::filesystem::exists(folder_ / "quotes.xlsx") && std::chrono::steady_clock::now() < end;) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
  std::vector<std::string> Listing() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
      names.push_back(entry.path().filename().string());
    return names;
  }

  static constexpr std::chrono::seconds kPatience{60};
  app::ChildProcess first_{BuiltProgram("mirelo"),
                           {"run", "--demo", "--tickers", "FIRST", "--save-every", "10ms", "--workbook",
                            (folder_ / "quotes.xlsx").string()}};
};

TEST_F(TwoRuns, DoNotWriteOverEachOther) {
  std::filesystem::create_symlink("quotes.xlsx", folder_ / "link.xlsx");
  for (const char* name : {"quotes.xlsx", "link.xlsx"}) {
    SCOPED_TRACE(name);
    const auto second = RunWith({"--demo", "--tickers", "SECOND", "--for", "1s", "--workbook", name});
    EXPECT_EQ(second.exit_code, 1);
    EXPECT_THAT(second.out, IsEmpty());
    EXPECT_THAT(second.err, AllOf(HasSubstr("error: Cannot save " + (folder_ / "quotes.xlsx").string() +
                                            ": another Mirelo works on it (process "),
                                  HasSubstr("end that one first, or take another file")));
  }
  const auto shown = RunMirelo(folder_.path(), {"show", "quotes.xlsx", "Dovanta2_Quotes"});
  EXPECT_EQ(shown.exit_code, 0) << "reading is free";
  EXPECT_THAT(shown.out, HasSubstr("FIRST"));

  first_.Signal(SIGINT);
  EXPECT_EQ(first_.Wait(kPatience), 0);
  EXPECT_EQ(TextAt(*SheetOf(workbook::Spreadsheet::Open(folder_ / "quotes.xlsx"), "Dovanta2_Quotes"), 3, 1),
            "FIRST");
  EXPECT_THAT(Listing(), ::testing::UnorderedElementsAre("home", "link.xlsx", "quotes.xlsx"));
}

TEST_F(TwoRuns, FollowEachOtherWhenTheFirstIsKilled) {
  first_.Signal(SIGKILL);
  first_.Wait(kPatience);
  const auto second = RunWith({"--demo", "--tickers", "SECOND", "--for", "1s"});
  EXPECT_EQ(second.exit_code, 0) << second.err;
  EXPECT_EQ(TextAt(*SheetOf(workbook::Spreadsheet::Open(folder_ / "quotes.xlsx"), "Dovanta2_Quotes"), 3, 1),
            "SECOND");
  EXPECT_THAT(Listing(), ::testing::UnorderedElementsAre("home", "quotes.xlsx"));
}

TEST_F(Run, BeginsNoDayWhereTheWorkbookCannotBeHeld) {
  const auto result = RunWith({"--demo", "--for", "1s", "--workbook", "no/such/folder/quotes.xlsx"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("error: Cannot save"), HasSubstr("No such file or directory.\n"),
                                HasSubstr("name another file with --workbook.")));
  EXPECT_THAT(result.out, IsEmpty());
}

TEST_F(Run, GoesOnWhereTheFileSystemKnowsNoLocksAndSaysSoOnce) {
  quotetracker::Server server;
  const std::string port = std::to_string(server.HttpPort());
  ProgramResult result;
  WithRefusedCalls({SYS_flock}, ENOLCK, [&] {
    result = RunWith({"--tickers", "MSFT", "--set", "Seconds=1", "--for", "2s", "--save-every", "100ms",
                      "--http-port", port});
  });
  EXPECT_EQ(result.exit_code, 0) << result.err;
  const std::string warning =
      "warning: quotes.xlsx: its file system knows no locks; see that no other Mirelo saves it meanwhile\n";
  EXPECT_THAT(result.err, HasSubstr(warning));
  EXPECT_EQ(result.err.find(warning, result.err.find(warning) + 1), std::string::npos) << "told once";
  EXPECT_NO_THROW(workbook::Spreadsheet::Open(folder_ / "quotes.xlsx"));
}

}  // namespace
}  // namespace mirelo::testing
