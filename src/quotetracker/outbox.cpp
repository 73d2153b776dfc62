#include "quotetracker/outbox.h"

#include <algorithm>
#include <utility>

#include "quotetracker/socket.h"

namespace mirelo::quotetracker {
namespace {

constexpr std::int64_t kMostRandomChunk = 300;

}  // namespace

void Outbox::Add(std::string message, Chunking chunking) {
  size_ += message.size();
  if (chunking == Chunking::kWhole) {
    if (!message.empty()) chunks_.push_back({std::move(message), false});
    return;
  }
  for (std::string_view rest = message; !rest.empty();) {
    const std::size_t length = ChunkLength(chunking, message.size(), rest.size());
    chunks_.push_back({std::string(rest.substr(0, length)), true});
    rest.remove_prefix(length);
  }
}

Outbox::State Outbox::Flush(const poll::Descriptor& socket) {
  while (!chunks_.empty()) {
    if (resume_ > std::chrono::steady_clock::now()) return State::kPausing;
    const Chunk& chunk = chunks_.front();
    const Transfer transfer = Send(socket, std::string_view(chunk.bytes).substr(sent_));
    if (transfer.count < 0) return State::kBroken;
    if (transfer.count == 0) return State::kBlocked;
    sent_ += static_cast<std::size_t>(transfer.count);
    size_ -= static_cast<std::size_t>(transfer.count);
    if (sent_ < chunk.bytes.size()) continue;
    if (chunk.pause_behind) resume_ = std::chrono::steady_clock::now() + pause_;
    sent_ = 0;
    chunks_.pop_front();
  }
  return State::kEmpty;
}

std::size_t Outbox::ChunkLength(Chunking chunking, std::size_t message, std::size_t left) {
  switch (chunking) {
    case Chunking::kWhole:
      return left;
    case Chunking::kHalves:
      return std::min(left, (message + 1) / 2);
    case Chunking::kRandom:
      return std::min(left, static_cast<std::size_t>(chance_.Between(1, kMostRandomChunk)));
    case Chunking::kBytes:
      return 1;
  }
  return left;
}

}  // namespace mirelo::quotetracker
