#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "adapters/poll/poll_winsock_library.h"
#include "core/status_run_query.h"
#include "quotetracker/server.h"
#include "support/observed_loop.h"
#include "support/stream_rig.h"
#include "support/tested_loop.h"

namespace mirelo::testing {

// What the client says in a conversation, the digest aside.
inline constexpr char kLogin[] =
    "<LOGIN><AppName>MireloDemo</AppName><AppID>MireloDemo</AppID><AppVer>4.1.0</AppVer>"
    "<AppAuth>...</AppAuth></LOGIN>";
inline constexpr char kAskSources[] = "<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>";
inline constexpr char kChooseStreamer[] = "<L1SITE><STREAMER>SWISS.SDF</STREAMER></L1SITE>";
inline constexpr char kSubscribe[] = "<L1QUOTES><ReqType>SUB</ReqType><Symbols>MSFT,IBM</Symbols></L1QUOTES>";
inline constexpr char kUnsubscribe[] = "<L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>";

// A server that commits a fault, as StreamFaultPlan::Parse reads it.
quotetracker::ServerOptions WithFault(const std::string& fault);

// A step of a conversation, and what has come of it when the server goes no further.
struct ConversationStep {
  const char* name;  // as the server's faults name it
  StatusRunQueryQT purpose;
  std::size_t messages;  // that the client has said
  std::size_t reads;     // that take in all the server said; its list of sources is longer than a chunk
  bool connected;        // whether it has reported so
  std::vector<std::int16_t> processes;
};
void PrintTo(const ConversationStep& step, std::ostream* out);
// The step's name and its purpose's number.
std::string NameOf(const ConversationStep& step);
extern const std::vector<ConversationStep> kSteps;

// What a stream's connections need for as long as they live.
struct WithLoop {
  TestedLoop loop;
  ObservedLoop observed{loop};
};

// A stream that speaks with the stand-in for QuoteTracker over TCP; what it tells its owner is recorded. The
// tickers are MSFT and IBM, the streamer SWISS.SDF.
class Conversation : public ::testing::Test, protected WithLoop, protected StreamRig {
 protected:
  explicit Conversation(quotetracker::ServerOptions options = {});

  // Connects for this purpose.
  void Begin(StatusRunQueryQT purpose);

  // Runs the loop until `done`, which may ask the server. A failure after ten seconds.
  void Await(const std::function<bool()>& done);
  void AwaitMessages(std::size_t count);
  // Until the client has no socket any more.
  void AwaitEnd();

  std::vector<std::string> Said() const;

  // Of what the server said up to this step nothing is missing, and nothing more has come.
  void ExpectWhatCameBefore(const ConversationStep& step);

  quotetracker::Server server;
  std::vector<std::string> status_texts;
  std::vector<std::int16_t> processes;
  std::vector<std::string> symbols;  // of the quotes, each once, in the order of their coming
  std::vector<std::string> keys;     // of all quotes that were taken
  std::size_t reads = 0;             // times that the client has read from its socket

 private:
  void Take();

  poll::PollWinsockLibrary library_{observed};
  int ticks_ = 0;
};

}  // namespace mirelo::testing
