// The walk over a chunk of Level I records. A record is two bytes of kind, a signed 16-bit length that counts
// the whole record, and fields: a 2-byte id and a value each. All numbers are little-endian.
//
// Lengths and ids are taken as they come. Where a record lies about itself, the walk goes on where the lie
// leads it, and the order of the steps decides what is lost; so that order is not free.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "automation/ansi.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/cTickerDateTime.h"
#include "core/record_items.h"
#include "streaming/level1_fields.h"
#include "streaming/level1_record.h"
#include "streaming/quote_changes.h"
#include "streaming/stream_internals.h"
#include "streaming/wire_bytes.h"

namespace mirelo {

namespace {

constexpr std::int32_t kHead = 4;          // kind and length
constexpr std::int32_t kUnknownField = 4;  // bytes passed over for an unknown field

struct RecordKind {
  std::uint8_t first;
  std::uint8_t second;
  friend bool operator==(RecordKind, RecordKind) = default;
};
constexpr RecordKind kS1{'S', '1'};
constexpr RecordKind kL1{'L', '1'};

const std::string kNoText;

// Reads a field's value at `position` and leaves the position behind it.
inline void ReadValue(const Level1Field& field, const WireBytes& bytes, std::int32_t& position,
                      Level1Record& record) {
  switch (field.kind) {
    case FieldKind::Double:
      record.*field.number = bytes.NumberAt<double>(position);
      position += 8;
      return;
    case FieldKind::LongVolume:
      record.*
          field.volume = {bytes.NumberAt<std::int32_t>(position), bytes.NumberAt<std::int32_t>(position + 4)};
      position += 8;
      return;
    case FieldKind::Integer:
      record.*field.quantity = bytes.NumberAt<std::int32_t>(position);
      position += 4;
      return;
    case FieldKind::ZeroTerminatedText:
      record.*field.text = bytes.ReadZeroString(position);
      return;
    case FieldKind::Stamp:
      if (const auto stamp = bytes.TextAt(position, StampTexts::kStampSize); !stamp.empty())
        record.*field.text = stamp;
      position += StampTexts::kStampSize;
      return;
    case FieldKind::Dropped:
      position += DescribedWidth(field.descriptor);
      return;
    case FieldKind::Unknown:
      position += kUnknownField;
      return;
  }
}

// Reads the field at `position` and leaves the position behind it. What lies behind the chunk's end reads as
// 0 or as no text, and was not carried; but a zero-terminated text that runs off it is error 9.
inline void ReadField(const WireBytes& bytes, std::int32_t& position, Level1Record& record) {
  const auto id = bytes.NumberAt<std::uint16_t>(position);
  position += 2;
  const std::size_t place = id < kFieldTable.size() ? id : 0;
  ReadValue(kFieldTable[place], bytes, position, record);
  record.carried.Note(place, position <= bytes.size());
}

// The symbol of the record that begins at a position, if that is its first field.
std::string_view SymbolAt(const WireBytes& bytes, std::int32_t position) {
  if (bytes.NumberAt<std::int16_t>(position + kHead) != 1) return {};
  const std::string_view rest = bytes.TextAt(position + kHead + 2, SymbolIndex::kLongest + 1);
  return rest.substr(0, std::min(rest.find('\0'), SymbolIndex::kLongest + 1));
}

// Finds out that a walk goes round for ever. From an unwanted record the walk goes on in a way that its
// position alone decides, so one that steps back from the same record twice never ends. (Brent's search for
// cycles.)
class WalkWatch {
 public:
  bool WasHere(std::int32_t position) {
    if (position == mark_) return true;
    if (++steps_ == steps_to_next_mark_) {
      mark_ = position;
      steps_ = 0;
      steps_to_next_mark_ *= 2;
    }
    return false;
  }

