// Working days of the program mirelo against the stand-in for QuoteTracker, both processes of their own: what
// happens when one of them is ended, or stands still.

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "adapters/sodium/sodium_vault.h"
#include "adapters/sqlite/sqlite_registry.h"
#include "adapters/workbook/companion_names.h"
#include "adapters/workbook/file_hold.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/child_process.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "scenarios/tracker_process.h"
#include "support/built_program.h"
#include "support/environment_variable.h"
#include "support/processes.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using Arguments = std::vector<std::string>;

// A save under the sanitizers on a busy machine takes seconds, and the next one comes twenty times as long
// behind it.
constexpr auto kPatience = 180s;

class DayOfProcesses : public ::testing::Test {
 protected:
  DayOfProcesses() {
    StartTracker();
    sodium::SodiumVault vault(folder / "mirelo");
    vault.Set({.name = "MireloDemo", .secret = "demo-secret"});
  }

  void StartTracker() { tracker.Start({"--rate", "200"}); }
  void Begin(const Arguments& more, const char* save_every = "10ms") {
    Arguments arguments{"run",
                        "--workbook",
                        file.string(),
                        "--tickers",
                        "MSFT,IBM",
                        "--http-port",
                        std::to_string(tracker.HttpPort()),
                        "--socket-port",
                        std::to_string(tracker.StreamPort()),
                        "--set",
                        "VerticalTable=1",
                        "--set",
                        "RowsLimit=0",  // a history at its limit has as many rows after a save as before it
                        "--tick",
                        "MSFT:Last",
                        "--save-every",
                        save_every};
    arguments.insert(arguments.end(), more.begin(), more.end());
    // With what it tells among its output, so that the test can wait for that.
    arguments.insert(arguments.begin(), {"-c", "exec \"$0\" \"$@\" 2>&1", BuiltProgram("mirelo")});
    mirelo = std::make_unique<app::ChildProcess>("/bin/sh", arguments);
  }
  void BeginStreaming() { Begin({"--source", "Alpstein Finance (delayed)"}); }
  void BeginAsking(const char* save_every = "10ms") {
    Begin({"--set", "UpdateEvery=1", "--set", "Seconds=1"}, save_every);
  }
  // Until it has told this line. False when that does not come.
  bool Tells(const std::string& line) {
    for (auto told = mirelo->ReadLine(kPatience); told; told = mirelo->ReadLine(kPatience)) {
      if (*told == line) return true;
    }
    return false;
  }

