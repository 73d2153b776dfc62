// The office waits, and nothing of ours is on the stack.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "loop/queued_office.h"
#include "support/socket_pair.h"

namespace mirelo {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using testing::SocketPair;

constexpr unsigned kReadyToRead = host::MessageLoop::kRead;

class OfficeWaiting : public ::testing::Test {
 protected:
  ~OfficeWaiting() override {
    loop_.reset();
    WaitUntilLeft(office_);
  }

  std::shared_ptr<QueuedOffice> office_ = std::make_shared<QueuedOffice>();
  std::vector<std::string> failures_;
  std::unique_ptr<calc::OfficeLoop> loop_ =
      std::make_unique<calc::OfficeLoop>(office_, [this](std::exception_ptr failure) {
        try {
          std::rethrow_exception(failure);
        } catch (const std::exception& error) {
          failures_.emplace_back(error.what());
        }
      });
};

TEST_F(OfficeWaiting, TakesStepsForWhatBecomesReady) {
  SocketPair pair;
  std::string read;
  loop_->Watch(pair.near, kReadyToRead, [&](unsigned) { read += pair.Read(); });
  pair.Write("one");
  ASSERT_TRUE(office_->RunUntil([&] { return read == "one"; }));
  pair.Write("two");
  EXPECT_TRUE(office_->RunUntil([&] { return read == "onetwo"; }));
}

TEST_F(OfficeWaiting, FiresTimers) {
  int fired = 0;
  loop_->StartTimer(milliseconds(5), [&] { loop_->StartTimer(milliseconds(5), [&] { ++fired; }); });
  EXPECT_TRUE(office_->RunUntil([&] { return fired == 1; }));
}

TEST_F(OfficeWaiting, PostsOneStepHoweverLongTheOfficeIsBusy) {
  SocketPair pair;
  loop_->Watch(pair.near, kReadyToRead, [&](unsigned) { pair.Read(); });
  loop_->StartTimer(milliseconds(1), [] {});
  pair.Write("x");
  ASSERT_EQ(office_->WaitForPosted(std::chrono::seconds(10)), 1u);
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(office_->Posted(), 1u);
}

TEST_F(OfficeWaiting, PostsNothingWhileNothingIsDue) {
  SocketPair pair;
  loop_->Watch(pair.near, kReadyToRead, [&](unsigned) { pair.Read(); });
  loop_->StartTimer(std::chrono::hours(1), [] {});
  EXPECT_EQ(office_->WaitForPosted(milliseconds(50)), 0u);
}

TEST_F(OfficeWaiting, GoesOnInADialogThatAHandlerOpened) {
  SocketPair pair;
  std::string read;
  bool dialog_closed = false;
  loop_->StartTimer(milliseconds(0), [&] {
    pair.Write("quote");
    dialog_closed = office_->RunUntil([&] { return read == "quote"; });
  });
  loop_->Watch(pair.near, kReadyToRead, [&](unsigned) { read += pair.Read(); });
  ASSERT_TRUE(office_->RunUntil([&] { return !read.empty(); }));
  EXPECT_TRUE(dialog_closed);
}

TEST_F(OfficeWaiting, GivesWhatFailsInAStepToWhoTakesFailures) {
  bool fired = false;
  loop_->StartTimer(milliseconds(0), [] { throw std::runtime_error("no such quote"); });
  loop_->StartTimer(milliseconds(20), [&] { fired = true; });
  ASSERT_TRUE(office_->RunUntil([&] { return fired; }));
  EXPECT_THAT(failures_, ElementsAre("no such quote"));
}

TEST_F(OfficeWaiting, GivesWhatFailsBehindACallThatWaitsToThatCall) {
  loop_->StartTimer(milliseconds(0), [] { throw std::runtime_error("no such quote"); });
  // Posted already, so the step is taken while the call below has the office handle its events.
  ASSERT_EQ(office_->WaitForPosted(std::chrono::seconds(10)), 1u);
  EXPECT_THROW(loop_->RunUntil([] { return false; }), std::runtime_error);
  EXPECT_THAT(failures_, ElementsAre());
}

TEST_F(OfficeWaiting, LeavesTheDialogBehindWhichSomethingFails) {
  bool left = false;
  loop_->StartTimer(milliseconds(0), [] { throw std::runtime_error("no such quote"); });
  EXPECT_THROW(
      loop_->WaitIn([&] { EXPECT_TRUE(office_->RunUntil([&] { return left; })); }, [&] { left = true; }),
      std::runtime_error);
  EXPECT_TRUE(left);
  EXPECT_THAT(failures_, ElementsAre());
}

TEST_F(OfficeWaiting, GivesWhatFailsInACallOfTheOfficesToTheInnermostThatWaits) {
  bool left = false;
  const auto click = [&] {
    loop_->Guard([&] {
      bool inner_left = false;
      EXPECT_THROW(loop_->WaitIn([&] { loop_->Guard([] { throw std::runtime_error("inner"); }); },
                                 [&] { inner_left = true; }),
                   std::runtime_error);
      EXPECT_TRUE(inner_left);
    });
  };
  EXPECT_NO_THROW(loop_->WaitIn(click, [&] { left = true; }));
  EXPECT_FALSE(left);
  loop_->Guard([] { throw std::runtime_error("nobody waits"); });
  EXPECT_THAT(failures_, ElementsAre("nobody waits"));
}

TEST(OfficeLoop, GoesOnWhereWhoTakesFailuresFails) {
  const auto office = std::make_shared<QueuedOffice>();
  {
    calc::OfficeLoop loop(office, [](const std::exception_ptr&) { throw std::runtime_error("no box"); });
    loop.Guard([] { throw std::runtime_error("no such quote"); });
    bool fired = false;
    loop.StartTimer(milliseconds(0), [&] { fired = true; });
    EXPECT_TRUE(office->RunUntil([&] { return fired; }));
  }
  WaitUntilLeft(office);
}

TEST_F(OfficeWaiting, TakesNoStepOfALoopThatIsGone) {
  bool fired = false;
  loop_->StartTimer(milliseconds(0), [&] { fired = true; });
  ASSERT_EQ(office_->WaitForPosted(std::chrono::seconds(10)), 1u);
  loop_.reset();
  office_->HandleEvents();
  EXPECT_FALSE(fired);
}

TEST_F(OfficeWaiting, PutsUpWithAnOfficeThatTakesNoMoreSteps) {
  office_->Close();
  bool fired = false;
  loop_->StartTimer(milliseconds(0), [&] { fired = true; });
  EXPECT_EQ(office_->WaitForPosted(milliseconds(20)), 0u);
  loop_->RunUntil([&] { return fired; });  // which waits by itself
  EXPECT_TRUE(fired);
}

}  // namespace
}  // namespace mirelo
