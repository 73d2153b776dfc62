#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include "adapters/poll/descriptor.h"
#include "quotetracker/random.h"

namespace mirelo::quotetracker {

// How a message is cut into chunks, each of which the receiver should get by one read.
enum class Chunking {
  kWhole,   // one chunk
  kHalves,  // two chunks
  kRandom,  // chunks of 1 to 300 bytes, by chance
  kBytes,   // single bytes
};

// What waits to be sent on a connection, chunk by chunk. Chunks of a message that was cut are sent with a
// pause between them, so that the receiver's reads find them one at a time.
class Outbox {
 public:
  enum class State {
    kEmpty,    // all is sent
    kBlocked,  // the peer takes nothing now; try again when the socket is writable
    kPausing,  // try again at ResumeTime()
    kBroken,   // the peer is gone
  };

  Outbox(std::chrono::microseconds pause, std::uint64_t seed) : pause_(pause), chance_(seed) {}

  void Add(std::string message, Chunking chunking);

  // Sends as much as can be sent now.
  State Flush(const poll::Descriptor& socket);

  std::size_t Size() const { return size_; }  // bytes not yet sent
  std::chrono::steady_clock::time_point ResumeTime() const { return resume_; }

 private:
  struct Chunk {
    std::string bytes;
    bool pause_behind = false;
  };

  std::size_t ChunkLength(Chunking chunking, std::size_t message, std::size_t left);

  std::chrono::microseconds pause_;
  Random chance_;
  std::deque<Chunk> chunks_;
  std::size_t sent_ = 0;  // of the first chunk
  std::size_t size_ = 0;
  std::chrono::steady_clock::time_point resume_{};
};

}  // namespace mirelo::quotetracker
