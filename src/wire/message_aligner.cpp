#include "wire/message_aligner.h"

#include <algorithm>

#include "streaming/tags.h"
#include "wire/record_probe.h"

namespace mirelo::wire {

namespace {

// What is kept of bytes that are searched for a head, so that one cut by the network is found.
constexpr std::size_t kKept = kLongestHead - 1;
// A buffer that grew beyond this is given back.
constexpr std::size_t kSpareBuffer = std::size_t{1024} * 1024;
constexpr const char* kWrongLength =
    "QuoteTracker sends records whose length cannot be; the quotes in them are lost";
constexpr const char* kNoEnd = "QuoteTracker sends records that do not end; the quotes in them are lost";

// Line ends, blanks, and what else servers put behind a message to mark its end.
bool IsSeparator(char byte) {
  const auto code = static_cast<std::uint8_t>(byte);
  return code <= ' ' || code == 0xFF;
}

// Whether the stream class reads a record of this kind in a chunk that begins with that one. Where it does
// not, it loses the record and misreads the one behind it.
bool IsReadBehind(std::string_view first, std::string_view record) {
  const std::string_view kind = record.substr(0, 2);
  return kind == first.substr(0, 2) || kind == "S1" || kind == "L1";
}

// Whether the front ends at `end` before it is known that something else begins in it.
bool EndsBefore(std::optional<std::size_t> end, const std::optional<Head>& head) {
  return end && (!head || *end <= head->known);
}

}  // namespace

void MessageAligner::NoteRequest(std::string_view message) {
  if (FindTag(message, "<ENUMSOURCES>") == 1) ++lists_asked_;
  constexpr std::string_view kOpening = "<Symbols>";
  for (std::int32_t at = FindTag(message, kOpening); at != 0; at = FindTag(message, kOpening, at + 1)) {
    std::string_view group = message.substr(static_cast<std::size_t>(at) - 1 + kOpening.size());
    group = group.substr(0, group.find("</Symbols>"));
    while (!group.empty()) {
      const std::size_t comma = std::min(group.find(','), group.size());
      symbols_.Subscribe(group.substr(0, comma));
      group.remove_prefix(std::min(comma + 1, group.size()));
    }
  }
}

void MessageAligner::Add(Bytes bytes) {
  TakeGiven();
  erased_ += begin_;
  waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(std::exchange(begin_, 0)));
  if (waiting_.empty() && waiting_.capacity() > kSpareBuffer) waiting_.shrink_to_fit();
  waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
  let_go_ = ended_ = false;
}

std::optional<MessageAligner::Bytes> MessageAligner::Next() {
  TakeGiven();
  for (;;) {
    switch (Advance()) {
      case Step::kAgain:
        continue;
      case Step::kWait:
        return std::nullopt;
      case Step::kGive:
        return Bytes(waiting_).subspan(begin_, given_);
    }
  }
}

std::string_view MessageAligner::Rest() const {
  return std::string_view(reinterpret_cast<const char*>(waiting_.data()), waiting_.size()).substr(begin_);
}

MessageAligner::Step MessageAligner::Advance() {
  if (overfull_) return Step::kWait;
  if (leaving_out_ == LeavingOut::kUnknown) return LeaveOutUnknown();
  if (leaving_out_ == LeavingOut::kSources) return LeaveOutSources();
  const std::string_view rest = Rest();
  if (rest.empty()) return Step::kWait;
  if (IsSeparator(rest.front())) {
    const auto* const other = std::ranges::find_if_not(rest, IsSeparator);
    Pass(static_cast<std::size_t>(other - rest.begin()));
    return Step::kAgain;
  }
  if (rest.size() == 1) return MayBeginMessage(rest.front()) ? Step::kWait : LeaveOut(LeavingOut::kUnknown);
  switch (KindOf(rest)) {
    case MessageKind::kRecord:
      return TakeRecords();
    case MessageKind::kAcceptance:
    case MessageKind::kLoginResult:
      return TakeReply(KindOf(rest));
    case MessageKind::kSources:
      return lists_asked_ > 0 ? TakeSources() : LeaveOut(LeavingOut::kSources, 1);
    case MessageKind::kUnknown:
      break;
  }
  return LeaveOut(LeavingOut::kUnknown);
}