  // How many rows of history the saved workbook holds; 0 while there is none.
  int Rows() const {
    if (!std::filesystem::exists(file)) return 0;
    const auto spreadsheet = workbook::Spreadsheet::Open(file);
    const auto sheet = spreadsheet.Application()->Worksheets()->Item("Quotes_Vertical(MSFT)");
    int rows = 0;
    while (!sheet->Cells(rows + 3, 1)->Value().IsEmpty()) ++rows;
    return rows;
  }
  // Until the history has grown past `rows`. False when that does not happen.
  bool GrowsPast(int rows) const {
    for (const auto end = std::chrono::steady_clock::now() + kPatience;
         std::chrono::steady_clock::now() < end;) {
      if (Rows() > rows) return true;
      std::this_thread::sleep_for(20ms);
    }
    ADD_FAILURE() << Rows() << " rows; the day told:\n" << WhatIsTold();
    return false;
  }
  // All lines that it has told and nobody has read.
  std::string WhatIsTold() const {
    std::string all;
    while (const auto line = mirelo->ReadLine(0ms)) all += *line + "\n";
    return all;
  }
  // Stops the process that saves the workbook while it writes, as a disk does that does not answer. False
  // when there comes none.
  bool StopTheSaver() {
    for (const auto end = std::chrono::steady_clock::now() + kPatience;
         std::chrono::steady_clock::now() < end;) {
      const std::vector<pid_t> savers = ChildrenOf(mirelo->Id());
      if (savers.size() != 1 || !HasWorkshop()) continue;
      saver = savers.front();
      ::kill(saver, SIGSTOP);
      if (HasStopped(saver)) return true;
    }
    return false;
  }
  // Whether something is being written. A process that has just been started does not end with the day yet.
  bool HasWorkshop() const {
    const std::filesystem::directory_iterator names(folder.path());
    return std::any_of(begin(names), end(names), [](const auto& entry) {
      return !workbook::FilesOfWorkshop(entry.path().filename().string()).empty();
    });
  }
  // One that is ending is stopped by nothing any more, and stays among the children until the program has the
  // time to see to it.
  bool HasStopped(pid_t process) const {
    for (const auto end = std::chrono::steady_clock::now() + kPatience;
         std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(1ms)) {
      if (IsStopped(process)) return true;
      const std::vector<pid_t> children = ChildrenOf(mirelo->Id());
      if (std::ranges::find(children, process) == children.end()) return false;
    }
    return false;
  }
  // Until it has told a line that begins so. False when that does not come.
  bool TellsOf(const std::string& begin) {
    for (auto told = mirelo->ReadLine(kPatience); told; told = mirelo->ReadLine(kPatience)) {
      if (told->starts_with(begin)) return true;
    }
    return false;
  }
  // Until nobody has a hold on the workbook any more. False when that does not come.
  bool IsLetGoOf() const {
    for (const auto end = std::chrono::steady_clock::now() + kPatience;
         std::chrono::steady_clock::now() < end;) {
      try {
        const workbook::FileHold hold(file);
        return true;
      } catch (const RuntimeError&) {
        std::this_thread::sleep_for(10ms);
      }
    }
    return false;
  }
  // What its first save has told, which may take its time as well, has been read then.
  bool HasBegunToStream() { return Tells("Streaming"); }
  int EndInOrder() {
    mirelo->Signal(SIGINT);
    return mirelo->Wait(kPatience);
  }

  TempDirectory folder;
  EnvironmentVariable data_folder{"XDG_DATA_HOME", folder.path().c_str()};
  std::filesystem::path file = folder / "day.xlsx";
  TrackerProcess tracker;
  std::unique_ptr<app::ChildProcess> mirelo;
  pid_t saver = 0;
};

TEST_F(DayOfProcesses, StreamsOnAfterARestartOfQuoteTracker) {
  BeginStreaming();
  ASSERT_TRUE(GrowsPast(0));
  tracker.End();
  StartTracker();
  ASSERT_TRUE(GrowsPast(Rows()));
  EXPECT_EQ(EndInOrder(), 0);
}

TEST_F(DayOfProcesses, AsksOnAfterARestartOfQuoteTracker) {
  BeginAsking();
  ASSERT_TRUE(GrowsPast(0));
  tracker.End();
  ASSERT_TRUE(Tells("QuoteTracker gave no quotes; going on"));
  StartTracker();
  EXPECT_TRUE(GrowsPast(Rows()));
  EXPECT_EQ(EndInOrder(), 0);
}

TEST_F(DayOfProcesses, StreamsOnWhenQuoteTrackerGoesOnAfterAStall) {
  BeginStreaming();
  ASSERT_TRUE(GrowsPast(0));
  tracker.Stall();
  std::this_thread::sleep_for(500ms);
  const int rows = Rows();
  tracker.GoOn();
  EXPECT_TRUE(GrowsPast(rows));
  EXPECT_EQ(EndInOrder(), 0);
}

TEST_F(DayOfProcesses, EndsInOrderWhileAQuoteTrackerThatStallsOwesAnAnswer) {
  BeginAsking();
  ASSERT_TRUE(GrowsPast(0));
  tracker.Stall();
  std::this_thread::sleep_for(1500ms);  // it is asked meanwhile
  EXPECT_EQ(EndInOrder(), 0);
  EXPECT_GT(Rows(), 0);
  tracker.GoOn();
}

