// Conversations that the server breaks off, over TCP.

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "quotetracker/stream_fault.h"
#include "streaming/conversation.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

quotetracker::ServerOptions With(const std::string& fault) {
  quotetracker::ServerOptions options;
  options.stream.faults.push_back(quotetracker::StreamFaultPlan::Parse(fault, 1));
  return options;
}

// A step of the conversation, and what has come of it when the server goes no further.
struct Step {
  const char* name;
  StatusRunQueryQT purpose;
  std::size_t messages;  // that the client has said
  bool connected;        // whether it has said so
  std::vector<std::int16_t> processes;
};
void PrintTo(const Step& step, std::ostream* out) { *out << step.name << " in state " << step.purpose; }

const Step kSteps[] = {
    {"greeting", Status_ENUMSOURCES_L1, 0, false, {}},
    {"greeting", Status_LEVEL_I_FULL_QUOTE, 0, false, {}},
    {"login", Status_ENUMSOURCES_L1, 1, false, {}},
    {"login", Status_LEVEL_I_FULL_QUOTE, 1, false, {}},
    {"sources", Status_ENUMSOURCES_L1, 2, true, {}},
    {"streamer", Status_LEVEL_I_FULL_QUOTE, 2, false, {}},
    {"quotes", Status_LEVEL_I_FULL_QUOTE, 3, false, {5}},
};

std::string NameOf(const Step& step) { return step.name + std::to_string(step.purpose); }

class BrokenOff : public Conversation, public ::testing::WithParamInterface<std::tuple<const char*, Step>> {
 protected:
  BrokenOff()
      : Conversation(With(std::string(std::get<0>(GetParam())) + "@" + std::get<1>(GetParam()).name)) {}

  void ExpectWhatCameBefore(const Step& step) {
    EXPECT_EQ(server.StreamMessages().size(), step.messages);
    std::vector<std::string> texts{"Connection started...", "Connecting to host..."};
    if (step.connected) texts.push_back("Connected");
    EXPECT_EQ(status_texts, texts);
    EXPECT_EQ(processes, step.processes);
    EXPECT_THAT(symbols, IsEmpty());
    EXPECT_THAT(desktop.boxes, IsEmpty());
    EXPECT_TRUE(stream->StartStop());
  }
};

using ByAnEnd = BrokenOff;

TEST_P(ByAnEnd, SaysNothingMoreAndTriesNothingMore) {
  const Step& step = std::get<1>(GetParam());
  Begin(step.purpose);
  AwaitEnd();
  stream->stop_sub();
  ExpectWhatCameBefore(step);
  EXPECT_FALSE(loop.NextTimer());
}

INSTANTIATE_TEST_SUITE_P(EachStep, ByAnEnd,
                         ::testing::Combine(::testing::Values("drop", "reset"), ::testing::ValuesIn(kSteps)),
                         [](const auto& test) {
                           return std::get<0>(test.param) + NameOf(std::get<1>(test.param));
                         });

using BySilence = BrokenOff;

TEST_P(BySilence, WaitsUntilTheClientDisconnects) {
  const Step& step = std::get<1>(GetParam());
  Begin(step.purpose);
  Await([&] { return server.StreamConnections() == 1; });
  AwaitMessages(step.messages);
  ExpectWhatCameBefore(step);
  EXPECT_EQ(loop.WatchCount(), 1u);
  stream->DisConnect();
  EXPECT_EQ(loop.WatchCount(), 0u);
  Await([&] { return server.StreamConnections() == 0; });
}

INSTANTIATE_TEST_SUITE_P(EachStep, BySilence,
                         ::testing::Combine(::testing::Values("stall"), ::testing::ValuesIn(kSteps)),
                         [](const auto& test) { return NameOf(std::get<1>(test.param)); });

class HalfAGreeting : public Conversation {
 protected:
  HalfAGreeting() : Conversation(With("truncate@greeting")) {}
};

TEST_F(HalfAGreeting, IsNoGreeting) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitEnd();
  EXPECT_THAT(server.StreamMessages(), IsEmpty());
  EXPECT_EQ(vault.deciphered, 0);
  EXPECT_THAT(status_texts, ElementsAre("Connection started...", "Connecting to host..."));
}

class HalfASourceList : public Conversation {
 protected:
  HalfASourceList() : Conversation(With("truncate@sources")) {}
};

TEST_F(HalfASourceList, IsNotStored) {
  Begin(Status_ENUMSOURCES_L1);
  AwaitEnd();
  Array<std::string> names;
  EXPECT_FALSE(mGlobal::AppSettings().GetAllKeys("Settings\\QuoteSource\\List", names));
  EXPECT_EQ(status_texts.back(), "Connected");
  EXPECT_THAT(processes, IsEmpty());
}

class SourceListInPieces : public Conversation {
 protected:
  SourceListInPieces() : Conversation(With("split@sources")) {}
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
