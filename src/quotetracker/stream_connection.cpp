#include "quotetracker/stream_connection.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "quotetracker/socket.h"

namespace mirelo::quotetracker {
namespace {

using std::chrono::duration;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t kReadSize = std::size_t{16} * 1024;
// Batches sent before other connections have their turn.
constexpr int kMostBatchesATurn = 4;
constexpr steady_clock::duration kShortestPace = milliseconds(5);
constexpr steady_clock::duration kLongestPace = milliseconds(1000);

std::vector<std::string> KindsOf(const StreamOptions& options) {
  if (!options.kinds.empty()) return options.kinds;
  if (options.rate == StreamOptions::kMaximum) return {"L1", "S1"};
  return {"L1", "S1", "HO", "HT"};
}

// How often changes are looked for.
steady_clock::duration PaceOf(double rate) {
  if (rate == StreamOptions::kMaximum) return kShortestPace;
  const auto pace = std::clamp<duration<double>>(duration<double>(1 / rate), kShortestPace, kLongestPace);
  return std::chrono::duration_cast<steady_clock::duration>(pace);
}

}  // namespace

StreamConnection::StreamConnection(poll::PollLoop& loop, poll::Descriptor socket, QuoteSource& source,
                                   const StreamOptions& options, std::vector<StreamFaultPlan>& faults,
                                   std::uint64_t& quotes, std::uint64_t seed,
                                   std::function<void(std::string_view)> overheard,
                                   std::function<void()> ended)
    : loop_(loop),
      socket_(std::move(socket)),
      options_(options),
      faults_(faults),
      quotes_(quotes),
      chance_(seed),
      conversation_(source, options.credentials, options.version, KindsOf(options), seed),
      outbox_(options.chunk_pause, seed),
      overheard_(std::move(overheard)),
      ended_(std::move(ended)) {
  watch_ = loop_.Watch(socket_.Number(), poll::PollLoop::kRead, [this](unsigned ready) { OnReady(ready); });
  Say(conversation_.Greet());
  Pump();
}

StreamConnection::~StreamConnection() {
  loop_.StopTimer(pace_);
  loop_.StopTimer(resume_);
  loop_.Unwatch(watch_);
}

void StreamConnection::OnReady(unsigned ready) {
  if ((ready & poll::PollLoop::kRead) != 0) Read();
  Pump();
}

void StreamConnection::Read() {
  std::array<char, kReadSize> buffer;
  const Transfer transfer = Receive(socket_, buffer);
  const bool gone = transfer.count < 0 || transfer.ended;
  if (gone || !messages_.Add({buffer.data(), static_cast<std::size_t>(transfer.count)})) End();
}

// Does what can be done now: answers, and then records for as long as the client takes them.
void StreamConnection::Pump() {
  AnswerMessages();
  Outbox::State state = outbox_.Flush(socket_);
  bool has_more = true;
  for (int i = 0; i < kMostBatchesATurn && has_more && !done_ && state == Outbox::State::kEmpty; ++i) {
    has_more = !ending_ && AddRecords();
    state = outbox_.Flush(socket_);
  }
  if (done_) return;
  if (state == Outbox::State::kBroken || (ending_ && state == Outbox::State::kEmpty)) return End();
  WaitForMore(state, has_more);
}

void StreamConnection::AnswerMessages() {
  while (!done_) {
    const auto message = messages_.Next();
    if (!message) return;
    overheard_(*message);
    if (stalled_ || ending_) continue;
    if (auto answer = conversation_.Answer(*message)) Say(*std::move(answer));
    if (!conversation_.Feed().IsEmpty() && pace_ == 0) StartPace();
  }
}

// Puts the next records that are due into the outbox; false when there are none.
bool StreamConnection::AddRecords() {
  const std::uint64_t before = conversation_.Feed().Given();
  const bool added = AddBatch();
  quotes_ += conversation_.Feed().Given() - before;
  return added;
}

bool StreamConnection::AddBatch() {
  RecordFeed& feed = conversation_.Feed();
  if (stalled_) return false;
  if (feed.OwesSnapshots()) {
    Say({StreamStep::kQuotes, feed.NextSnapshots()});
    return true;
  }
  const bool unlimited = options_.rate == StreamOptions::kMaximum;
  const std::size_t most =
      unlimited ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(allowance_);
  std::size_t count = 0;
  std::string records = feed.NextUpdates(most, count);
  if (records.empty()) return false;
  if (!unlimited) allowance_ -= static_cast<double>(count);
  Say({StreamStep::kQuotes, std::move(records)});
  return true;
}

void StreamConnection::Say(StreamUnit unit) {
  const bool may_be_cut = unit.step == StreamStep::kSources || unit.step == StreamStep::kQuotes;
  Chunking chunking = may_be_cut ? options_.chunking : Chunking::kWhole;
  const StreamFault fault = NextFault(unit.step);
  switch (fault) {
    case StreamFault::kNone:
      break;
    case StreamFault::kReset:
      ResetOnClose(socket_);
      return End();
    case StreamFault::kDrop:
      return End();
    case StreamFault::kStall:
      stalled_ = true;
      return;
    case StreamFault::kTruncate:
      unit.bytes.resize(unit.bytes.size() / 2);
      ending_ = true;
      break;
    case StreamFault::kGarbage:
      for (char& c : unit.bytes) c = static_cast<char>(chance_.Next());
      break;
    case StreamFault::kSplit:
      chunking = Chunking::kHalves;
      break;
    case StreamFault::kLongLength:
    case StreamFault::kShortLength:
    case StreamFault::kZeroLength:
    case StreamFault::kNegativeLength:
      LieAboutLength(unit.bytes, fault);
      break;
  }
  outbox_.Add(std::move(unit.bytes), chunking);
}

StreamFault StreamConnection::NextFault(StreamStep step) {
  StreamFault strikes = StreamFault::kNone;
  for (StreamFaultPlan& plan : faults_) {
    const StreamFault fault = plan.Next(step);
    if (strikes == StreamFault::kNone) strikes = fault;
  }
  return strikes;
}

void StreamConnection::StartPace() {
  paced_ = steady_clock::now();
  allowance_ = 0;
  OnPace();
}

void StreamConnection::OnPace() {
  pace_ = 0;
  if (conversation_.Feed().IsEmpty()) return;
  const auto now = steady_clock::now();
  // What a slow client did not take within a second is left out.
  const duration<double> passed = now - paced_;
  allowance_ = std::min(allowance_ + passed.count() * options_.rate, std::max(options_.rate, 1.0));
  paced_ = now;
  pace_ = loop_.StartTimerAt(now + PaceOf(options_.rate), [this] {
    OnPace();
    Pump();
  });
}

void StreamConnection::WaitForMore(Outbox::State state, bool has_more) {
  const bool writes = state == Outbox::State::kBlocked || (state == Outbox::State::kEmpty && has_more);
  const bool reads = outbox_.Size() < kMostUnsent;
  loop_.Rewatch(watch_, (writes ? poll::PollLoop::kWrite : 0U) | (reads ? poll::PollLoop::kRead : 0U));
  if (state != Outbox::State::kPausing || resume_ != 0) return;
  resume_ = loop_.StartTimerAt(outbox_.ResumeTime(), [this] {
    resume_ = 0;
    Pump();
  });
}

void StreamConnection::End() {
  if (done_) return;
  done_ = true;
  loop_.StopTimer(pace_);
  loop_.StopTimer(resume_);
  loop_.Unwatch(watch_);
  socket_ = poll::Descriptor();
  ended_();
}

}  // namespace mirelo::quotetracker
