#include "quotetracker/playback.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "quotetracker/socket.h"

namespace mirelo::quotetracker {
namespace {

using std::chrono::duration;
using std::chrono::duration_cast;
using std::chrono::steady_clock;

constexpr std::size_t kIgnoredReadSize = std::size_t{16} * 1024;
constexpr auto kLeastPause = std::chrono::microseconds(500);

}  // namespace

Playback::Playback(poll::PollLoop& loop, poll::Descriptor socket, const std::string& path, double speed,
                   std::function<void(const std::string&)> complain, std::function<void()> ended)
    : loop_(loop),
      socket_(std::move(socket)),
      speed_(speed),
      complain_(std::move(complain)),
      ended_(std::move(ended)),
      began_(steady_clock::now()) {
  watch_ = loop_.Watch(socket_.Number(), poll::PollLoop::kRead, [this](unsigned ready) { OnReady(ready); });
  try {
    reader_.emplace(path);
  } catch (const std::runtime_error& error) {
    complain_(error.what());
    End();
  }
  if (!done_) TakeNext();
}

Playback::~Playback() {
  loop_.StopTimer(timer_);
  loop_.Unwatch(watch_);
}

void Playback::TakeNext() {
  std::optional<SessionChunk> next;
  try {
    next = reader_->Next();
  } catch (const std::runtime_error& error) {
    complain_(error.what());
  }
  if (!next) return End();
  chunk_ = std::move(next->bytes);
  sent_ = 0;
  const duration<double, std::micro> offset(static_cast<double>(next->offset.count()) / speed_);
  const Time due = began_ + duration_cast<steady_clock::duration>(offset);
  timer_ = loop_.StartTimerAt(std::max(due, sent_at_ + kLeastPause), [this] {
    timer_ = 0;
    SendChunk();
  });
}

void Playback::SendChunk() {
  const Transfer transfer = Send(socket_, std::string_view(chunk_).substr(sent_));
  if (transfer.count < 0) return End();
  sent_ += static_cast<std::size_t>(transfer.count);
  const bool sent = sent_ == chunk_.size();
  loop_.Rewatch(watch_, sent ? poll::PollLoop::kRead : poll::PollLoop::kRead | poll::PollLoop::kWrite);
  if (!sent) return;
  sent_at_ = steady_clock::now();
  TakeNext();
}

void Playback::OnReady(unsigned ready) {
  if ((ready & poll::PollLoop::kRead) != 0) {
    // What the client says changes nothing, but is taken off the socket: closing on it would reset the last
    // chunks.
    std::array<char, kIgnoredReadSize> ignored;
    const Transfer transfer = Receive(socket_, ignored);
    if (transfer.count < 0 || transfer.ended) return End();
  }
  if ((ready & poll::PollLoop::kWrite) != 0 && timer_ == 0) SendChunk();
}

void Playback::End() {
  if (done_) return;
  done_ = true;
  loop_.StopTimer(timer_);
  loop_.Unwatch(watch_);
  socket_ = poll::Descriptor();
  ended_();
}

}  // namespace mirelo::quotetracker
