// Whole conversations over TCP.

#include "streaming/conversation.h"

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "automation/ansi.h"
#include "automation/variant.h"
#include "quotetracker/sources.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using ::testing::UnorderedElementsAreArray;

// The list as it is to be stored: of sources of one name the last one stays.
std::map<std::string, std::string> ListedSources() {
  std::map<std::string, std::string> files;
  for (const auto& [file, name] : quotetracker::Level1Sources()) files[AnsiToText(name)] = AnsiToText(file);
  return files;
}

TEST_F(Conversation, ForTheSourceListStoresItAndEndsAsItsDialogDoes) {
  stream->PerformanceFollowingProcess.Subscribe([this](std::int16_t) { stream->DisConnect(); });
  Begin(Status_ENUMSOURCES_L1);
  AwaitEnd();
  EXPECT_THAT(Said(), ElementsAre(kLogin, kAskSources));
  EXPECT_THAT(status_texts, ElementsAre("Connection started...", "Connecting to host...", "Connected",
                                        "Data source list updated successfully"));
  EXPECT_THAT(processes, ElementsAre(1));
  ASSERT_FALSE(ListedSources().empty());
  for (const auto& [name, file] : ListedSources()) EXPECT_EQ(stream->GiveStreamerFile(name), file) << name;
  EXPECT_THAT(desktop.boxes, IsEmpty());
  Await([&] { return server.StreamConnections() == 0; });
}

TEST_F(Conversation, ForQuotesBringsThemUntilTheyAreUnsubscribed) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  Await([&] { return symbols.size() == 2; });
  EXPECT_THAT(symbols, UnorderedElementsAre("MSFT", "IBM"));
  EXPECT_THAT(processes, ElementsAre(5));
  stream->stop_sub();
  AwaitMessages(4);
  EXPECT_THAT(Said(), ElementsAre(kLogin, kChooseStreamer, kSubscribe, kUnsubscribe));
  EXPECT_EQ(loop.WatchCount(), 1u) << "the connection stands";
  stream->DisConnect();
  EXPECT_THAT(status_texts, ElementsAre("Connection started...", "Connecting to host..."));
  Await([&] { return server.StreamConnections() == 0; });
}

TEST_F(Conversation, MayBeHadAgainWithTheSameStream) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitMessages(3);
  stream->DisConnect();
  Begin(Status_ENUMSOURCES_L1);
  Await([&] { return !processes.empty() && processes.back() == 1; });
  EXPECT_THAT(Said(), ElementsAre(kLogin, kChooseStreamer, kSubscribe, kLogin, kAskSources));
}

TEST_F(Conversation, ClosesTheFormerConnectionWhenItIsBegunAnew) {
  Begin(Status_Null);
  AwaitMessages(1);
  Begin(Status_Null);
  AwaitMessages(2);
  EXPECT_EQ(loop.WatchCount(), 1u);
  Await([&] { return server.StreamConnections() == 1; });
}

TEST_F(Conversation, EndsBehindTheLoginWhenNothingIsAsked) {
  Begin(Status_Null);
  Await([&] {
    status_texts.clear();
    stream->RaiseEventTimerProc();
    return status_texts.back() == "Connected";
  });
  EXPECT_THAT(Said(), ElementsAre(kLogin));
  EXPECT_THAT(processes, IsEmpty());
}

TEST_F(Conversation, EndsBehindTheLoginWithoutAStreamerToChoose) {
  stream->st_StreamerFile("");
  Begin(Status_LEVEL_I_FULL_QUOTE);
  Await([&] {
    status_texts.clear();
    stream->RaiseEventTimerProc();
    return status_texts.back() == "Connected";
  });
  EXPECT_THAT(Said(), ElementsAre(kLogin));
  EXPECT_THAT(processes, IsEmpty());
  EXPECT_EQ(loop.WatchCount(), 1u) << "the connection stands";
}

TEST_F(Conversation, BringsTheQuotesOfAllGroupsOfSymbols) {
  const std::vector<std::string> tickers = {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J", "K"};
  stream->arrTickers(VariantArray::OfTexts(tickers));
  Begin(Status_LEVEL_I_FULL_QUOTE);
  Await([&] { return symbols.size() == tickers.size(); });
  EXPECT_THAT(symbols, UnorderedElementsAreArray(tickers));
  EXPECT_EQ(Said().back(),
            "<L1QUOTES><ReqType>SUB</ReqType><Symbols>A,B,C,D</Symbols><Symbols>E,F,G,H,I</Symbols>"
            "<Symbols>J,K</Symbols></L1QUOTES>");
}

TEST_F(Conversation, TellsOfNoQuoteWhenThereAreNoTickers) {
  stream->arrTickers(VariantArray::OfTexts({}));
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitMessages(3);
  EXPECT_EQ(Said().back(), "<L1QUOTES><ReqType>SUB</ReqType><Symbols></Symbols></L1QUOTES>");
  EXPECT_THAT(processes, ElementsAre(5));
  EXPECT_THAT(keys, IsEmpty());
}

// A login of another digest than the server's.
class RefusedLogin : public Conversation {
 protected:
  RefusedLogin() { vault.credentials[MemoryVault::Credential::ApplicationSecret] = "a wrong one"; }
};

TEST_F(RefusedLogin, IsReportedWhenTheSourceListIsWanted) {
  Begin(Status_ENUMSOURCES_L1);
  Await([&] { return status_texts.size() == 3; });
  EXPECT_EQ(status_texts.back(), "Off. Application not authorised");
  EXPECT_THAT(Said(), ElementsAre(kLogin));
  EXPECT_THAT(processes, IsEmpty());
  EXPECT_EQ(loop.WatchCount(), 1u) << "the connection stands";
}

TEST_F(RefusedLogin, EndsTheConversationSilentlyWhenQuotesAreWanted) {
  Begin(Status_LEVEL_I_FULL_QUOTE);
  // The reply shows only to who asks for the stored one.
  Await([&] {
    status_texts.clear();
    stream->RaiseEventTimerProc();
    return status_texts.back() == "Off. Application not authorised";
  });
  EXPECT_THAT(status_texts, ElementsAre("Off. Application not authorised"));
  EXPECT_THAT(Said(), ElementsAre(kLogin));
  EXPECT_THAT(processes, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
