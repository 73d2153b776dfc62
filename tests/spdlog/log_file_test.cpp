#include "adapters/spdlog/log_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "automation/text.h"
#include "support/error_number.h"
#include "support/refused_calls.h"
#include "support/temp_directory.h"

namespace mirelo::logging {
namespace {

namespace fs = std::filesystem;
using Level = host::Log::Level;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::SizeIs;
using testing::TempDirectory;

std::vector<std::string> LinesOf(const fs::path& file) {
  std::vector<std::string> lines;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

class Log : public ::testing::Test {
 protected:
  LogFile Open(Level least = Level::Debug, LogFile::Limits limits = {}) {
    return LogFile(
        file_, least, [this](const std::string& line) { told_.push_back(line); }, limits);
  }

  TempDirectory folder_;
  fs::path file_ = folder_ / "day.log";
  std::vector<std::string> told_;
};

TEST_F(Log, HoldsALineAnEntryWithItsTimeAndLevel) {
  LogFile log = Open();
  log.Write(Level::Debug, "looked");
  log.Write(Level::Info, "came");
  log.Write(Level::Warning, "late");
  log.Write(Level::Error, "lost");
  const std::string time = "20[0-9]{2}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}Z ";
  EXPECT_THAT(
      LinesOf(file_),
      ElementsAre(MatchesRegex(time + "\\[debug\\] looked"), MatchesRegex(time + "\\[info\\] came"),
                  MatchesRegex(time + "\\[warning\\] late"), MatchesRegex(time + "\\[error\\] lost")));
}

TEST_F(Log, LeavesOutWhatLiesBelowItsLevel) {
  LogFile log = Open(Level::Warning);
  log.Write(Level::Info, "came");
  log.Write(Level::Warning, "late");
  EXPECT_THAT(LinesOf(file_), ElementsAre(HasSubstr("late")));
}

TEST_F(Log, GoesOnBehindWhatAnEarlierOneHasWritten) {
  Open().Write(Level::Info, "first");
  Open().Write(Level::Info, "second");
  EXPECT_THAT(LinesOf(file_), ElementsAre(HasSubstr("first"), HasSubstr("second")));
}

TEST_F(Log, IsItsOwnersAloneWhateverWasThere) {
  std::ofstream(file_) << "";
  fs::permissions(file_, fs::perms::all);
  Open();
  EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Log, MakesTheFolderThatIsAbsent) {
  file_ = folder_ / "state" / "mirelo" / "day.log";
  Open().Write(Level::Info, "here");
  EXPECT_THAT(LinesOf(file_), SizeIs(1));
}

TEST_F(Log, LetsNoTextMakeALineOfItsOwnOrSpeakToATerminal) {
  Open().Write(Level::Info, "MSFT\n2026-11-22T00:00:00.000Z [error] made up\033[2J");
  EXPECT_THAT(LinesOf(file_),
              ElementsAre(HasSubstr("MSFT\\n2026-11-22T00:00:00.000Z [error] made up\\u001B[2J")));
}

TEST_F(Log, CutsALineThatIsTooLong) {
  Open().Write(Level::Info, std::string(100'000, 'x'));
  ASSERT_THAT(LinesOf(file_), SizeIs(1));
  EXPECT_TRUE(LinesOf(file_)[0].ends_with("] " + std::string(LogFile::kLongestLine, 'x')));
}

TEST_F(Log, PutsAFileThatIsFullAwayAndKeepsSoManyOldOnes) {
  LogFile log = Open(Level::Debug, {.bytes = 200, .old_files = 2});
  for (int i = 0; i < 40; ++i) log.Write(Level::Info, "line " + std::to_string(i));
  EXPECT_TRUE(LinesOf(file_).back().ends_with("line 39"));
  const std::string before = LinesOf(file_).front();
  EXPECT_TRUE(LinesOf(folder_ / "day.1.log").back() < before) << "times in the order of the files";
  EXPECT_TRUE(fs::exists(folder_ / "day.2.log"));
  EXPECT_FALSE(fs::exists(folder_ / "day.3.log"));
  for (const char* name : {"day.log", "day.1.log", "day.2.log"})
    EXPECT_LE(fs::file_size(folder_ / name), 200U);
}

TEST_F(Log, RefusesADeviceOrAFolderInPlaceOfAFile) {
  for (const fs::path& place : {fs::path("/dev/null"), folder_.path()}) {
    file_ = place;
    EXPECT_EQ(testing::NumberOf([&] { Open(); }), 75) << place;
    EXPECT_TRUE(fs::exists(place));
  }
}

TEST_F(Log, RefusesAFileThatCannotBeMade) {
  std::ofstream(folder_ / "file") << "";
  file_ = folder_ / "file" / "day.log";
  EXPECT_EQ(testing::NumberOf([&] { Open(); }), 75);
}

TEST_F(Log, OfADiskThatIsFullTellsOnceAndGoesOnWithTheNumberOfLostLines) {
  LogFile log = Open(Level::Debug, {.pause = std::chrono::milliseconds(0)});
  testing::WithRefusedCalls({SYS_write}, ENOSPC, [&] {
    for (int i = 0; i < 3; ++i) log.Write(Level::Info, "lost");
  });
  EXPECT_THAT(told_, ElementsAre(HasSubstr("No space left on device")));
  log.Write(Level::Info, "found");
  EXPECT_THAT(LinesOf(file_),
              ElementsAre(HasSubstr("[warning] 3 lines are missing here"), HasSubstr("[info] found")));
  EXPECT_THAT(told_, SizeIs(1));
}

TEST_F(Log, LeavesAFileThatFailedAloneForAWhile) {
  LogFile log = Open();
  testing::WithRefusedCalls({SYS_write}, EIO, [&] { log.Write(Level::Info, "lost"); });
  log.Write(Level::Info, "too soon");
  EXPECT_THAT(LinesOf(file_), IsEmpty());
}

TEST_F(Log, GoesOnWhereItCannotBePutAway) {
  LogFile log = Open(Level::Debug, {.bytes = 200, .old_files = 1, .pause = std::chrono::milliseconds(0)});
  log.Write(Level::Info, std::string(150, 'x'));
  testing::WithRefusedCalls({SYS_rename, SYS_openat}, EACCES, [&] {
    for (int i = 0; i < 5; ++i) log.Write(Level::Info, std::string(150, 'y'));
  });
  EXPECT_THAT(told_, SizeIs(1));
  log.Write(Level::Info, "found");
  EXPECT_TRUE(LinesOf(file_).back().ends_with("found"));
}

}  // namespace
}  // namespace mirelo::logging
