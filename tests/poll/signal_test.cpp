#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>

#include <memory>
#include <optional>
#include <string>

#include "adapters/poll/name_resolver.h"
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

TEST(NameResolver, LeavesSignalsToTheLoopsThread) {
  PollLoop loop;
  sigset_t blocked;
  const auto resolver = std::make_shared<NameResolver>(loop, [&](const std::string& name) {
    ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    return NameResolver::Answer{std::nullopt, name};
  });
  bool answered = false;
  resolver->Resolve("a", [&](const NameResolver::Answer&) { answered = true; });
  loop.RunUntil([&] { return answered; });
  EXPECT_EQ(::sigismember(&blocked, SIGINT), 1);
  ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  EXPECT_EQ(::sigismember(&blocked, SIGINT), 0) << "the loop's own thread takes them as before";
}

}  // namespace
}  // namespace mirelo::poll
