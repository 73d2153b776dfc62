// Whole conversations over TCP.

#include "streaming/conversation.h"

#include <gmock/gmock.h>

#include <map>
#include <string>

#include "automation/ansi.h"
#include "quotetracker/sources.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

constexpr char kLogin[] =
    "<LOGIN><AppName>MireloDemo</AppName><AppID>MireloDemo</AppID><AppVer>4.1.0</AppVer>"
    "<AppAuth>...</AppAuth></LOGIN>";
constexpr char kAskSources[] = "<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>";
constexpr char kChooseStreamer[] = "<L1SITE><STREAMER>SWISS.SDF</STREAMER></L1SITE>";
constexpr char kSubscribe[] = "<L1QUOTES><ReqType>SUB</ReqType><Symbols>MSFT,IBM</Symbols></L1QUOTES>";
constexpr char kUnsubscribe[] = "<L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>";

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

class RefusedLogin : public Conversation {
 protected:
  RefusedLogin() { vault.credentials[host::CredentialVault::Credential::ApplicationSecret] = "a wrong one"; }
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