TEST_F(DayOfProcesses, SavesWhatCameLastWhenItIsEndedInOrder) {
  BeginAsking("1h");
  ASSERT_TRUE(Tells("2 quotes"));
  ASSERT_EQ(Rows(), 0) << "it was saved since its start";
  EXPECT_EQ(EndInOrder(), 0);
  EXPECT_GT(Rows(), 0);
}

TEST_F(DayOfProcesses, WaitsForItsLastSaveAndTellsSo) {
  BeginStreaming();
  ASSERT_TRUE(HasBegunToStream());
  ASSERT_TRUE(GrowsPast(0));
  ASSERT_TRUE(StopTheSaver());
  const int rows = Rows();
  std::this_thread::sleep_for(300ms);
  mirelo->Signal(SIGINT);
  EXPECT_TRUE(TellsOf("Saving day.xlsx since "));
  ::kill(saver, SIGCONT);
  EXPECT_EQ(mirelo->Wait(kPatience), 0);
  EXPECT_GT(Rows(), rows);
}

TEST_F(DayOfProcesses, EndsAtOnceAtASecondSignalWhileItsLastSaveStandsStill) {
  BeginStreaming();
  ASSERT_TRUE(HasBegunToStream());
  ASSERT_TRUE(GrowsPast(0));
  ASSERT_TRUE(StopTheSaver());
  const int rows = Rows();
  mirelo->Signal(SIGINT);
  ASSERT_TRUE(TellsOf("Saving day.xlsx since "));
  mirelo->Signal(SIGINT);
  EXPECT_EQ(mirelo->Wait(kPatience), 128 + SIGINT);
  EXPECT_GE(Rows(), rows);
  EXPECT_TRUE(IsLetGoOf()) << "what saved it goes with the day, and who writes for that behind it";
}

TEST_F(DayOfProcesses, GoesOnWhereItsSaverIsKilled) {
  BeginStreaming();
  ASSERT_TRUE(GrowsPast(0));
  ASSERT_TRUE(StopTheSaver());
  ::kill(saver, SIGKILL);
  ASSERT_TRUE(
      Tells("Not saved, going on: The workbook cannot be written: the process that saves it broke off "
            "(signal 9). Memory may be short."));
  ASSERT_TRUE(Tells("Saved again"));
  EXPECT_TRUE(GrowsPast(Rows()));
  EXPECT_EQ(EndInOrder(), 0);
}

TEST_F(DayOfProcesses, LeavesAWholeWorkbookAndRegistryWhereverItIsKilled) {
  for (const auto moment : {0ms, 7ms, 31ms, 83ms, 160ms}) {
    SCOPED_TRACE(moment.count());
    const int rows = Rows();
    BeginStreaming();
    ASSERT_TRUE(GrowsPast(rows));
    std::this_thread::sleep_for(moment);
    mirelo->Signal(SIGKILL);
    EXPECT_EQ(mirelo->Wait(kPatience), 128 + SIGKILL);

    ASSERT_NO_THROW(EXPECT_GT(Rows(), rows));
    EXPECT_THAT(workbook::Spreadsheet::Open(file).Losses(), ::testing::IsEmpty());
    sqlite::SqliteRegistry registry(folder / "mirelo/registry.db");
    host::Registry::Key key = 0;
    EXPECT_EQ(registry.RegOpenKeyExA(host::Registry::kCurrentUser, "Software\\Kestrin\\Dovanta2\\Settings",
                                     host::Registry::kRead, key),
              0);
    std::uint32_t count = 0;
    std::uint32_t longest = 0;
    EXPECT_EQ(registry.RegQueryInfoKeyA(key, count, longest), 0);
    EXPECT_GE(count, 20U) << "all that Go stores";
  }
}

}  // namespace
}  // namespace mirelo::testing
