#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "adapters/poll/poll_winsock_library.h"
#include "core/status_run_query.h"
#include "quotetracker/server.h"
#include "support/stream_rig.h"

namespace mirelo::testing {

struct WithPollLoop {
  poll::PollLoop loop;
};

// A stream that speaks with the stand-in for QuoteTracker over TCP; what it tells its owner is recorded. The
// tickers are MSFT and IBM, the streamer SWISS.SDF.
class Conversation : public ::testing::Test, protected WithPollLoop, protected StreamRig {
 protected:
  explicit Conversation(quotetracker::ServerOptions options = {});

  // Connects for this purpose.
  void Begin(StatusRunQueryQT purpose);

  // Runs the loop until `done`, which may ask the server. A failure after ten seconds.
  void Await(const std::function<bool()>& done);
  void AwaitMessages(std::size_t count);
  // Until the client has no socket any more.
  void AwaitEnd();

  // What the client has said, the digest aside.
  std::vector<std::string> Said() const;

  quotetracker::Server server;
  std::vector<std::string> status_texts;
  std::vector<std::int16_t> processes;
  std::vector<std::string> symbols;  // of the quotes, each once, in the order of their coming

 private:
  void Take();

  poll::PollWinsockLibrary library_{loop};
  int ticks_ = 0;
};

}  // namespace mirelo::testing