MessageAligner::Step MessageAligner::LeaveOutUnknown() {
  const std::optional<Head> head = FindHead(Rest(), 0);
  if (!head) {
    KeepForHead();
    return Step::kWait;
  }
  leaving_out_ = LeavingOut::kNothing;
  return Drop(head->begin);
}

MessageAligner::Step MessageAligner::LeaveOutSources() {
  const std::optional<Head> head = FindHead(Rest(), 0);
  const std::optional<std::size_t> end = EndOfSources(Rest(), 0);
  if (!end && !head) {
    KeepForHead();
    return Step::kWait;
  }
  leaving_out_ = LeavingOut::kNothing;
  return Drop(EndsBefore(end, head) ? *end : head->begin);
}

// As many whole records as belong into one chunk.
MessageAligner::Step MessageAligner::TakeRecords() {
  const std::string_view rest = Rest();
  if (rest.size() < kRecordHead) return Step::kWait;
  const std::int32_t length = LengthOf(rest);
  if (length < static_cast<std::int32_t>(kRecordHead)) {
    Tell(kWrongLength);
    return LeaveOut(LeavingOut::kUnknown, 1);
  }
  if (length < static_cast<std::int32_t>(kLeastRecord) ||
      (rest.size() >= kLeastRecord && !BeginsWithRecord(rest)))
    return TakeUncertainRecord(static_cast<std::size_t>(length));
  if (rest.size() < kLeastRecord) return Step::kWait;

  auto size = static_cast<std::size_t>(length);
  const RecordProbe first = record_.Probe(rest.substr(0, size));
  if (first.next > 0) return LeaveOutLie(first.next);
  if (rest.size() < size) return TakeUnfinishedRecord();
  if (!first.fits) return TakeUnfitRecord(size, first.symbol);
  if (!symbols_.Admits(first.symbol)) return LeaveOutUnasked(size);
  while (BeginsWithRecord(rest.substr(size))) {
    const std::string_view record = rest.substr(size);
    const auto record_size = static_cast<std::size_t>(LengthOf(record));
    if (record_size > record.size() || size + record_size > kLongestChunk) break;
    if (!IsReadBehind(rest, record)) break;
    const RecordProbe probe = ProbeRecord(record.substr(0, record_size));
    if (probe.next > 0 || !probe.fits || !symbols_.Admits(probe.symbol)) break;
    size += record_size;
  }
  return Give(size);
}

// A record in which another one begins in place of a field. What is good behind the lie may begin before
// that: the first fields of a good record look like the fields of any.
MessageAligner::Step MessageAligner::LeaveOutLie(std::size_t next) {
  Tell(kWrongLength);
  const InnerRecord inner = FindInnerRecord(Rest().substr(0, next), next);
  return Drop(inner.begin > 0 ? inner.begin : next);
}

// One whose end has not come. What came after a length that lies is found anew.
MessageAligner::Step MessageAligner::TakeUnfinishedRecord() {
  if (!TakeLetGo()) return Step::kWait;
  Tell(kNoEnd);
  return LeaveOut(LeavingOut::kUnknown, 1);
}

// One whose fields do not end where it does: it has fields that we do not know, or its length reaches into
// the records behind it.
MessageAligner::Step MessageAligner::TakeUnfitRecord(std::size_t size, std::string_view symbol) {
  const InnerRecord inner = record_.FindInner(Rest(), size);
  if (inner.may_come && !TakeLetGo()) return Step::kWait;
  if (inner.begin > 0) {
    Tell(kWrongLength);
    return Drop(inner.begin);
  }
  return symbols_.Admits(symbol) ? Give(size) : LeaveOutUnasked(size);
}

MessageAligner::Step MessageAligner::LeaveOutUnasked(std::size_t size) {
  Tell("QuoteTracker sends quotes of very many tickers that were not asked for; most of them are left out");
  return Drop(size);
}

// A record that begins with no known field, if it is one.
MessageAligner::Step MessageAligner::TakeUncertainRecord(std::size_t length) {
  const std::string_view rest = Rest();
  if (const std::optional<Head> head =
          FindHead(rest.substr(0, length), SearchedFrom(), MessageKind::kUnknown, searched_)) {
    return Drop(head->begin);
  }
  searched_ = rest.size();
  if (rest.size() < length) return let_go_ ? Drop(rest.size()) : Step::kWait;
  if (length < kLeastRecord || !symbols_.Admits(ProbeRecord(rest.substr(0, length)).symbol))
    return Drop(length);
  return Give(length);
}

