#include "adapters/poll/name_resolver.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "adapters/poll/poll_winsock_library.h"
#include "poll/client.h"

namespace mirelo::poll {
namespace {

using Answer = NameResolver::Answer;

Answer AnswerWith(const std::string& text) { return {std::nullopt, text}; }

TEST(NameResolver, AsksOnAThreadOfItsOwnAndAnswersOnTheLoops) {
  PollLoop loop;
  std::thread::id asked_on, answered_on;
  const auto resolver = std::make_shared<NameResolver>(loop, [&](const std::string& name) {
    asked_on = std::this_thread::get_id();
    return AnswerWith("answer to " + name);
  });
  std::string answer;
  resolver->Resolve("a", [&](const Answer& found) {
    answered_on = std::this_thread::get_id();
    answer = found.error;
  });
  EXPECT_EQ(answer, "") << "never from inside the call";
  loop.RunUntil([&] { return !answer.empty(); });
  EXPECT_EQ(answer, "answer to a");
  EXPECT_EQ(answered_on, std::this_thread::get_id());
  EXPECT_NE(asked_on, answered_on);
}

TEST(NameResolver, KeepsTheLoopRunningMeanwhile) {
  PollLoop loop;
  std::promise<void> gate;
  const auto resolver = std::make_shared<NameResolver>(loop, [&](const std::string&) {
    gate.get_future().wait();
    return AnswerWith("late");
  });
  std::string answer;
  bool timer_fired = false;
  resolver->Resolve("slow", [&](const Answer& found) { answer = found.error; });
  loop.StartTimer(PollLoop::Milliseconds(0), [&] { timer_fired = true; });
  loop.RunUntil([&] { return timer_fired; });
  EXPECT_EQ(answer, "");
  gate.set_value();
  loop.RunUntil([&] { return !answer.empty(); });
}

TEST(NameResolver, AnswersInTheOrderOfTheQuestionsThoughAReceiverThrows) {
  PollLoop loop;
  const auto resolver = std::make_shared<NameResolver>(loop, AnswerWith);
  std::vector<std::string> answers;
  for (const std::string name : {"a", "b", "c"}) {
    resolver->Resolve(name, [&](const Answer& found) {
      answers.push_back(found.error);
      if (found.error == "b") throw std::runtime_error("b");
    });
  }
  EXPECT_THROW(loop.RunUntil([&] { return answers.size() == 3; }), std::runtime_error);
  loop.RunUntil([&] { return answers.size() == 3; });
  EXPECT_EQ(answers, (std::vector<std::string>{"a", "b", "c"}));
}

TEST(NameResolver, AnswersNoLongerWhatWasCancelled) {
  PollLoop loop;
  std::promise<void> asked, gate;
  std::vector<std::string> names;
  const auto resolver = std::make_shared<NameResolver>(loop, [&](const std::string& name) {
    names.push_back(name);
    if (name == "under way") {
      asked.set_value();
      gate.get_future().wait();
    }
    return AnswerWith(name);
  });
  std::vector<std::string> answers;
  const auto note = [&](const Answer& found) { answers.push_back(found.error); };
  const auto under_way = resolver->Resolve("under way", note);
  const auto waiting = resolver->Resolve("waiting", note);
  asked.get_future().wait();
  resolver->Cancel(under_way);
  resolver->Cancel(waiting);
  resolver->Cancel(waiting);
  EXPECT_EQ(loop.WatchCount(), 0u) << "nothing is due any more";
  resolver->Resolve("last", note);
  gate.set_value();
  loop.RunUntil([&] { return !answers.empty(); });
  EXPECT_EQ(answers, std::vector<std::string>{"last"});
  EXPECT_EQ(names, (std::vector<std::string>{"under way", "last"})) << "what still waited is not asked";
}

TEST(NameResolver, IsWatchedOnlyWhileAnAnswerIsDue) {
  PollLoop loop;
  const auto resolver = std::make_shared<NameResolver>(loop, AnswerWith);
  EXPECT_EQ(loop.WatchCount(), 0u);
  for (int round = 0; round < 3; ++round) {
    bool answered = false;
    resolver->Resolve("a", [&](const Answer&) { answered = true; });
    EXPECT_EQ(loop.WatchCount(), 1u);
    loop.RunUntil([&] { return answered; });
    EXPECT_EQ(loop.WatchCount(), 0u);
  }
}

TEST(NameResolver, MayBeLetGoOfByAReceiver) {
  PollLoop loop;
  auto resolver = std::make_shared<NameResolver>(loop, AnswerWith);
  const std::weak_ptr<NameResolver> life = resolver;
  bool answered = false;
  resolver->Resolve("a", [&](const Answer&) {
    resolver.reset();
    answered = true;
  });
  loop.RunUntil([&] { return answered; });
  EXPECT_TRUE(life.expired());
}

TEST(NameResolver, WaitsForALookupUnderWayWhenItGoes) {
  PollLoop loop;
  std::promise<void> asked, gate;
  std::atomic<bool> returned = false;
  auto resolver = std::make_shared<NameResolver>(loop, [&](const std::string&) {
    asked.set_value();
    gate.get_future().wait();
    returned = true;
    return AnswerWith("late");
  });
  resolver->Resolve("slow", [](const Answer&) { ADD_FAILURE() << "the resolver is gone"; });
  asked.get_future().wait();
  std::thread opener([&] { gate.set_value(); });
  resolver.reset();
  EXPECT_TRUE(returned);
  opener.join();
  loop.Yield();
}

TEST(NameResolver, MayGoBeforeItsLastConnection) {
  PollLoop loop;
  std::promise<void> gate;
  auto library = std::make_unique<PollWinsockLibrary>(loop, [&](const std::string&) {
    gate.get_future().wait();
    return AnswerWith("unknown");
  });
  Client client(*library);
  client.Connect("somewhere:80");
  library.reset();
  gate.set_value();
  loop.RunUntil([&] { return client.IsDropped(); });
  EXPECT_EQ(client.sink->reasons, std::vector<std::string>{"somewhere:80: unknown"});
}

TEST(SystemLookup, KnowsTheMachineItself) {
  const Answer answer = NameResolver::AskSystem("localhost");
  ASSERT_TRUE(answer.address.has_value()) << answer.error;
  EXPECT_EQ(answer.address->front(), 127);
}

TEST(SystemLookup, SaysWhyItFoundNothing) {
  const Answer answer = NameResolver::AskSystem("no such name");  // a blank is in no name: nobody is asked
  EXPECT_FALSE(answer.address.has_value());
  EXPECT_FALSE(answer.error.empty());
}

}  // namespace
}  // namespace mirelo::poll
