#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "quotetracker/login.h"
#include "quotetracker/outbox.h"
#include "quotetracker/quote_source.h"
#include "quotetracker/stream_conversation.h"
#include "quotetracker/stream_server.h"

namespace mirelo::quotetracker {

struct StreamOptions {
  static constexpr double kMaximum = 0;

  Credentials credentials;
  std::string version = "4.1.0";
  double rate =
      10;  // changes a second on one connection; kMaximum sends them as fast as the client takes them
  // The kinds of the batches of changes, in turn. Empty means "L1", "S1", "HO" and "HT"; at the maximum rate
  // it means the first two alone, as batches then run into one another, and a client understands the others
  // only at the beginning of a chunk.
  std::vector<std::string> kinds;
  // How source lists and quotes are cut into chunks. Greeting, login and streamer replies are never cut,
  // since a client reads each of them as one chunk.
  Chunking chunking = Chunking::kWhole;
  std::chrono::microseconds chunk_pause{500};
  std::vector<StreamFaultPlan> faults;
};

// One client's connection: carries the conversation, paces the quotes, cuts chunks and commits the faults.
// What it holds for a client that reads slowly stays small: changes that cannot be sent are left out, and
// with kMostUnsent bytes unsent nothing more is read that would want an answer.
class StreamConnection : public StreamPeer {
 public:
  static constexpr std::size_t kMostUnsent = std::size_t{256} * 1024;

  // `overheard` is called with each message of the client. `faults` and the counter `quotes` (records made)
  // are shared by all connections of the server; `ended` is called once, when the connection has ended. All
  // references outlive the connection.
  StreamConnection(poll::PollLoop& loop, poll::Descriptor socket, QuoteSource& source,
                   const StreamOptions& options, std::vector<StreamFaultPlan>& faults, std::uint64_t& quotes,
                   std::uint64_t seed, std::function<void(std::string_view message)> overheard,
                   std::function<void()> ended);
  ~StreamConnection() override;

 private:
  void OnReady(unsigned ready);
  void Read();
  void Pump();
  void AnswerMessages();
  bool AddRecords();
  bool AddBatch();
  void Say(StreamUnit unit);
  StreamFault NextFault(StreamStep step);
  void StartPace();
  void OnPace();
  void WaitForMore(Outbox::State state, bool has_more);
  void End();

  poll::PollLoop& loop_;
  poll::Descriptor socket_;
  const StreamOptions& options_;
  std::vector<StreamFaultPlan>& faults_;
  std::uint64_t& quotes_;
  Random chance_;
  StreamConversation conversation_;
  Outbox outbox_;
  MessageSplitter messages_;
  std::function<void(std::string_view)> overheard_;
  std::function<void()> ended_;

  poll::PollLoop::Token watch_ = 0;
  poll::PollLoop::Token pace_ = 0;                 // runs while something is subscribed
  poll::PollLoop::Token resume_ = 0;               // runs while the outbox pauses
  std::chrono::steady_clock::time_point paced_{};  // the time up to which changes have been allowed
  double allowance_ = 0;                           // changes that may be sent now
  bool ending_ = false;                            // closes when all is sent
  bool stalled_ = false;                           // says nothing more
  bool done_ = false;
};

}  // namespace mirelo::quotetracker
