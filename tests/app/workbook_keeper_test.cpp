#include "app/workbook/workbook_keeper.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/files.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "host/log.h"
#include "support/child_process.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/processes.h"
#include "support/temp_directory.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using Level = host::Log::Level;

constexpr uid_t kNobodysId = 65534;

std::string Leveled(Level level, const std::string& line) {
  return level == Level::Warning ? "warning: " + line : line;
}

class Keeper : public ::testing::Test {
 protected:
  Keeper() {
    keeper.Status.Subscribe([this](const std::string& text) { told.push_back(text); });
  }
  // Time goes by in steps, and what is saved beside it comes to its end at each of them.
  void Pass(std::chrono::minutes time) {
    for (std::chrono::minutes step{1}; time > 0min; time -= step) {
      loop.Advance(step);
      loop.RunUntil([this] { return !keeper.IsSaving(); });
    }
  }
  void Write(double value) { document->Application()->Cells(1, 1)->Value(value); }
  static double Saved(const std::filesystem::path& file) {
    return workbook::Spreadsheet::Open(file)
        .Application()
        ->Worksheets()
        ->Item(1)
        ->Cells(1, 1)
        ->Value()
        .ToDouble();
  }

  TempDirectory folder;
  ManualLoop loop;
  ManualClock clock;
  TestHost host;
  host::HostScope installed{host.Use(loop).Use(clock)};
  workbook::Files files;
  std::unique_ptr<host::Document> document = files.New();
  std::filesystem::path inner = folder / "inner";
  std::filesystem::path file = inner / "book.xlsx";
  int prepared = 0;
  std::function<void()> meanwhile;  // what another program does at the next save
  app::WorkbookKeeper keeper{loop, *document, file,
                             [this] {
                               ++prepared;
                               if (meanwhile) std::exchange(meanwhile, nullptr)();
                             },
                             [this](const std::string& loss) { told.push_back(loss); }};
  std::vector<std::string> told;
};

TEST_F(Keeper, SavesAtIntervals) {
  std::filesystem::create_directory(inner);
  keeper.SaveAtIntervals(1h);
  EXPECT_EQ(keeper.State(), "not saved yet");
  Pass(59min);
  EXPECT_FALSE(std::filesystem::exists(file));
  Write(1);
  Pass(1min);
  EXPECT_EQ(Saved(file), 1);
  EXPECT_THAT(keeper.State(), ::testing::MatchesRegex(R"(saved 08:36:13 \([0-9.]+ KB\))"));
  Write(2);
  Pass(1h);
  EXPECT_EQ(Saved(file), 2);
  EXPECT_EQ(prepared, 2);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Keeper, SaysOnceThatItCannotSaveAndThatItCanAgain) {
  keeper.SaveAtIntervals(1h);
  Pass(3h);
  EXPECT_THAT(told, ElementsAre(StartsWith("Not saved, going on: ")));
  EXPECT_THAT(keeper.State(), StartsWith("not saved: "));
  std::filesystem::create_directory(inner);
  Write(3);
  Pass(1h);
  EXPECT_THAT(told, ElementsAre(StartsWith("Not saved, going on: "), "Saved again"));
  EXPECT_EQ(Saved(file), 3);
}

TEST_F(Keeper, SavesAtTheEndUnderANameThatIsFreeWhereTheFileCannotBeTaken) {
  std::filesystem::create_directories(file);  // a folder of that name
  std::filesystem::create_directory(inner / "book-1.xlsx");
  Write(4);
  EXPECT_EQ(keeper.SaveAtEnd(), inner / "book-2.xlsx");
  EXPECT_EQ(Saved(inner / "book-2.xlsx"), 4);
}

TEST_F(Keeper, LeavesAFileThatAnotherProgramHasChangedAndGoesOnBesideIt) {
  std::filesystem::create_directory(inner);
  Write(1);
  keeper.SaveAtIntervals(1h);
  Pass(1h);
  auto others = workbook::Spreadsheet::Open(file);
  others.Application()->Cells(2, 1)->Value("mine");
  others.Save(file);
  Write(2);
  Pass(2h);
  EXPECT_EQ(Saved(file), 1);
  EXPECT_EQ(Saved(inner / "book-1.xlsx"), 2);
  EXPECT_THAT(told, ElementsAre("Another program has changed book.xlsx; saving in book-1.xlsx from now on"));
  Write(3);
  EXPECT_EQ(keeper.SaveAtEnd(), inner / "book-1.xlsx");
  EXPECT_EQ(Saved(inner / "book-1.xlsx"), 3);
}

TEST_F(Keeper, LeavesAFileThatAnotherProgramChangesWhileItIsAboutToBeSaved) {
  std::filesystem::create_directory(inner);
  Write(1);
  keeper.SaveAtIntervals(1h);
  Pass(1h);
  meanwhile = [this] { std::ofstream(file) << "theirs"; };
  Write(2);
  Pass(1h);
  EXPECT_EQ(std::filesystem::file_size(file), 6U);
  EXPECT_EQ(Saved(inner / "book-1.xlsx"), 2);
  EXPECT_THAT(told, ElementsAre("Another program has changed book.xlsx; saving in book-1.xlsx from now on"));
}

