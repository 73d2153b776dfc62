#include "streaming/stamp_texts.h"

#include <cstdint>
#include <cstring>
#include <optional>

#include "automation/ansi.h"
#include "automation/date.h"
#include "automation/format.h"
#include "automation/regional_format.h"
#include "host/clock.h"
#include "host/host.h"

namespace mirelo {

namespace {

std::string WithSeparators(std::string_view stamp) {
  std::string text;
  const auto append = [&](std::string_view separator, std::size_t start, std::size_t count) {
    text += separator;
    AppendAnsi(text, stamp.substr(start, count));
  };
  append("", 0, 2);
  append("/", 2, 2);
  append("/", 4, 4);
  append(" ", 8, 2);
  append(":", 10, 2);
  append(":", 12, 2);
  return text;
}

// The server writes the month first, wherever its stamps are read.
std::string InFormat(std::string stamp, const std::string& format) {
  if (format.empty()) return stamp;
  const RegionalFormat& regional = host::Host::Current().clock().Regional();
  const std::optional<Date> date = ParseDate(stamp, regional, RegionalFormat::DateOrder::MonthDayYear);
  return date ? Format(*date, format, regional) : stamp;
}

}  // namespace

const std::string& StampTexts::Text(std::string_view stamp, const std::string& format) {
  Entry& entry = PlaceOf(stamp);
  if (entry.used && std::memcmp(entry.stamp.data(), stamp.data(), kStampSize) == 0) return entry.text;
  entry.text = InFormat(WithSeparators(stamp), format);
  std::memcpy(entry.stamp.data(), stamp.data(), kStampSize);
  entry.used = true;
  return entry.text;
}

StampTexts::Entry& StampTexts::PlaceOf(std::string_view stamp) {
  if (entries_.empty()) entries_.resize(std::size_t{1} << kPlacesLog2);
  // The first eight bytes and, overlapping them, the last: the fastest changing digits are in the last.
  std::uint64_t head = 0;
  std::uint64_t tail = 0;
  std::memcpy(&head, stamp.data(), sizeof head);
  std::memcpy(&tail, stamp.data() + kStampSize - sizeof tail, sizeof tail);
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio
  return entries_[static_cast<std::size_t>((head ^ tail * kMultiplier) * kMultiplier >> (64 - kPlacesLog2))];
}

}  // namespace mirelo
