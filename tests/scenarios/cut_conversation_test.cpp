// Conversations of the stream, cut by the network at every place: each ends as if every message of the server
// had come in a chunk of its own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/array.h"
#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/status_run_query.h"
#include "quotetracker/sources.h"
#include "quotetracker/stream_replies.h"
#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/stream_rig.h"
#include "wire/observed_sockets.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;

// What the server says at one time. The client has had the time to answer before it says more.
struct Saying {
  std::string message;
  std::string around;  // behind the message, and of no meaning
};

struct Script {
  const char* name;
  StatusRunQueryQT purpose;
  std::vector<Saying> sayings;
};

void PrintTo(const Script& script, std::ostream* out) { *out << script.name; }

std::string Quote(const char* kind, const char* symbol, double last) {
  return Level1Wire(kind).Symbol(symbol).Last(last);
}

std::vector<Saying> With(std::vector<Saying> sayings, const std::string& around) {
  for (Saying& saying : sayings) saying.around = around;
  return sayings;
}

std::vector<Script> AllScripts() {
  using quotetracker::Source;
  const Saying greeting{quotetracker::Greeting("01/20/2011 09:30:15", "4.1.0"), {}};
  const Saying good{quotetracker::LoginReply("0", "Login accepted"), {}};
  const Saying bad{quotetracker::LoginReply("1", "Application not authorised"), {}};
  const Saying streamer{quotetracker::StreamerReply("SWISS.SDF"), {}};
  const std::vector<Source> names{{"A.SDF", "S1 Street"}, {"B.SDF", "LOOK<OK> HO"}, {"C.SDF", " ES - HT"}};
  const Saying list{quotetracker::SourcesReply("L1", names), {}};
  const std::vector<Saying> records{
      {Quote("S1", "XLOW", 1), {}}, {Quote("HO", "OK<CONNECT>", 2), {}}, {Quote("L1", "L1", 3), {}}};
  const auto conversation = [&](std::vector<Saying> sayings) {
    sayings.insert(sayings.end(), records.begin(), records.end());
    return sayings;
  };
  const std::vector<Saying> odd{
      {"OK 0001 <connect>QT</connect><ServerTime>09:30</ServerTime> <serverversion>4</serverversion>", {}},
      {"LO 0002 HELLO <statusdesc>fine\r\n</statusdesc> <statuscode>0</statuscode>", {}},
      {"OK 0003 BOOK <streamer>SWISS.SDF</streamer>", {}}};
  const std::vector<Saying> terse{{"OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>", {}},
                                  {"LO<STATUSCODE>0</STATUSCODE>", {}},
                                  {"OK<STREAMER>SWISS.SDF</STREAMER>", {}}};
  const std::vector<Saying> repeating{
      {"OK<CONNECT><SERVERTIME>1:2</SERVERTIME><SERVERTIME>3:4</SERVERTIME></CONNECT>",
       "<CONNECT>x</CONNECT>"},
      {"LO<STATUSCODE>0</STATUSCODE><STATUSCODE>1</STATUSCODE><STATUSDESC>a</STATUSDESC>",
       "<STATUSDESC>b</STATUSDESC>"},
      {"OK<STREAMER>A.SDF</STREAMER>", "<STREAMER>B.SDF</STREAMER>"}};
  const std::vector<Saying> quotes = conversation({greeting, good, streamer});
  std::vector<Saying> unasked = quotes;
  unasked[4].around = list.message;
  const std::vector<Saying> sources{greeting, good, list};
  constexpr auto kQuotes = Status_LEVEL_I_FULL_QUOTE;
  constexpr auto kSources = Status_ENUMSOURCES_L1;
  return {
      {"Quotes", kQuotes, quotes},
      {"Sources", kSources, sources},
      {"Nothing", Status_Null, {greeting, good}},
      {"QuotesRefused", kQuotes, {greeting, bad}},
      {"SourcesRefused", kSources, {greeting, bad}},
      {"RefusedInOtherWords", kSources, {greeting, {"LO<ERROR>go away</ERROR>", {}}}},
      {"QuotesAfterALoginAgain", kQuotes, conversation({greeting, good, streamer, greeting, good, streamer})},
      {"OddWords", kQuotes, conversation(odd)},
      {"OddWordsForSources", kSources, {odd[0], odd[1], list}},
      {"FewWords", kQuotes, conversation(terse)},
      {"RepeatedTags", kQuotes, conversation(repeating)},
      {"LineEndsBehindMessages", kQuotes, With(quotes, "\r\n")},
      {"EndMarksBehindMessages", kSources, With(sources, "\xFF")},
      {"WordsBehindMessages", kQuotes, With(conversation(odd), " that's all ")},
      {"TagsBehindMessages", kSources, With(sources, "<MORE>1</MORE></LOGIN>")},
      {"AnswersToTheSubscription", kQuotes,
       conversation({greeting, good, streamer, {"OK<SUBSCRIBED>2</SUBSCRIBED>", {}}})},
      {"StrayListsOfSources", kQuotes, With(quotes, "ES?")},
      {"AListOfSourcesThatNobodyAskedFor", kQuotes, unasked},
      {"StrayLetters", kQuotes, With(quotes, "S1?")},
  };
}

