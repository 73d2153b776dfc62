// Conversations in which the server says half of something, or something else, over TCP.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "automation/array.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "streaming/conversation.h"

namespace mirelo::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HalfAGreeting : public Conversation {
 protected:
  HalfAGreeting() : Conversation(WithFault("truncate@greeting")) {}
};

TEST_F(HalfAGreeting, IsNoGreeting) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitEnd();
  EXPECT_THAT(server.StreamMessages(), IsEmpty());
  EXPECT_EQ(vault.deciphered, 0);
  EXPECT_THAT(status_texts, ElementsAre("Connection started...", "Connecting to host..."));
}

class HalfALoginReply : public Conversation {
 protected:
  HalfALoginReply() : Conversation(WithFault("truncate@login")) {}
};

TEST_F(HalfALoginReply, HoldsTheCodeThatIsReported) {
  Begin(Status_ENUMSOURCES_L1);
  Await([&] { return status_texts.size() == 3; });
  EXPECT_EQ(status_texts.back(), "Connected") << "though nobody is there any more";
  AwaitEnd();
  EXPECT_THAT(Said(), ElementsAre(kLogin));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(HalfALoginReply, EndsTheConversationSilentlyWhenQuotesAreWanted) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitEnd();
  EXPECT_THAT(Said(), ElementsAre(kLogin));
  EXPECT_THAT(status_texts, ElementsAre("Connection started...", "Connecting to host..."));
  EXPECT_THAT(processes, IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

class HalfASourceList : public Conversation {
 protected:
  HalfASourceList() : Conversation(WithFault("truncate@sources")) {}
};

TEST_F(HalfASourceList, IsNotStored) {
  Begin(Status_ENUMSOURCES_L1);
  AwaitEnd();
  Array<std::string> names;
  EXPECT_FALSE(mGlobal::AppSettings().GetAllKeys("Settings\\QuoteSource\\List", names));
  EXPECT_EQ(status_texts.back(), "Connected");
  EXPECT_THAT(processes, IsEmpty());
}

class HalfAStreamerReply : public Conversation {
 protected:
  HalfAStreamerReply() : Conversation(WithFault("truncate@streamer")) {}
};

TEST_F(HalfAStreamerReply, SubscribesNothing) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitEnd();
  EXPECT_THAT(Said(), ElementsAre(kLogin, kChooseStreamer));
  EXPECT_THAT(processes, IsEmpty());
}

class HalfAQuote : public Conversation {
 protected:
  HalfAQuote() : Conversation(WithFault("truncate@quotes")) {
    stream->arrTickers(VariantArray::OfTexts({"MSFT"}));
  }
};

TEST_F(HalfAQuote, IsNotPublishedAndDoesNotHarmThoseOfTheNextConversation) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitEnd();
  EXPECT_THAT(keys, IsEmpty());
  EXPECT_THAT(processes, ElementsAre(5));
  server.SetStreamFaults({});
  Begin(Status_LEVEL_I_FULL_QUOTE);
  Await([&] { return !keys.empty(); });
  EXPECT_THAT(symbols, ElementsAre("MSFT"));
}

// Random bytes in the place of what the server says at one step.
class Garbage : public Conversation, public ::testing::WithParamInterface<ConversationStep> {
 protected:
  Garbage() : Conversation(WithFault(std::string("garbage@") + GetParam().name)) {}

  // Says this, as one who knows the server would, and the server answers as it should.
  void Say(const std::string& message) {
    server.SetStreamFaults({});
    stream->SendWinsock(message + "\u00FF");
  }
};

TEST_P(Garbage, IsPassedOverAndTheNextReplyIsHeard) {
  const ConversationStep& step = GetParam();
  Begin(step.purpose);
  // Each reply is read by itself, since the client says something behind each but the last.
  Await([&] { return reads >= step.reads; });
  ExpectWhatCameBefore(step);
  if (step.messages == 0) {
    Say("<LOGIN></LOGIN>");
    Await([&] {
      stream->RaiseEventTimerProc();
      return status_texts.back() == "Off. Login not understood";
    });
    EXPECT_THAT(processes, IsEmpty());
  } else {
    Say(kAskSources);
    Await([&] { return !processes.empty(); });
    EXPECT_THAT(processes, ElementsAre(1));
    EXPECT_EQ(status_texts.back(), "Data source list updated successfully");
  }
  EXPECT_EQ(server.StreamMessages().size(), step.messages + 1);
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(EachStep, Garbage, ::testing::ValuesIn(kSteps.begin(), kSteps.end() - 1),
                         [](const auto& step) { return NameOf(step.param); });

// Each second batch of quotes is damaged. Batches are of S1 records, which no pending tail swallows.
class DamagedQuotes : public Conversation, public ::testing::WithParamInterface<const char*> {
 protected:
  DamagedQuotes() : Conversation(Options()) { stream->StopEndlessWalks(true); }

  static quotetracker::ServerOptions Options() {
    quotetracker::ServerOptions options = WithFault(std::string(GetParam()) + "@quotes:2");
    options.stream.rate = 500;
    options.stream.kinds = {"S1"};
    return options;
  }
  // The decoder's errors leave through the loop.
  void AwaitThroughErrors(const std::function<bool()>& done) {
    for (bool over = false; !over;) {
      try {
        Await(done);
        over = true;
      } catch (const RuntimeError& error) {
        errors.push_back(error.Number());
      }
    }
  }
  std::vector<std::int32_t> errors;
};

TEST_P(DamagedQuotes, DoNotKeepGoodOnesFromComing) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitThroughErrors([&] { return keys.size() >= 40; });
  EXPECT_THAT(errors, Each(::testing::AnyOf(6, 9, cQTStreaming::kEndlessWalk)));
  EXPECT_TRUE(std::ranges::count(symbols, "MSFT") == 1 && std::ranges::count(symbols, "IBM") == 1);
  EXPECT_EQ(loop.WatchCount(), 1u) << "the connection stands";
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(EachDamage, DamagedQuotes,
                         ::testing::Values("garbage", "long-length", "short-length", "zero-length",
                                           "negative-length"),
                         [](const auto& damage) {
                           std::string name = damage.param;
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
}  // namespace mirelo::testing
