#include "app/record_look.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "app/message_bounds.h"
#include "streaming/level1_fields.h"
#include "streaming/stamp_texts.h"

namespace mirelo::app {

namespace {

constexpr std::size_t kHead = 4;  // kind and length
constexpr std::size_t kId = 2;
constexpr std::uint16_t kSymbol = 1;
constexpr std::uint8_t kUnknownWidth = 4;

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

}  // namespace

RecordLook LookAt(std::string_view record) {
  RecordLook look;
  std::size_t at = kHead;
  while (at + kId <= record.size()) {
    const std::uint16_t id = IdAt(record, at);
    if (id >= kWidths.size() && BeginsWithRecord(record.substr(at))) {
      look.next = at;
      return look;
    }
    at += kId;
    const std::size_t width = id < kWidths.size() ? kWidths[id] : kUnknownWidth;
    if (width != kUpToZero) {
      at += width;
      continue;
    }
    const std::size_t zero = record.find('\0', at);
    if (zero == std::string_view::npos) return look;
    if (id == kSymbol) look.symbol = record.substr(at, zero - at);
    at = zero + 1;
  }
  look.fits = at == record.size();
  return look;
}

std::int32_t LengthOf(std::string_view record) {
  return static_cast<std::int16_t>(static_cast<std::uint8_t>(record[2]) | static_cast<std::uint8_t>(record[3])
                                                                              << 8);
}

InnerRecord FindInnerRecord(std::string_view bytes, std::size_t end) {
  InnerRecord found;
  for (std::size_t at = 1; at < std::min(end, bytes.size()); ++at) {
    const std::string_view inner = bytes.substr(at);
    if (inner.size() < kHead + kId) {
      found.may_come = found.may_come || MayBeginRecord(inner);
      continue;
    }
    if (!BeginsWithRecord(inner)) continue;
    const auto length = static_cast<std::size_t>(LengthOf(inner));
    const RecordLook look = LookAt(inner.substr(0, length));
    if (look.next > 0) continue;
    if (length > inner.size()) {
      found.may_come = true;
      continue;
    }
    if (!look.fits || look.symbol.empty()) continue;
    found.begin = at;
    return found;
  }
  return found;
}

}  // namespace mirelo::app
