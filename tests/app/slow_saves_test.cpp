// How a workbook is kept whose saves take their time.

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/workbook/workbook_keeper.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
