#include "app/record_aligner.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/text.h"

namespace mirelo::app {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::array<std::string_view, 4> kKinds{"S1", "L1", "HO", "HT"};
constexpr std::size_t kHead = 4;  // kind and length

// Whether the bytes begin as a record does, as far as they go.
bool BeginAsRecord(Bytes bytes) {
  return std::any_of(kKinds.begin(), kKinds.end(), [&](std::string_view kind) {
    return std::equal(
        kind.begin(), kind.begin() + std::min(kind.size(), bytes.size()), bytes.begin(),
        [](char letter, std::uint8_t byte) { return static_cast<std::uint8_t>(letter) == byte; });
  });
}

std::string_view KindOf(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), 2}; }

// Whether the stream class reads a record of this kind in a chunk that begins with that one. Where it does
// not, it loses the record and misreads the one behind it.
bool IsReadBehind(std::string_view first, std::string_view kind) {
  return kind == first || kind == "S1" || kind == "L1";
}

std::int32_t LengthOfRecord(Bytes bytes) { return static_cast<std::int16_t>(bytes[2] | bytes[3] << 8); }

}  // namespace

void RecordAligner::Add(Bytes bytes) { waiting_.insert(waiting_.end(), bytes.begin(), bytes.end()); }

std::optional<std::vector<std::uint8_t>> RecordAligner::Next() {
  if (waiting_.empty()) return std::nullopt;
  if (in_sources_ || !BeginAsRecord(waiting_)) return TakeText();
  if (waiting_.size() < kHead) return std::nullopt;
  if (LengthOfRecord(waiting_) <= static_cast<std::int32_t>(kHead)) return TakeText();
  const std::size_t size = WholeRecords();
  if (size == 0) return std::nullopt;
  return Take(size);
}

std::vector<std::uint8_t> RecordAligner::TakeText() {
  std::vector<std::uint8_t> text = Take(waiting_.size());
  const std::string_view letters(reinterpret_cast<const char*>(text.data()), text.size());
  if (letters.starts_with("ES")) in_sources_ = true;
  if (InStr(1, letters, "</SOURCES>", Compare::Text) > 0) in_sources_ = false;
  return text;
}

std::vector<std::uint8_t> RecordAligner::Take(std::size_t size) {
  const auto end = waiting_.begin() + static_cast<std::ptrdiff_t>(size);
  std::vector<std::uint8_t> bytes(waiting_.begin(), end);
  waiting_.erase(waiting_.begin(), end);
  return bytes;
}

// The size of the whole records at the front that belong into one chunk.
std::size_t RecordAligner::WholeRecords() const {
  std::size_t size = 0;
  for (Bytes rest = waiting_; rest.size() >= kHead && BeginAsRecord(rest);) {
    const std::int32_t length = LengthOfRecord(rest);
    if (length <= static_cast<std::int32_t>(kHead)) break;
    const auto record = static_cast<std::size_t>(length);
    if (record > rest.size() || (size > 0 && size + record > kLongestChunk)) break;
    if (!IsReadBehind(KindOf(waiting_), KindOf(rest))) break;
    size += record;
    rest = rest.subspan(record);
  }
  return size;
}

}  // namespace mirelo::app