MessageAligner::Step MessageAligner::TakeReply(MessageKind kind) {
  const std::string_view rest = Rest().substr(0, kLongestReply);
  const std::optional<Head> head = FindHead(rest, SearchedFrom(), kind, searched_);
  const std::optional<std::size_t> end = message_.EndOf(kind, rest);
  searched_ = rest.size();
  if (EndsBefore(end, head)) return Give(*end);
  if (head) return Give(head->begin);
  if (rest.size() == kLongestReply) leaving_out_ = LeavingOut::kUnknown;
  return let_go_ || rest.size() == kLongestReply ? Give(rest.size()) : Step::kWait;
}

MessageAligner::Step MessageAligner::TakeSources() {
  const std::string_view rest = Rest().substr(0, kLongestSources);
  const std::size_t from = SearchedFrom();
  const std::optional<Head> head = FindHead(rest, from, MessageKind::kSources, searched_);
  const std::optional<std::size_t> end = EndOfSources(rest, from);
  searched_ = rest.size();
  if (EndsBefore(end, head)) {
    --lists_asked_;
    return Give(*end);
  }
  if (head || let_go_) {
    Tell("QuoteTracker's list of quote sources broke off");
    return Drop(head ? head->begin : Rest().size());
  }
  overfull_ = Rest().size() > kLongestSources;
  return Step::kWait;
}

std::optional<MessageAligner::Milliseconds> MessageAligner::Patience() const {
  if (leaving_out_ != LeavingOut::kNothing) return kPatience;
  const std::string_view rest = Rest();
  if (rest.size() < 2 || overfull_) return std::nullopt;
  switch (KindOf(rest)) {
    case MessageKind::kRecord:
      if (rest.size() < kLeastRecord) return std::nullopt;
      if (!BeginsWithRecord(rest)) return kLongPatience;
      return record_.HoldsOthersBack(rest) ? kPatience : kRecordPatience;
    case MessageKind::kAcceptance:
    case MessageKind::kLoginResult:
      return message_.BreaksOff(rest) ? kLongPatience : kPatience;
    case MessageKind::kSources:
      return kLongPatience;
    case MessageKind::kUnknown:
      break;
  }
  return std::nullopt;
}

void MessageAligner::LetGo() {
  TakeGiven();
  if (leaving_out_ != LeavingOut::kNothing) {
    leaving_out_ = LeavingOut::kNothing;
    Drop(Rest().size());
  }
  let_go_ = true;
}

void MessageAligner::End() {
  LetGo();
  ended_ = true;
}

bool MessageAligner::WaitsForRecord() const {
  const std::string_view rest = Rest();
  return leaving_out_ == LeavingOut::kNothing && rest.size() >= 2 && KindOf(rest) == MessageKind::kRecord;
}

// What is let go is the message at the front alone: a record after it may have begun to come just now.
bool MessageAligner::TakeLetGo() { return ended_ || std::exchange(let_go_, false); }

MessageAligner::Step MessageAligner::Give(std::size_t size) {
  given_ = size;
  return Step::kGive;
}

MessageAligner::Step MessageAligner::Drop(std::size_t size) {
  if (on_left_out_ && size > 0) on_left_out_(Bytes(waiting_).subspan(begin_, size));
  Pass(size);
  return Step::kAgain;
}

void MessageAligner::Pass(std::size_t size) {
  begin_ += size;
  searched_ = 0;
  message_.Forget();
  record_.Forget();
}

void MessageAligner::TakeGiven() {
  if (given_ > 0) Pass(std::exchange(given_, 0));
}

// From where on something else may begin that was not known yet; the first byte is that of the message.
std::size_t MessageAligner::SearchedFrom() const {
  return std::max<std::size_t>(1, searched_ - std::min(searched_, kKept));
}

// Up to a head behind the first so many bytes.
MessageAligner::Step MessageAligner::LeaveOut(LeavingOut what, std::size_t first) {
  leaving_out_ = what;
  return Drop(first);
}

void MessageAligner::KeepForHead() {
  if (Rest().size() > kKept) Drop(Rest().size() - kKept);
}

void MessageAligner::Tell(std::string_view line) {
  if (std::ranges::find(told_, line) != told_.end()) return;
  told_.emplace_back(line);
  news_.emplace_back(line);
}

}  // namespace mirelo::wire
