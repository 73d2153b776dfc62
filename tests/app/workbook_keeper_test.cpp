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
#include <optional>
#include <string>
#include <thread>
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
using ::testing::HasSubstr;
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

// A document of which a save takes as long as a test has it.
class SlowDocument : public host::Document {
 public:
  explicit SlowDocument(ManualLoop& loop) : loop_(loop) {}

  std::shared_ptr<host::excel::Application> Application() const override { return nullptr; }
  std::vector<std::string> NewLosses() override { return {}; }
  void Save(const std::filesystem::path&, const Tell&) override {
    ++saved_in_place;
    std::this_thread::sleep_for(in_place_takes);
  }
  std::unique_ptr<host::Saving> SaveBeside(host::MessageLoop&, const std::filesystem::path&, Tell,
                                           Done done) override {
    if (!can_be_saved_beside) return nullptr;
    ++begun;
    return std::make_unique<SlowSaving>(*this, std::move(done));
  }

  bool can_be_saved_beside = true;
  std::chrono::milliseconds takes{};
  std::chrono::milliseconds in_place_takes{};
  int begun = 0;
  int ended = 0;
  int broken_off = 0;
  int saved_in_place = 0;

 private:
  // Breaks off what it saves when it is destroyed, as any does.
  class SlowSaving : public host::Saving {
   public:
    SlowSaving(SlowDocument& document, Done done) : document_(document) {
      timer_ = document_.loop_.StartTimer(document_.takes, [this, done = std::move(done)] {
        timer_ = 0;
        ++document_.ended;
        const Done last = done;  // it may destroy this
        last(nullptr);
      });
    }
    ~SlowSaving() override {
      if (timer_ == 0) return;
      document_.loop_.StopTimer(timer_);
      ++document_.broken_off;
    }
    SlowSaving(const SlowSaving&) = delete;
    SlowSaving& operator=(const SlowSaving&) = delete;

   private:
    SlowDocument& document_;
    host::MessageLoop::Token timer_ = 0;
  };

  ManualLoop& loop_;
};

class SlowKeeper : public ::testing::Test {
 protected:
  app::WorkbookKeeper& Keep(app::WorkbookKeeper::Manner manner = app::WorkbookKeeper::Manner::kBeside) {
    keeper.emplace(
        loop, document, "/day/book.xlsx", [] {}, [](const std::string&) {}, manner);
    keeper->Status.Subscribe([this](const std::string& text) { told.push_back(text); });
    return *keeper;
  }

  ManualLoop loop;
  ManualClock clock;
  TestHost host;
  host::HostScope installed{host.Use(loop).Use(clock)};
  SlowDocument document{loop};
  std::optional<app::WorkbookKeeper> keeper;
  std::vector<std::string> told;
};

TEST_F(SlowKeeper, SavesOnceAtATimeAndFollowsWithWhatFellDueMeanwhile) {
  document.takes = 150min;
  Keep().SaveAtIntervals(1h);
  loop.Advance(3h);
  EXPECT_EQ(document.begun, 1);
  EXPECT_EQ(keeper->State(), "not saved yet, saving since 08:36:13");
  loop.Advance(30min);
  EXPECT_EQ(document.ended, 1);
  EXPECT_EQ(document.begun, 2);
  loop.Advance(150min);
  EXPECT_EQ(document.begun, 3);
}

TEST_F(SlowKeeper, SavesAtItsIntervalsWhereASaveIsDoneInTime) {
  document.takes = 1min;
  Keep().SaveAtIntervals(1h);
  loop.Advance(3h + 1min);
  EXPECT_EQ(document.begun, 3);
  EXPECT_EQ(document.ended, 3);
  EXPECT_FALSE(keeper->IsSaving());
}

TEST_F(SlowKeeper, WaitsForTheLastSaveAndTellsOfIt) {
  document.takes = 25s;
  loop.SkipWaits();
  EXPECT_EQ(Keep().SaveAtEnd(), "/day/book.xlsx");
  EXPECT_EQ(document.ended, 1);
  const std::string line = "Saving book.xlsx since 08:36:13";
  EXPECT_THAT(told, ElementsAre(line, line, line)) << "after 1, 11 and 21 seconds";
}

TEST_F(SlowKeeper, TellsNothingOfALastSaveThatIsQuick) {
  document.takes = 900ms;
  loop.SkipWaits();
  EXPECT_EQ(Keep().SaveAtEnd(), "/day/book.xlsx");
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(SlowKeeper, WaitsForASaveThatIsUnderWayBeforeTheLastOne) {
  document.takes = 90min;
  Keep().SaveAtIntervals(1h);
  loop.Advance(1h);
  loop.SkipWaits();
  EXPECT_EQ(keeper->SaveAtEnd(), "/day/book.xlsx");
  EXPECT_EQ(document.begun, 2);
  EXPECT_EQ(document.ended, 2);
  EXPECT_EQ(document.broken_off, 0);
}

TEST_F(SlowKeeper, WaitsOnWhereSomethingElseOfTheLoopFails) {
  document.takes = 2s;
  loop.SkipWaits();
  loop.StartTimer(1500ms, [] { throw RuntimeError(5, "of something else"); });
  EXPECT_EQ(Keep().SaveAtEnd(), "/day/book.xlsx");
  EXPECT_EQ(document.ended, 1);
}

TEST_F(SlowKeeper, SavesInPlaceWhereItCannotBeDoneBeside) {
  document.can_be_saved_beside = false;
  Keep().SaveAtIntervals(1h);
  loop.Advance(1h);
  EXPECT_EQ(document.saved_in_place, 1);
  EXPECT_EQ(keeper->State(), "saved 08:36:13");
  EXPECT_EQ(keeper->SaveAtEnd(), "/day/book.xlsx");
  EXPECT_EQ(document.saved_in_place, 2);
}

TEST_F(SlowKeeper, SavesInPlaceWhereThatIsWantedAndForATwentiethOfTheTimeAtMost) {
  document.in_place_takes = 20ms;
  Keep(app::WorkbookKeeper::Manner::kInPlace).SaveAtIntervals(100ms);
  loop.Advance(100ms);
  EXPECT_EQ(document.saved_in_place, 1);
  EXPECT_EQ(document.begun, 0);
  EXPECT_GE(loop.NextTimer(), 400ms);
}

}  // namespace
}  // namespace mirelo::testing
