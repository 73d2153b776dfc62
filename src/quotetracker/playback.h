#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "adapters/poll/poll_loop.h"
#include "quotetracker/session_file.h"
#include "quotetracker/stream_server.h"

namespace mirelo::quotetracker {

// Plays a recorded session to one client: each chunk byte for byte at its time since the client connected,
// whatever the client says, and then closes. A chunk is sent a moment after the one before it even if both
// were recorded in the same instant, so that the client reads them apart.
class Playback : public StreamPeer {
 public:
  // Plays `speed` times as fast as recorded; `speed` is above 0. `complain` gets a message when the file
  // turns out to be damaged, which ends the play. The loop outlives the playback.
  Playback(poll::PollLoop& loop, poll::Descriptor socket, const std::string& path, double speed,
           std::function<void(const std::string& message)> complain, std::function<void()> ended);
  ~Playback() override;

 private:
  using Time = std::chrono::steady_clock::time_point;

  void TakeNext();
  void SendChunk();
  void OnReady(unsigned ready);
  void End();

  poll::PollLoop& loop_;
  poll::Descriptor socket_;
  double speed_;
  std::function<void(const std::string&)> complain_;
  std::function<void()> ended_;
  std::optional<SessionReader> reader_;
  Time began_;
  Time sent_at_{};  // the chunk before
  std::string chunk_;
  std::size_t sent_ = 0;
  poll::PollLoop::Token watch_ = 0;
  poll::PollLoop::Token timer_ = 0;
  bool done_ = false;
};

}  // namespace mirelo::quotetracker
