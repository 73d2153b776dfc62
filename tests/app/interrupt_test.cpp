#include "app/interrupt.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

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

// The second comes as soon as the first has been counted. False where the system has let more time pass than
// one wish takes.
bool RaiseAtOnce(int first, int second) {
  const auto begin = std::chrono::steady_clock::now();
  sigset_t both;
  sigemptyset(&both);
  sigaddset(&both, first);
  sigaddset(&both, second);
  ::pthread_sigmask(SIG_BLOCK, &both, nullptr);
  ::raise(first);
  ::raise(second);
  ::pthread_sigmask(SIG_UNBLOCK, &both, nullptr);
  return std::chrono::steady_clock::now() - begin < milliseconds(20);
}

// As a person does it, who cannot be quicker.
void PressCtrlCOnceMore() {
  std::this_thread::sleep_for(milliseconds(40));
  ::raise(SIGINT);
}

// Nobody else ends what was to be ended then.
TEST(Interrupt, SeesTheSecondCtrlCWhereThatIsWanted) {
  poll::PollLoop loop;
  Interrupt interrupt(loop, Interrupt::Second::kIsCounted);
  int stopped = 0;
  interrupt.Stopped.Subscribe([&] {
    if (++stopped == 1) PressCtrlCOnceMore();
  });
  ::raise(SIGINT);
  EXPECT_FALSE(interrupt.Pause(hours(1)));
  interrupt.Forget();
  EXPECT_FALSE(interrupt.Pause(hours(1)));
  EXPECT_EQ(stopped, 2);
}

TEST(Interrupt, SeesEachOfTwoThatComeBeforeItLooks) {
  poll::PollLoop loop;
  Interrupt interrupt(loop, Interrupt::Second::kIsCounted);
  ::raise(SIGINT);
  PressCtrlCOnceMore();
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(interrupt.Pause(hours(1)));
    interrupt.Forget();
  }
  EXPECT_TRUE(interrupt.Pause(milliseconds(1))) << "there is no third";
}

// Some who send one tell the process and then its group, and the shell and the system both tell of a
// terminal's end.
TEST(Interrupt, TakesOneWishThatIsToldTwiceForOne) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    SCOPED_TRACE(signal);
    poll::PollLoop loop;
    Interrupt interrupt(loop, Interrupt::Second::kIsCounted);
    while (!RaiseAtOnce(signal, signal == SIGINT ? SIGTERM : SIGINT)) {
      while (!interrupt.Pause(milliseconds(40))) interrupt.Forget();
    }
    EXPECT_FALSE(interrupt.Pause(hours(1)));
    ::raise(SIGHUP);
    interrupt.Forget();
    EXPECT_TRUE(interrupt.Pause(milliseconds(40)));
    ::raise(SIGHUP);
    EXPECT_TRUE(interrupt.Pause(milliseconds(1)));
  }
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
        PressCtrlCOnceMore();
      },
      ::testing::KilledBySignal(SIGINT), "");
}

TEST(InterruptDeathTest, TheSecondCtrlCEndsTheProgramThoughItDidNotLookForTheFirst) {
  EXPECT_EXIT(
      {
        poll::PollLoop loop;
        Interrupt interrupt(loop);
        ::raise(SIGINT);
        PressCtrlCOnceMore();
      },
      ::testing::KilledBySignal(SIGINT), "");
}

TEST(InterruptDeathTest, ACallOfTheSystemGoesOnBehindTheFirstCtrlC) {
  EXPECT_EXIT(
      {
        poll::PollLoop loop;
        Interrupt interrupt(loop);
        int ends[2];
        if (::pipe(ends) != 0) std::_Exit(2);
        std::thread peer([&, reader = ::pthread_self()] {
          std::this_thread::sleep_for(milliseconds(20));
          ::pthread_kill(reader, SIGINT);
          std::this_thread::sleep_for(milliseconds(20));
          (void)!::write(ends[1], "x", 1);
        });
        char byte = 0;
        const bool came = ::read(ends[0], &byte, 1) == 1;
        peer.join();
        loop.Yield();
        std::_Exit(came && interrupt.Requested() ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
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
