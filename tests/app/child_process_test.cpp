#include "app/child_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <optional>
#include <thread>

#include "automation/runtime_error.h"
#include "support/error_number.h"

namespace mirelo::app {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(ChildProcess, HandsOverItsOutputLineByLine) {
  ChildProcess child("/bin/sh", {"-c", "echo one; printf 'two\\nrest'"});
  EXPECT_EQ(child.ReadLine(seconds(10)), "one");
  EXPECT_EQ(child.ReadLine(seconds(10)), "two");
  EXPECT_EQ(child.ReadLine(seconds(10)), std::nullopt);
}

TEST(ChildProcess, GivesUpReadingWhenPatienceRunsOut) {
  ChildProcess child("/bin/sh", {"-c", "exec sleep 60"});
  EXPECT_EQ(child.ReadLine(milliseconds(1)), std::nullopt);
  EXPECT_TRUE(child.IsRunning());
}

TEST(ChildProcess, HandsOverWithoutPatienceWhatHasCome) {
  ChildProcess child("/bin/sh", {"-c", "echo one; exec sleep 60"});
  auto line = child.ReadLine(milliseconds(0));
  for (const auto end = std::chrono::steady_clock::now() + seconds(10);
       !line && std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(milliseconds(1))) {
    line = child.ReadLine(milliseconds(0));
  }
  EXPECT_EQ(line, "one");
  EXPECT_EQ(child.ReadLine(milliseconds(0)), std::nullopt);
}

TEST(ChildProcess, SaysWhyItCannotStart) {
  const RuntimeError error = testing::ErrorOf([] { ChildProcess("/nowhere/quotetracker", {}); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_EQ(error.Description(), "Cannot start /nowhere/quotetracker: No such file or directory");
}

// What the owner ignores and holds back is its own affair.
TEST(ChildProcess, HasTheUsualSignals) {
  std::signal(SIGPIPE, SIG_IGN);
  sigset_t held;
  sigemptyset(&held);
  sigaddset(&held, SIGTERM);
  ::sigprocmask(SIG_BLOCK, &held, nullptr);
  ChildProcess child("/bin/sh", {"-c", "grep -E 'Sig(Ign|Blk)' /proc/self/status"});
  ::sigprocmask(SIG_UNBLOCK, &held, nullptr);
  EXPECT_EQ(child.ReadLine(seconds(10)), "SigBlk:\t0000000000000000");
  const std::string ignored = child.ReadLine(seconds(10)).value();
  const auto mask = std::stoull(ignored.substr(ignored.find('\t') + 1), nullptr, 16);
  EXPECT_EQ(mask >> (SIGPIPE - 1) & 1, 0U) << ignored;
}

TEST(ChildProcess, EndsWithItsOwner) {
  pid_t pid = 0;
  {
    ChildProcess child("/bin/sh", {"-c", "echo $$; exec sleep 60"});
    pid = std::stoi(child.ReadLine(seconds(10)).value());
  }
  EXPECT_EQ(::kill(pid, 0), -1);
}

TEST(ChildProcess, IsKilledWhenItDoesNotListen) {
  pid_t pid = 0;
  {
    ChildProcess child("/bin/sh", {"-c", "trap '' TERM; echo $$; while :; do sleep 1; done"});
    pid = std::stoi(child.ReadLine(seconds(10)).value());
  }
  EXPECT_EQ(::kill(pid, 0), -1);
}

}  // namespace
}  // namespace mirelo::app
