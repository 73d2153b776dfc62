#include "app/interrupt.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

#include "adapters/poll/poll_loop.h"

namespace mirelo::app {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

TEST(Interrupt, LetsAPausePass) {
  poll::PollLoop loop;
  Interrupt interrupt(loop);
  EXPECT_TRUE(interrupt.Pause(milliseconds(1)));
  EXPECT_FALSE(interrupt.Requested());
}

TEST(Interrupt, EndsAPauseOnCtrlC) {
  poll::PollLoop loop;
  Interrupt interrupt(loop);
  loop.StartTimer(milliseconds(1), [] { ::raise(SIGINT); });
  EXPECT_FALSE(interrupt.Pause(hours(1)));
  EXPECT_TRUE(interrupt.Requested());
}

TEST(Interrupt, EndsAPauseOnATerminationAndOnTheEndOfTheTerminal) {
  for (const int signal : {SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    poll::PollLoop loop;
    Interrupt interrupt(loop);
    loop.StartTimer(milliseconds(1), [signal] { ::raise(signal); });
    EXPECT_FALSE(interrupt.Pause(hours(1)));
  }
}

// However soon it comes: nobody else ends what was to be ended then.
TEST(Interrupt, SeesTheSecondCtrlCWhereThatIsWanted) {
  poll::PollLoop loop;
  Interrupt interrupt(loop, Interrupt::Second::kIsSeen);
  int stopped = 0;
  interrupt.Stopped.Subscribe([&] {
    if (++stopped == 1) ::raise(SIGINT);
  });
  ::raise(SIGINT);
  EXPECT_FALSE(interrupt.Pause(hours(1)));
  interrupt.Forget();
  EXPECT_FALSE(interrupt.Pause(hours(1)));
  EXPECT_EQ(stopped, 2);
}

// As nohup and scripts start programs. Each in a process of its own: what is ignored stays so.
TEST(InterruptDeathTest, WhatTheProgramWasToldToIgnoreStopsNothing) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    EXPECT_EXIT(
        {
          std::signal(signal, SIG_IGN);
          poll::PollLoop loop;
          Interrupt interrupt(loop);
          ::raise(signal);
          const bool passed = interrupt.Pause(milliseconds(1));
          ::raise(signal);
          std::_Exit(passed && !interrupt.Requested() ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
  }
}

TEST(InterruptDeathTest, TheOthersStopItAllTheSame) {
  EXPECT_EXIT(
      {
        std::signal(SIGHUP, SIG_IGN);
        poll::PollLoop loop;
        Interrupt interrupt(loop);
        loop.StartTimer(milliseconds(1), [] { ::raise(SIGTERM); });
        std::_Exit(interrupt.Pause(hours(1)) ? 1 : 0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST(InterruptDeathTest, TheSecondCtrlCEndsTheProgramAtOnce) {
  EXPECT_EXIT(
      {
        poll::PollLoop loop;
        Interrupt interrupt(loop);
        ::raise(SIGINT);
        loop.Yield();
        ::raise(SIGINT);
      },
      ::testing::KilledBySignal(SIGINT), "");
}

TEST(InterruptDeathTest, AfterItsLifeSignalsAreNotCaught) {
  EXPECT_EXIT(
      {
        poll::PollLoop loop;
        { Interrupt interrupt(loop); }
        ::raise(SIGTERM);
      },
      ::testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace mirelo::app