TEST_F(Keeper, NotesOfEachSaveWhatBecameOfIt) {
  std::filesystem::create_directory(inner);
  std::vector<std::string> noted;
  keeper.Noted.Subscribe(
      [&](Level level, const std::string& line) { noted.push_back(Leveled(level, line)); });
  std::ofstream(file) << "theirs";
  EXPECT_EQ(keeper.SaveAtEnd(), inner / "book-1.xlsx");
  EXPECT_THAT(noted,
              ElementsAre(StartsWith("save 1 begins"), StartsWith("warning: save 1 gives way: Cannot save "),
                          StartsWith("save 2 begins"), "save 2 is in " + (inner / "book-1.xlsx").string()));
}

TEST_F(Keeper, NotesASaveThatFailsBeforeItBeginsByANumberOfItsOwn) {
  std::filesystem::create_directory(inner);
  std::vector<std::string> noted;
  keeper.Noted.Subscribe(
      [&](Level level, const std::string& line) { noted.push_back(Leveled(level, line)); });
  keeper.SaveAtStart();
  meanwhile = [] { throw RuntimeError(1004, "no table"); };
  keeper.SaveNow();
  EXPECT_THAT(noted, ElementsAre(StartsWith("save 1 begins"), StartsWith("save 1 is in "),
                                 "warning: save 2 failed: no table"));
}

// Nobody could list the folder, so its names cannot be synced; the files in it can.
TEST_F(Keeper, StaysWithItsFileInAFolderThatMayBeWrittenButNotRead) {
  std::filesystem::create_directory(inner);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(inner.c_str(), 0333), 0);
  ChildProcess nobody([&](const ChildProcess::Test& test) {
    if (::geteuid() == 0 && ::setuid(kNobodysId) != 0) return;
    keeper.SaveAtIntervals(1h);
    Pass(3h);
    test.Report(static_cast<std::int32_t>(told.size()));
    test.Report(keeper.SaveAtEnd() == file ? 1 : 0);
  });
  std::int32_t number = -1;
  EXPECT_TRUE(nobody.Read(number) && number == 0) << number << " lines of trouble";
  EXPECT_TRUE(nobody.Read(number) && number == 1) << "it was saved beside its file";
  EXPECT_TRUE(nobody.Finish());
  ASSERT_EQ(::chmod(inner.c_str(), 0755), 0);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(inner), {}), 1);
}

TEST_F(Keeper, GoesOnSavingWhereWhoeverIsToldFails) {
  keeper.Status.Subscribe([](const std::string&) { throw RuntimeError(5, "the screen has gone"); });
  keeper.SaveAtIntervals(1h);
  ASSERT_NO_THROW(Pass(1h)) << "that it was not saved is told";
  std::filesystem::create_directory(inner);
  Write(6);
  ASSERT_NO_THROW(Pass(1h)) << "that it is saved again";
  EXPECT_EQ(Saved(file), 6);
  std::ofstream(file) << "theirs";
  ASSERT_NO_THROW(Pass(1h)) << "that it is saved beside it";
  EXPECT_EQ(Saved(inner / "book-1.xlsx"), 6);
  EXPECT_EQ(keeper.SaveAtEnd(), inner / "book-1.xlsx");
}

TEST_F(Keeper, LeavesAFileThatHasAppearedMeanwhile) {
  std::filesystem::create_directory(inner);
  workbook::Spreadsheet::New().Save(file);
  Write(1);
  EXPECT_EQ(keeper.SaveAtEnd(), inner / "book-1.xlsx");
}

TEST_F(Keeper, SavesInAFileAgainThatWasRemoved) {
  std::filesystem::create_directory(inner);
  keeper.SaveAtIntervals(1h);
  Pass(1h);
  std::filesystem::remove(file);
  Write(5);
  Pass(1h);
  EXPECT_EQ(Saved(file), 5);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Keeper, BreaksOffWhatItSavesWhenItEndsAndNotesIt) {
  std::filesystem::create_directory(inner);
  std::vector<std::string> noted;
  {
    app::WorkbookKeeper short_one(
        loop, *document, file, [] {}, [](const std::string&) {});
    short_one.Noted.Subscribe(
        [&](Level level, const std::string& line) { noted.push_back(Leveled(level, line)); });
    short_one.SaveAtIntervals(1h);
    loop.Advance(1h);
    EXPECT_TRUE(short_one.IsSaving());
  }
  EXPECT_THAT(noted, ElementsAre(StartsWith("save 1 begins"),
                                 "warning: save 1 is broken off: what it was to hold may not be in " +
                                     file.string()));
  EXPECT_EQ(loop.WatchCount(), 0U);
  EXPECT_THAT(ChildrenOf(::getpid()), IsEmpty());
  EXPECT_THAT(std::distance(std::filesystem::directory_iterator(inner), {}), ::testing::Le(1));
}

TEST_F(Keeper, SaysThatNothingCouldBeSavedAtAll) {
  EXPECT_EQ(keeper.SaveAtEnd(), std::filesystem::path());
  EXPECT_THAT(told, ElementsAre(StartsWith("Not saved, going on: "), StartsWith("Not saved, going on: ")));
}

}  // namespace
}  // namespace mirelo::testing
