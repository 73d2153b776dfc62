// The program mirelo keeps a day's quotes beside its workbook, and is killed in the midst of it.

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "app/child_process.h"
#include "day/quote_journal.h"
#include "scenarios/tracker_process.h"
#include "support/built_program.h"
#include "support/environment_variable.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
constexpr auto kWaitForADay = 120s;

const std::filesystem::path kMireloProgram = BuiltProgram("mirelo");

class KilledDay : public ::testing::Test {
 protected:
  KilledDay() { tracker.Start({"--rate", "500"}); }

  std::unique_ptr<app::ChildProcess> Begin() const {
    const std::vector<std::string> words{kMireloProgram, "run",
                                         "--workbook",   folder / "day.xlsx",
                                         "--registry",   folder / "registry.db",
                                         "--tickers",    "MSFT,IBM,DELL,CSCO",
                                         "--set",        "Seconds=1",
                                         "--http-port",  std::to_string(tracker.HttpPort()),
                                         "--save-every", "100ms",
                                         "--also",       csv,
                                         "--also",       database};
    std::vector<std::string> shell{"-c", "exec \"$0\" \"$@\" >\"$HOME/told\" 2>&1"};
    shell.insert(shell.end(), words.begin(), words.end());
    return std::make_unique<app::ChildProcess>("/bin/sh", shell);
  }
  // How many rows the database holds, and whether it is whole.
  std::int64_t RowsOfDatabase() const {
    sqlite3* connection = nullptr;
    std::int64_t count = 0;
    sqlite3_open_v2(database.c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
    const auto read = [](void* result, int, char** values, char**) {
      *static_cast<std::int64_t*>(result) = std::atoll(values[0]);
      return 0;
    };
    sqlite3_exec(connection,
                 "SELECT count(*) FROM quotes, pragma_integrity_check() AS c WHERE c.integrity_check = 'ok'",
                 read, &count, nullptr);
    sqlite3_close(connection);
    return count;
  }
  std::vector<std::string> LinesOfCsv() const {
    std::ifstream stream(csv);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }
  // Until so many rows are in both. False when that does not come.
  bool GrowTo(std::int64_t rows) const {
    for (const auto end = std::chrono::steady_clock::now() + kWaitForADay;
         std::chrono::steady_clock::now() < end;) {
      if (RowsOfDatabase() >= rows && std::ssize(LinesOfCsv()) > rows) return true;
      std::this_thread::sleep_for(20ms);
    }
    return false;
  }

  TempDirectory folder;
  EnvironmentVariable home{"HOME", folder.path().c_str()};
  std::filesystem::path csv = folder / "quotes.csv";
  std::filesystem::path database = folder / "quotes.db";
  TrackerProcess tracker;
};

TEST_F(KilledDay, LeavesWholeRowsToWhichTheNextDayAppends) {
  std::int64_t before = 0;
  for (int day = 0; day < 3; ++day) {
    const auto mirelo = Begin();
    ASSERT_TRUE(GrowTo(before + 4)) << "day " << day;
    std::this_thread::sleep_for(day * 150ms);
    mirelo->Signal(SIGKILL);
    mirelo->Wait(kWaitForADay);
    before = RowsOfDatabase();
    ASSERT_GE(before, 4 * (day + 1));
  }
  const auto mirelo = Begin();
  ASSERT_TRUE(GrowTo(before + 4));
  mirelo->Signal(SIGINT);
  EXPECT_EQ(mirelo->Wait(kWaitForADay), 0);
  const auto lines = LinesOfCsv();
  EXPECT_GE(RowsOfDatabase(), before + 4);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(std::count(lines[i].begin(), lines[i].end(), ','), std::ssize(day::QuoteJournal::Columns()))
        << lines[i];
    if (i > 0) {
      EXPECT_TRUE(lines[i].starts_with(std::to_string(i) + ",2")) << lines[i];
    }
  }
}

}  // namespace
}  // namespace mirelo::testing
