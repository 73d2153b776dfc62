#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "wire/message_bounds.h"
#include "wire/record_probe.h"
#include "wire/subscribed_symbols.h"

namespace mirelo::wire {

// Cuts a stream's bytes anew, so that the stream class gets whole messages wherever the network cut them. The
// class takes every chunk for a message of its own: of a control message in two chunks it understands
// nothing, and of quote records that are cut it loses some. The chunks of one stream are the same however its
// bytes come, but for this: as many whole records as have come pass at once.
//
// A chunk is one of these; all other bytes are left out.
// - Whole quote records. The chunk ends before a record of a kind other than S1 and L1, which the class reads
//   only at the beginning of a chunk, and around a record whose fields do not end where its length says,
//   which goes alone. Records of symbols that nobody subscribed pass up to the bounds of SubscribedSymbols. A
//   record whose length reaches into those behind it is left out, as far as that can be told, and they pass.
// - One control message, up to its end (GrowingMessage), to where another message is known to begin
//   (FindHead), to kLongestReply, or as far as it has come when LetGo is called.
// - One list of sources, whole, for each that the client has asked for.
//
// A message begins at the start of the stream or behind another message with the two letters of a known kind,
// blanks and marks of an end before them left out. Elsewhere a head alone tells it (FindHead).
//
//   aligner.Add(bytes);
//   while (const auto chunk = aligner.Next()) Deliver(*chunk);
class MessageAligner {
 public:
  using Bytes = std::span<const std::uint8_t>;
  using Milliseconds = std::chrono::milliseconds;

  // Chunks of records are no longer than this, but for a single longer record.
  static constexpr std::size_t kLongestChunk = 8192;
  static constexpr std::size_t kLongestReply = std::size_t{64} * 1024;
  static constexpr std::size_t kLongestSources = std::size_t{16} * 1024 * 1024;

  // How long a message may wait for more when the class might understand it as it stands, or does nothing
  // with it.
  static constexpr Milliseconds kPatience{250};
  // The same for a message that breaks off, and for a list that was asked for.
  static constexpr Milliseconds kLongPatience{30'000};
  // The same for the rest of a record.
  static constexpr Milliseconds kRecordPatience{5'000};

  // Tells the aligner of a message that the client has sent: it minds whether the client asks for sources,
  // and which symbols it subscribes.
  void NoteRequest(std::string_view message);

  void Add(Bytes bytes);

  // The next chunk, valid until the next call of Add, Next, LetGo or End: what the client sends meanwhile may
  // be noted. Nothing while it is not whole.
  std::optional<Bytes> Next();

  // How long the bytes left over may wait for more before LetGo is due; nothing when they may wait for ever.
  // The time counts from the last of them that came. Only where a record waits it counts from the first: its
  // length may be wrong, and bytes that come after a wrong length bring its end no nearer.
  std::optional<Milliseconds> Patience() const;
  bool WaitsForRecord() const;
  // Where in the stream the bytes left over begin.
  std::uint64_t Front() const { return erased_ + begin_ + given_; }
  // Ends the message that waits where it stands. What of it is worth passing is the next chunk.
  void LetGo();
  // The same for all that waits: the stream has ended.
  void End();

  // The bytes that wait for more, without those of the chunk that was given last; valid as a chunk is.
  Bytes LeftOver() const { return Bytes(waiting_).subspan(begin_ + given_); }
  std::size_t Waiting() const { return LeftOver().size(); }

  // Whether a list of sources has grown beyond kLongestSources without an end. There are no more chunks then,
  // and the connection should be closed.
  bool IsOverfull() const { return overfull_; }

  // The handler is called with bytes that are left out, right before they are dropped; not with blanks
  // between messages. It must raise nothing and leave the aligner alone.
  void OnLeftOut(std::function<void(Bytes)> handler) { on_left_out_ = std::move(handler); }

  // What a person should know of what was left out, in lines without a full stop; each is told once.
  std::vector<std::string> TakeNews() { return std::exchange(news_, {}); }

 private:
  enum class Step { kAgain, kWait, kGive };
  enum class LeavingOut { kNothing, kUnknown, kSources };

  std::string_view Rest() const;
  Step Advance();
  Step LeaveOutUnknown();
  Step LeaveOutSources();
  Step TakeRecords();
  Step TakeUncertainRecord(std::size_t length);
  Step TakeUnfinishedRecord();
  Step TakeUnfitRecord(std::size_t size, std::string_view symbol);
  Step LeaveOutLie(std::size_t next);
  Step LeaveOutUnasked(std::size_t size);
  Step TakeReply(MessageKind kind);
  Step TakeSources();
  Step Give(std::size_t size);
  Step Drop(std::size_t size);
  void Pass(std::size_t size);
  Step LeaveOut(LeavingOut what, std::size_t first = 0);
  void TakeGiven();
  std::size_t SearchedFrom() const;
  void KeepForHead();
  bool TakeLetGo();
  void Tell(std::string_view line);

  std::vector<std::uint8_t> waiting_;
  std::uint64_t erased_ = 0;        // bytes of the stream before those
  std::size_t begin_ = 0;           // what stands before was taken
  std::size_t searched_ = 0;        // of the message at the front: nothing else is known to begin before this
  mutable GrowingMessage message_;  // the same, as far as it was looked at
  mutable GrowingRecord record_;    // the same of a record
  std::size_t given_ = 0;           // the size of the chunk that is taken with the next call
  LeavingOut leaving_out_ = LeavingOut::kNothing;
  bool let_go_ = false;
  bool ended_ = false;
  bool overfull_ = false;
  std::size_t lists_asked_ = 0;
  SubscribedSymbols symbols_;
  std::vector<std::string> news_;
  std::vector<std::string> told_;
  std::function<void(Bytes)> on_left_out_;
};

}  // namespace mirelo::wire