 private:
  std::int32_t mark_ = -1;
  std::int64_t steps_ = 0;
  std::int64_t steps_to_next_mark_ = 1;
};

// The volume since the ticker's last quote of the same stamp; 0 for the first one, and when the stamp is
// another. With a user's format that shows the time this starts anew each second, with one of the date alone
// each day.
std::int32_t TakeLastVolume(std::int32_t volume, const std::string& date_time, cTickerDateTime& state) {
  if (volume <= 0) return 0;
  const std::int32_t previous = state.PrevVolume();
  state.PrevVolume(volume);
  if (previous != 0 && EqualText(date_time, state.DateQuoteTrecker())) {
    state.LastVolume(volume - previous);
    return volume - previous;
  }
  state.LastVolume(0);
  state.DateQuoteTrecker(date_time);
  return 0;
}

// The same of whole volumes, to be called before it. The properties of the state know the volume before as
// long as that fits into them.
std::int64_t TakeGreatLastVolume(std::int64_t volume, const std::string& date_time, cTickerDateTime& state) {
  if (volume <= 0) return 0;
  const bool follows_great = state.great_volume != 0;
  const std::int64_t previous = follows_great ? state.great_volume : state.PrevVolume();
  const bool counts =
      previous != 0 && EqualText(date_time, follows_great ? state.great_stamp : state.DateQuoteTrecker());
  const bool is_great = volume > std::numeric_limits<std::int32_t>::max();
  state.great_volume = is_great ? volume : 0;
  state.great_stamp = is_great ? date_time : kNoText;
  return counts ? volume - previous : 0;
}

}  // namespace

void cQTStreaming::Internals::DecodeRecords(Bytes data) {
  std::int32_t record_begin = 0;
  try {
    WalkRecords(data, record_begin);
  } catch (...) {
    stream.Lost.Raise(data.subspan(static_cast<std::size_t>(record_begin)));
    throw;
  }
}

// Leaves in `record_begin` which record it has come to, wherever that ends.
void cQTStreaming::Internals::WalkRecords(Bytes data, std::int32_t& record_begin) {
  constexpr std::int32_t kLeast = 6;  // an array of up to five bytes is forgotten
  constexpr std::int32_t kFarthest = std::numeric_limits<std::int16_t>::max();
  const WireBytes bytes(data);
  const std::int32_t size = bytes.size();
  if (size < kLeast) return;

  const RecordKind first_kind{data[0], data[1]};
  std::int32_t position = 0;
  // Where the record before this one began, if that wasn't wanted; else where this one begins.
  std::int32_t record_start = 0;
  WalkWatch watch;
  do {
    const std::int32_t length = bytes.NumberAt<std::int16_t>(position + 2);
    if (position + 1 >= size) break;
    record_begin = std::max(position, 0);
    const RecordKind kind{bytes.At(position), bytes.At(position + 1)};
    if (kind != first_kind && kind != kS1 && kind != kL1) {
      record_start = position;
      position += length;
      if (length <= 0 && stream.StopEndlessWalks_ && watch.WasHere(record_start)) LosePlace();
      continue;
    }
    if (position > kFarthest) throw Errors::Overflow();
    if (position + length > size) {
      const Bytes tail = bytes.From(position);
      PendingBytes.assign(tail.begin(), tail.end());
      break;
    }

    if (symbol_index.IsLarge()) {
      const std::int32_t next = position + length;
      symbol_index.Expect(SymbolAt(bytes, next + bytes.NumberAt<std::int16_t>(next + 2)));
    }
    position += kHead;
    Level1Record record;
    // Behind an unwanted record the end is counted from that one's start, so the later fields may stay
    // unread.
    do {
      ReadField(bytes, position, record);
    } while (position < record_start + length);
    record_start = position;
    ApplyQuote(record);
  } while (position < size);
  if (position == size) PendingBytes.clear();
}

// Publishes the record if it changed anything for its symbol. The state serves the comparison only: what a
// record lacks is lacking in the quote too.
void cQTStreaming::Internals::ApplyQuote(const Level1Record& record) {
  // A wild displacement of the clock fails at every stamp, not only for a quote that is published.
  if (!record.stamp.empty() && arrival.MayFail()) arrival.GetDisplacedDateTime(stream.DovantaFormatUserDate_);

  bool is_first = false;
  cTickerDateTime& state = StateOf(record.symbol, is_first);
  const bool brings_zeros = is_first && stream.CountZeros_ && CarriesCompared(record);
  if (!TakeChanges(record, state, stream.CountZeros_) && !brings_zeros)
    return stream.Unchanged.Raise(record.symbol);
  const std::string& date_time =
      record.stamp.empty() ? kNoText : stamps.Text(record.stamp, stream.DovantaFormatUserDate_);
  const bool is_great = record.volume.high != 0 || record.volume.low < 0 || state.great_volume != 0;
  const std::int64_t great = is_great ? TakeGreatLastVolume(record.volume.Whole(), date_time, state) : 0;
  const std::int32_t last = TakeLastVolume(record.volume.low, date_time, state);
  AddQuoteToBuffer(record, date_time, last, is_great ? great : last);
}

// Leaves `is_first` as it is where the symbol was known.
cTickerDateTime& cQTStreaming::Internals::StateOf(std::string_view symbol, bool& is_first) {
  if (cTickerDateTime* known = symbol_index.Find(symbol)) return *known;
  const std::int32_t count = TickerStates.Count();
  cTickerDateTime& state = *TickerStates.FindOrAdd(AnsiToText(symbol));
  is_first = TickerStates.Count() > count;
  symbol_index.Keep(symbol, state);
  return state;
}

void cQTStreaming::Internals::LosePlace() {
  PendingBytes.clear();
  throw RuntimeError(kEndlessWalk, "The quote stream lost its place", "Mirelo.cQTStreaming.DecodeRecords");
}

}  // namespace mirelo