// Of all scripts, or of those in which the server need not wait for the client, as it must for a request.
std::vector<Script> Scripts(bool need_no_answers) {
  std::vector<Script> scripts = AllScripts();
  std::erase_if(scripts, [&](const Script& script) {
    return need_no_answers && script.purpose == Status_ENUMSOURCES_L1;
  });
  return scripts;
}

// All that a conversation leaves behind.
struct Outcome {
  std::vector<std::string> sent;
  std::vector<std::string> events;
  std::vector<std::string> quotes;
  std::map<std::string, std::string> sources;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << ::testing::PrintToString(outcome.sent) << ::testing::PrintToString(outcome.events)
       << ::testing::PrintToString(outcome.quotes) << ::testing::PrintToString(outcome.sources);
}

struct WithLoop {
  ManualLoop loop;
};

class Played : private WithLoop, private StreamRig {
 public:
  explicit Played(StatusRunQueryQT purpose, bool aligned) : StreamRig(loop) {
    using Credential = MemoryVault::Credential;
    vault.credentials = {{Credential::ApplicationName, "name"}, {Credential::ApplicationSecret, "secret"}};
    if (aligned) host.Use(observed_);
    facade->StatusRunWorkQT(purpose);
    mGlobal::SetStreamingObject(stream);
    stream->arrTickers(VariantArray::OfTexts({"MSFT", "IBM"}));
    stream->st_StreamerFile("SWISS.SDF");
    stream->StopEndlessWalks(true);
    stream->OnStatusText.Subscribe([this](const std::string& text) { outcome_.events.push_back(text); });
    stream->PerformanceFollowingProcess.Subscribe(
        [this](std::int16_t process) { outcome_.events.push_back(std::to_string(process)); });
    stream->QTDatas.Subscribe([this] { TakeQuotes(); });
    stream->connect();
  }

  void Say(std::string_view bytes) {
    try {
      Deliver(bytes);
    } catch (const RuntimeError& error) {
      outcome_.events.push_back(error.Description());
    }
  }
  void Wait(std::chrono::milliseconds time) { loop.Advance(time); }

  Outcome End() {
    Wait(1min);
    outcome_.sent = Sent();
    Array<std::string> names;
    auto& settings = mGlobal::AppSettings();
    settings.GetAllKeys(kList, names);
    if (names.IsAllocated()) {
      for (const auto& name : names) outcome_.sources[name] = settings.GetSetting(kList, name, "").ToText();
    }
    EXPECT_TRUE(desktop.boxes.empty());
    return outcome_;
  }

