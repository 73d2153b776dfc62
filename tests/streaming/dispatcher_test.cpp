#include <cstddef>
#include <string>

#include "core/status_run_query.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Dispatcher : public StreamTest {
 protected:
  Dispatcher() {
    vault.credentials = {{MemoryVault::Credential::ApplicationName, "Rows"},
                         {MemoryVault::Credential::ApplicationSecret, "secret"}};
    stream->connect();
    status_texts.clear();
  }
  // A record whose tail is still to come: the quote shows that the tail was merged.
  void DeliverHead() { Deliver(Record().substr(0, 10)); }
  static std::string Record() { return Level1Wire("S1").Symbol("MSFT").Last(28.35); }
};

TEST_F(Dispatcher, IgnoresAValueThatIsNoArray) {
  sockets.Newest().DeliverNothing();
  EXPECT_EQ(events, 0);
}

TEST_F(Dispatcher, DropsChunksOfOneOrTwoBytes) {
  for (const char* chunk : {"", "S", "S1", "L1", "OK", "LO", "ES"}) {
    SCOPED_TRACE(chunk);
    EXPECT_EQ(ErrorNumberOf(chunk), 0);
    EXPECT_THAT(TakeSymbols(), IsEmpty());
    Deliver(Quote(std::string("behind ") + chunk));
    EXPECT_THAT(TakeSymbols(), ElementsAre(std::string("behind ") + chunk));
  }
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(Dispatcher, DropsChunksOfOneOrTwoBytesBehindAPendingTailAndKeepsTheTail) {
  DeliverHead();
  Deliver("x");
  Deliver("xy");
  Deliver(Record().substr(10));
  EXPECT_THAT(TakeSymbols(), ElementsAre("MSFT"));
}

TEST_F(Dispatcher, KeepsATailOverASecondConnection) {
  DeliverHead();
  stream->connect();
  Deliver(Record().substr(10));
  EXPECT_THAT(TakeSymbols(), ElementsAre("MSFT"));
}

TEST_F(Dispatcher, DecodesTheFourKindsOfQuoteRecords) {
  for (const char* kind : {"S1", "L1", "HO", "HT"}) {
    SCOPED_TRACE(kind);
    Deliver(Level1Wire(kind).Symbol(kind).Last(1));
    const auto quotes = Take();
    ASSERT_EQ(quotes.size(), 1u);
    EXPECT_EQ(quotes[0]->Symbol(), kind);
  }
}

TEST_F(Dispatcher, TellsKindsByTheirExactBytes) {
  for (const char* kind : {"s1", "l1", "ho", "S2", "H1"}) Deliver(Level1Wire(kind).Symbol("X").Last(1));
  EXPECT_EQ(events, 0);
  Deliver("ok <connect>x</connect><servertime>1</servertime>");
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(Dispatcher, DropsAChunkOfAnUnknownKindWithoutAPendingTail) {
  Deliver("?? what is this");
  EXPECT_EQ(events, 0);
  EXPECT_THAT(status_texts, IsEmpty());
}

TEST_F(Dispatcher, DoesNothingForAnAcceptanceOfNothing) {
  Deliver("OK");
  Deliver("OK welcome");
  Deliver("OK <CONNECT></CONNECT><STREAMER></STREAMER>");
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_THAT(processes, IsEmpty());
}

TEST_F(Dispatcher, AnswersAGreetingWithTheLogin) {
  Deliver("OK<CONNECT>x</CONNECT><SERVERTIME>09:30</SERVERTIME>");
  ASSERT_EQ(Sent().size(), 1u);
  EXPECT_TRUE(Sent()[0].starts_with("<LOGIN>"));
}

TEST_F(Dispatcher, ReadsTheStreamerOnlyWhenThereIsNoGreeting) {
  stream->arrTickers(VariantArray::OfTexts({"MSFT"}));
  Deliver("OK<CONNECT>x</CONNECT><SERVERTIME>09:30</SERVERTIME><STREAMER>y</STREAMER>");
  EXPECT_THAT(processes, IsEmpty());
  Deliver("OK<CONNECT></CONNECT><STREAMER>y</STREAMER>");
  EXPECT_THAT(processes, ElementsAre(5));
}

TEST_F(Dispatcher, SubscribesWhenTheStreamerWasAcceptedAndThenTellsTheOwner) {
  stream->arrTickers(VariantArray::OfTexts({"MSFT"}));
  std::size_t sent_before_process = 0;
  stream->PerformanceFollowingProcess.Subscribe([&](std::int16_t) { sent_before_process = Sent().size(); });
  Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  EXPECT_THAT(Sent(), ElementsAre("<L1QUOTES><ReqType>SUB</ReqType><Symbols>MSFT</Symbols></L1QUOTES>\xFF"));
  EXPECT_EQ(sent_before_process, 1u);
  EXPECT_THAT(processes, ElementsAre(5));
}

TEST_F(Dispatcher, RaisesAnErrorForAnAcceptedStreamerWithoutTickers) {
  EXPECT_EQ(ErrorNumberOf("OK<STREAMER>SWISS.SDF</STREAMER>"), 13);
  EXPECT_THAT(processes, IsEmpty());
}

TEST_F(Dispatcher, NeverTellsTheOwnerToLetGo) {
  stream->arrTickers(VariantArray::OfTexts({"MSFT"}));
  for (const StatusRunQueryQT state : {Status_Null, Status_ENUMSOURCES_L1, Status_LEVEL_I_FULL_QUOTE}) {
    facade->StatusRunWorkQT(state);
    for (const char* chunk :
         {"OK<CONNECT>x</CONNECT>", "OK<STREAMER>x</STREAMER>", "LO<STATUSCODE>0</STATUSCODE>",
          "LO<STATUSCODE>1</STATUSCODE>", "ES</SOURCES><SOURCES>",
          "ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE></SOURCE></SOURCES>"}) {
      Deliver(chunk);
      stream->RaiseEventTimerProc();
    }
  }
  stream->DisConnect();
  EXPECT_THAT(processes, ElementsAre(5, 1, 5, 1, 5, 1)) << "a 0 would do that";
}

class LoginResult : public Dispatcher {};

TEST_F(LoginResult, IsOnlyStoredWhenNothingIsAsked) {
  facade->StatusRunWorkQT(Status_Null);
  Deliver("LO<STATUSCODE>0</STATUSCODE>");
  EXPECT_FALSE(loop.NextTimer());
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_THAT(status_texts, IsEmpty());
  stream->RaiseEventTimerProc();
  EXPECT_THAT(status_texts, ElementsAre("Connected"));
}

TEST_F(LoginResult, StartsTheTimerWhenSourcesAreWantedWhateverTheCode) {
  for (const char* code : {"0", "1", "2", "3", "other", ""}) {
    SCOPED_TRACE(code);
    facade->StatusRunWorkQT(Status_ENUMSOURCES_L1);
    Deliver(std::string("LO<STATUSCODE>") + code + "</STATUSCODE>");
    EXPECT_EQ(loop.NextTimer(), host::MessageLoop::Milliseconds(100));
    EXPECT_THAT(Sent(), IsEmpty());
    loop.Advance(host::MessageLoop::Milliseconds(100));  // nobody is set for the timer
  }
}

TEST_F(LoginResult, ChoosesTheStreamerAtOnceWhenQuotesAreWantedAndTheCodeIsZero) {
  facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
  stream->st_StreamerFile("SWISS.SDF");
  Deliver("LO<STATUSCODE>0</STATUSCODE>");
  EXPECT_THAT(Sent(), ElementsAre("<L1SITE><STREAMER>SWISS.SDF</STREAMER></L1SITE>\xFF"));
  EXPECT_FALSE(loop.NextTimer());
}

TEST_F(LoginResult, EndsSilentlyWithoutAStreamerToChoose) {
  facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
  Deliver("LO<STATUSCODE>0</STATUSCODE>");
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_FALSE(loop.NextTimer());
  EXPECT_THAT(status_texts, IsEmpty());
}

TEST_F(LoginResult, EndsSilentlyWithAnyOtherCodeWhenQuotesAreWanted) {
  facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
  stream->st_StreamerFile("SWISS.SDF");
  for (const char* code : {"1", "2", "3", "00", " 0", ""}) {
    Deliver(std::string("LO<STATUSCODE>") + code + "</STATUSCODE><STATUSDESC>no</STATUSDESC>");
  }
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_THAT(status_texts, IsEmpty());
  EXPECT_THAT(processes, IsEmpty());
}

TEST_F(LoginResult, IsAnErrorWithoutAnOwner) {
  stream->Owner(nullptr);
  EXPECT_EQ(ErrorNumberOf("LO<STATUSCODE>0</STATUSCODE>"), 91);
}

class SourceListReply : public Dispatcher {
 protected:
  static std::string List() {
    return "ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>"
           "<SOURCE><FILENAME>A.SDF</FILENAME><NAME>Alpha</NAME></SOURCE></SOURCES>";
  }
};

TEST_F(SourceListReply, IsTakenAtOnceWhenTheChunkHoldsAllOfIt) {
  Deliver(List());
  EXPECT_THAT(status_texts, ElementsAre("Data source list updated successfully"));
  EXPECT_THAT(processes, ElementsAre(1));
}

TEST_F(SourceListReply, IsGatheredOverChunksWhereverItIsCut) {
  // A cut behind fewer than three bytes loses them; a cut inside the closing tag is the next test's.
  const std::size_t last_cut = List().size() - std::string("</SOURCES>").size();
  for (std::size_t cut = 3; cut <= last_cut; ++cut) {
    if (List().substr(cut, 2) == "ES") continue;  // such a rest is a list of its own as well
    SCOPED_TRACE(cut);
    processes.clear();
    Deliver(List().substr(0, cut));
    EXPECT_THAT(processes, IsEmpty());
    Deliver(List().substr(cut));
    EXPECT_THAT(processes, ElementsAre(1));
  }
}

TEST_F(SourceListReply, IsNotEndedByAClosingTagThatIsSplitBetweenChunks) {
  const std::size_t cut = List().size() - 4;
  Deliver(List().substr(0, cut));
  Deliver(List().substr(cut));
  EXPECT_THAT(processes, IsEmpty());
  Deliver("</sources>");
  EXPECT_THAT(processes, ElementsAre(1)) << "the first closing tag of the gathered text counts";
}

TEST_F(SourceListReply, GathersWhateverComesMeanwhile) {
  facade->StatusRunWorkQT(Status_ENUMSOURCES_L1);
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>");
  Deliver(Level1Wire().Symbol("MSFT").Last(28.35));
  Deliver("OK<CONNECT>x</CONNECT><SERVERTIME>1</SERVERTIME>");
  Deliver("LO<STATUSCODE>0</STATUSCODE>");
  Deliver("x");
  EXPECT_EQ(events, 0);
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_FALSE(loop.NextTimer());
  Deliver("<SOURCE><FILENAME>A.SDF</FILENAME><NAME>Alpha</NAME></SOURCE></SOURCES>");
  EXPECT_THAT(processes, ElementsAre(1));
}

TEST_F(SourceListReply, DispatchesTheChunkThatEndsTheListLikeAnyOther) {
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE></SOURCE>");
  // It begins as a list of its own, so it is taken once more, by itself.
  Deliver("ES</SOURCES><SOURCES>");
  EXPECT_THAT(status_texts,
              ElementsAre("Data source list updated successfully", "Data source list is not updated"));
}

TEST_F(SourceListReply, DecodesQuotesThatShareTheChunkWithTheEndOfTheList) {
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE></SOURCE>");
  const std::string end = "</SOURCES>";
  Deliver(Level1Wire().Symbol(end).Last(1));
  EXPECT_THAT(processes, ElementsAre(1));
  EXPECT_EQ(events, 1);
}

TEST_F(SourceListReply, IsGivenUpWhenTheListIsAskedForAnew) {
  facade->StatusRunWorkQT(Status_ENUMSOURCES_L1);
  Deliver("LO<STATUSCODE>0</STATUSCODE>");
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>");
  stream->RaiseEventTimerProc();
  Deliver(Record());
  EXPECT_EQ(events, 1) << "quotes are quotes again";
}

TEST_F(SourceListReply, StaysPendingOverASecondConnection) {
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>");
  stream->connect();
  Deliver("<SOURCE><FILENAME>A.SDF</FILENAME><NAME>Alpha</NAME></SOURCE></SOURCES>");
  EXPECT_THAT(processes, ElementsAre(1));
}

TEST_F(SourceListReply, IsFoundInLowerCase) {
  Deliver(
      "ES<sources><sourcetype>l1</sourcetype>"
      "<source><filename>a.sdf</filename><name>Alpha</name></source></sources>");
  EXPECT_THAT(processes, ElementsAre(1));
  EXPECT_EQ(mGlobal::AppSettings().GetSetting("Settings\\QuoteSource\\List", "Alpha", "").ToText(), "a.sdf");
}

}  // namespace
}  // namespace mirelo::testing
