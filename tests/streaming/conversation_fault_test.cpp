// Conversations that the server breaks off or cuts up, over TCP.

#include <gmock/gmock.h>

#include <string>
#include <tuple>

#include "streaming/conversation.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BrokenOff : public Conversation,
                  public ::testing::WithParamInterface<std::tuple<const char*, ConversationStep>> {
 protected:
  BrokenOff()
      : Conversation(WithFault(std::string(std::get<0>(GetParam())) + "@" + std::get<1>(GetParam()).name)) {}

  const ConversationStep& step = std::get<1>(GetParam());
};

using ByAnEnd = BrokenOff;

TEST_P(ByAnEnd, SaysNothingMoreAndTriesNothingMore) {
  Begin(step.purpose);
  AwaitEnd();
  stream->stop_sub();
  ExpectWhatCameBefore(step);
  EXPECT_FALSE(loop.NextTimer());
}

TEST_P(ByAnEnd, BeginsAnewWhenTheClientConnectsAgain) {
  Begin(step.purpose);
  AwaitEnd();
  server.SetStreamFaults({});
  Begin(step.purpose);
  const bool for_quotes = step.purpose == Status_LEVEL_I_FULL_QUOTE;
  Await([&] { return for_quotes ? symbols.size() == 2 : !processes.empty(); });
  EXPECT_EQ(processes.back(), for_quotes ? 5 : 1);
  EXPECT_EQ(loop.WatchCount(), 1u);
}

INSTANTIATE_TEST_SUITE_P(EachStep, ByAnEnd,
                         ::testing::Combine(::testing::Values("drop", "reset"), ::testing::ValuesIn(kSteps)),
                         [](const auto& test) {
                           return std::get<0>(test.param) + NameOf(std::get<1>(test.param));
                         });

using BySilence = BrokenOff;

TEST_P(BySilence, WaitsUntilTheClientDisconnects) {
  Begin(step.purpose);
  Await([&] { return server.StreamConnections() == 1; });
  AwaitMessages(step.messages);
  ExpectWhatCameBefore(step);
  EXPECT_FALSE(loop.NextTimer());
  EXPECT_EQ(loop.WatchCount(), 1u);
  stream->DisConnect();
  EXPECT_EQ(loop.WatchCount(), 0u);
  Await([&] { return server.StreamConnections() == 0; });
}

INSTANTIATE_TEST_SUITE_P(EachStep, BySilence,
                         ::testing::Combine(::testing::Values("stall"), ::testing::ValuesIn(kSteps)),
                         [](const auto& test) { return NameOf(std::get<1>(test.param)); });

class SourceListInPieces : public Conversation {
 protected:
  SourceListInPieces() : Conversation(WithFault("split@sources")) {}
};

TEST_F(SourceListInPieces, IsStoredWhole) {
  Begin(Status_ENUMSOURCES_L1);
  Await([&] { return !processes.empty(); });
  EXPECT_EQ(status_texts.back(), "Data source list updated successfully");
  EXPECT_THAT(processes, ElementsAre(1));
}

class NobodyThere : public Conversation {};

TEST_F(NobodyThere, ShowsNoMoreThanThatItTried) {
  Setting("SocketPort", 1);  // of no service
  Begin(Status_ENUMSOURCES_L1);
  AwaitEnd();
  EXPECT_THAT(status_texts, ElementsAre("Connection started...", "Connecting to host..."));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