 private:
  static constexpr const char* kList = "Settings\\QuoteSource\\List";

  void TakeQuotes() {
    for (const auto& quote : Take()) {
      outcome_.quotes.push_back(quote->NameID() + " " + quote->Symbol() + " " +
                                std::to_string(quote->Last_Price()) + " " + std::to_string(quote->Volume()) +
                                " " + quote->Date_Time());
    }
  }

  wire::ObservedSockets observed_{sockets, loop};
  Outcome outcome_;
};

// The time in which a client that asks for sources has asked.
constexpr auto kAnswered = 100ms;

// Each message in a chunk of its own, as the stream class wants them.
Outcome Whole(const Script& script) {
  Played played(script.purpose, false);
  for (const Saying& saying : script.sayings) {
    played.Say(saying.message);
    played.Wait(kAnswered);
  }
  return played.End();
}

// In two chunks where the cut lies, else one for each saying.
Outcome Cut(const Script& script, std::size_t cut) {
  Played played(script.purpose, true);
  std::size_t at = 0;
  for (const Saying& saying : script.sayings) {
    const std::string bytes = saying.message + saying.around;
    if (cut > at && cut < at + bytes.size()) {
      played.Say(std::string_view(bytes).substr(0, cut - at));
      played.Say(std::string_view(bytes).substr(cut - at));
    } else {
      played.Say(bytes);
    }
    played.Wait(kAnswered);
    at += bytes.size();
  }
  return played.End();
}

Outcome InSingleBytes(const Script& script) {
  Played played(script.purpose, true);
  for (const Saying& saying : script.sayings) {
    for (const char byte : saying.message + saying.around) played.Say({&byte, 1});
    played.Wait(kAnswered);
  }
  return played.End();
}

// Without pauses: the server does not wait for answers. Cut in two, or nowhere with a cut of 0.
Outcome InOneGo(const Script& script, std::size_t cut) {
  std::string bytes;
  for (const Saying& saying : script.sayings) bytes += saying.message + saying.around;
  Played played(script.purpose, true);
  played.Say(std::string_view(bytes).substr(0, cut));
  played.Say(std::string_view(bytes).substr(cut));
  return played.End();
}

class CutConversation : public ::testing::TestWithParam<Script> {
 protected:
  std::size_t Size() const {
    std::size_t size = 0;
    for (const Saying& saying : GetParam().sayings) size += saying.message.size() + saying.around.size();
    return size;
  }
  // How many of the cuts end in another way, the first of them shown.
  template <class Play>
  int Differing(Play&& play) const {
    const Outcome expected = Whole(GetParam());
    int differing = 0;
    for (std::size_t cut = 0; cut < Size(); ++cut) {
      const Outcome outcome = play(GetParam(), cut);
      if (outcome == expected) continue;
      if (differing++ > 0) continue;
      EXPECT_EQ(outcome, expected) << "cut at " << cut;
    }
    return differing;
  }
};

TEST_P(CutConversation, EndsTheSameWhereverItIsCut) { EXPECT_EQ(Differing(Cut), 0) << "of " << Size(); }

TEST_P(CutConversation, EndsTheSameInSingleBytes) { EXPECT_EQ(InSingleBytes(GetParam()), Whole(GetParam())); }

class HastyServer : public CutConversation {};

TEST_P(HastyServer, EndsItsConversationTheSameWhereverItIsCut) {
  EXPECT_EQ(Differing(InOneGo), 0) << "of " << Size();
}

const auto kName = [](const auto& script) { return std::string(script.param.name); };
INSTANTIATE_TEST_SUITE_P(Each, CutConversation, ::testing::ValuesIn(Scripts(false)), kName);
INSTANTIATE_TEST_SUITE_P(Each, HastyServer, ::testing::ValuesIn(Scripts(true)), kName);

}  // namespace
}  // namespace mirelo::testing
