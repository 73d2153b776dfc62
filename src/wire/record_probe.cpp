#include "wire/record_probe.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "streaming/level1_fields.h"
#include "streaming/stamp_texts.h"
#include "wire/message_bounds.h"

namespace mirelo::wire {

namespace {

constexpr std::size_t kId = 2;
constexpr std::uint16_t kSymbol = 1;
constexpr std::uint8_t kUnknownWidth = 4;

// How often a byte of a record is looked at on average for those that begin inside: of records side by side
// once, and chance may nest some more. A peer that nests as many as it can would have each looked at some
// thousand times.
constexpr std::size_t kMostProbes = 16;
// What may be looked at however short a record is: the next one, into which it reaches, may be longer.
constexpr std::size_t kLeastProbed = 2048;

constexpr std::uint8_t kUpToZero = 0;  // the width of texts that end with a zero byte

constexpr std::uint8_t WidthOf(const Level1Field& field) {
  switch (field.kind) {
    case FieldKind::Double:
    case FieldKind::LongVolume:
      return 8;
    case FieldKind::Integer:
      return 4;
    case FieldKind::ZeroTerminatedText:
      return kUpToZero;
    case FieldKind::Stamp:
      return StampTexts::kStampSize;
    case FieldKind::Dropped:
      return static_cast<std::uint8_t>(DescribedWidth(field.descriptor));
    case FieldKind::Unknown:
      break;
  }
  return kUnknownWidth;
}

// Of each field id's value.
constexpr auto kWidths = [] {
  std::array<std::uint8_t, kFieldTable.size()> widths{};
  for (std::size_t id = 0; id < widths.size(); ++id) widths[id] = WidthOf(kFieldTable[id]);
  return widths;
}();

bool MayBeginRecord(std::string_view bytes) {
  if (bytes.size() == 1) return bytes[0] == 'S' || bytes[0] == 'L' || bytes[0] == 'H';
  return KindOf(bytes) == MessageKind::kRecord;
}

std::uint16_t IdAt(std::string_view record, std::size_t at) {
  std::uint16_t id = 0;
  std::memcpy(&id, record.data() + at, sizeof id);  // little-endian, as is every machine that this is for
  return id;
}

bool IsGood(std::string_view record) {
  const RecordProbe probe = ProbeRecord(record);
  return probe.next == 0 && probe.fits && !probe.symbol.empty();
}

}  // namespace

RecordProbe ProbeRecord(std::string_view record) { return FieldWalk().Probe(record); }

RecordProbe FieldWalk::Probe(std::string_view record) {
  RecordProbe probe;
  while (at_ + kId <= record.size()) {
    const std::uint16_t id = IdAt(record, at_);
    const bool is_known = id < kWidths.size();
    if (!is_known) {
      if (BeginsWithRecord(record.substr(at_))) {
        probe.next = at_;
        return probe;
      }
      if (record.size() - at_ < kId + kUnknownWidth) break;  // one may begin here all the same
    }
    const std::size_t value = at_ + kId;
    const std::size_t width = is_known ? kWidths[id] : kUnknownWidth;
    if (width != kUpToZero) {
      at_ = value + width;
      continue;
    }
    const std::size_t zero = record.find('\0', value);
    if (zero == std::string_view::npos) break;
    if (id == kSymbol) {
      symbol_begin_ = value;
      symbol_size_ = zero - value;
    }
    at_ = zero + 1;
  }
  probe.symbol = record.substr(symbol_begin_, symbol_size_);
  probe.fits = at_ == record.size();
  return probe;
}

std::int32_t LengthOf(std::string_view record) {
  return static_cast<std::int16_t>(static_cast<std::uint8_t>(record[2]) | static_cast<std::uint8_t>(record[3])
                                                                              << 8);
}

InnerRecord FindInnerRecord(std::string_view bytes, std::size_t end) {
  return GrowingRecord().FindInner(bytes, end);
}

InnerRecord GrowingRecord::FindInner(std::string_view bytes, std::size_t end) {
  is_begun_ = true;
  ProbeFinished(bytes);
  ProbeUnsearched(bytes, end);
  return {good_, MayCome(bytes, end)};
}

bool GrowingRecord::HoldsOthersBack(std::string_view bytes) {
  if (holds_others_back_) return true;
  const auto length = static_cast<std::size_t>(LengthOf(bytes));
  holds_others_back_ = length <= bytes.size() || FindInner(bytes, length).begin > 0;
  if (holds_others_back_ || knows_head_) return holds_others_back_;
  const std::optional<Head> head =
      FindHead(bytes, 1, MessageKind::kUnknown, std::exchange(searched_for_head_, bytes.size()));
  knows_head_ = head.has_value();
  holds_others_back_ = head && KindOf(bytes.substr(head->begin)) != MessageKind::kRecord;
  return holds_others_back_;
}

// Of the bytes that were not searched yet; what begins behind a good one does not matter.
void GrowingRecord::ProbeUnsearched(std::string_view bytes, std::size_t end) {
  for (std::size_t at = std::max<std::size_t>(1, searched_);
       good_ == 0 && at < end && at + kLeastRecord <= bytes.size(); ++at) {
    searched_ = at + 1;
    const std::string_view inner = bytes.substr(at);
    if (!BeginsWithRecord(inner)) continue;
    const auto length = static_cast<std::size_t>(LengthOf(inner));
    if (!MayProbe(length, end)) continue;
    if (length > inner.size()) {
      by_begin_.emplace(at, at + length);
      by_end_.emplace(at + length, at);
    } else if (IsGood(inner.substr(0, length))) {
      good_ = at;
    }
  }
}

// Depends on what begins where alone, so that the answer is the same however the bytes come.
bool GrowingRecord::MayProbe(std::size_t length, std::size_t end) {
  if (probed_ + length > kMostProbes * end + kLeastProbed) return false;
  probed_ += length;
  return true;
}

// Of those that had begun, the ones that have come whole since.
void GrowingRecord::ProbeFinished(std::string_view bytes) {
  while (!by_end_.empty() && by_end_.begin()->first <= bytes.size()) {
    const auto [end, begin] = *by_end_.begin();
    by_end_.erase(by_end_.begin());
    by_begin_.erase({begin, end});
    if (good_ > 0 && begin > good_) continue;
    if (IsGood(bytes.substr(begin, end - begin))) good_ = begin;
  }
}

bool GrowingRecord::MayCome(std::string_view bytes, std::size_t end) {
  while (!by_begin_.empty() && (good_ == 0 || by_begin_.begin()->first < good_)) {
    const auto [begin, its_end] = *by_begin_.begin();
    if (std::exchange(walked_begin_, begin) != begin) inner_walk_ = FieldWalk();
    if (inner_walk_.Probe(bytes.substr(begin)).next == 0) return true;
    by_begin_.erase(by_begin_.begin());
    by_end_.erase({its_end, begin});
  }
  if (good_ > 0) return false;
  for (std::size_t at = std::max<std::size_t>(1, searched_); at < std::min(end, bytes.size()); ++at) {
    if (MayBeginRecord(bytes.substr(at))) return true;
  }
  return false;
}

}  // namespace mirelo::wire
