#include "app/child_process.h"

#include <gtest/gtest.h>

#include <csignal>

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

TEST(ChildProcess, SaysWhyItCannotStart) {
  const RuntimeError error = testing::ErrorOf([] { ChildProcess("/nowhere/quotetracker", {}); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_EQ(error.Description(), "Cannot start /nowhere/quotetracker: No such file or directory");
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
