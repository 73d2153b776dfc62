#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>

#include "adapters/poll/poll_loop.h"

namespace mirelo::poll {
namespace {

TEST(RunUntil, AsksAgainAfterASignal) {
  static volatile sig_atomic_t signalled;
  signalled = 0;
  struct sigaction action = {}, former = {};
  action.sa_handler = [](int) { signalled = 1; };
  ASSERT_EQ(::sigaction(SIGALRM, &action, &former), 0);
  PollLoop loop;
  // Repeated, since one signal could come between the question and the wait.
  const itimerval often = {{0, 2000}, {0, 2000}};
  const itimerval never = {};
  ::setitimer(ITIMER_REAL, &often, nullptr);
  loop.RunUntil([] { return signalled != 0; });
  ::setitimer(ITIMER_REAL, &never, nullptr);
  ::sigaction(SIGALRM, &former, nullptr);
  EXPECT_EQ(signalled, 1);
}

}  // namespace
}  // namespace mirelo::poll
