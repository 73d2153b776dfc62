#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "automation/runtime_error.h"

namespace mirelo {

// Bytes as they came, and positions in them, counted from 0. Positions may lie outside: a record says where
// the next one begins, and nothing proves it right.
class WireBytes {
 public:
  explicit WireBytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::int32_t size() const { return static_cast<std::int32_t>(bytes_.size()); }
  std::span<const std::uint8_t> From(std::int32_t position) const {
    return bytes_.subspan(static_cast<std::size_t>(position));
  }

  // Error 9 outside the bytes.
  std::uint8_t At(std::int32_t position) const {
    if (!Holds(position, 1)) throw Errors::SubscriptOutOfRange();
    return bytes_[static_cast<std::size_t>(position)];
  }

  // The number that lies at a position, no byte swapped: the wire is little-endian, and so is every machine
  // that this is built for. 0 when it doesn't lie inside as a whole.
  template <class Number>
  Number NumberAt(std::int32_t position) const {
    static_assert(std::endian::native == std::endian::little);
    Number number = 0;
    if (Holds(position, sizeof number)) std::memcpy(&number, bytes_.data() + position, sizeof number);
    return number;
  }

  // `count` bytes; none when they don't lie inside as a whole.
  std::string_view TextAt(std::int32_t position, std::int32_t count) const {
    return Holds(position, count) ? Text(position, count) : std::string_view();
  }

  // The bytes up to a zero byte; leaves `position` behind it. Error 9 when there is none.
  std::string_view ReadZeroString(std::int32_t& position) const {
    const std::int32_t start = position;
    if (!Holds(start, 1)) throw Errors::SubscriptOutOfRange();
    const void* zero = std::memchr(bytes_.data() + start, 0, static_cast<std::size_t>(size() - start));
    if (zero == nullptr) throw Errors::SubscriptOutOfRange();
    const auto count =
        static_cast<std::int32_t>(static_cast<const std::uint8_t*>(zero) - bytes_.data()) - start;
    position = start + count + 1;
    return Text(start, count);
  }

 private:
  bool Holds(std::int32_t position, std::int64_t count) const {
    return position >= 0 && position + count <= size();
  }
  std::string_view Text(std::int32_t position, std::int32_t count) const {
    return {reinterpret_cast<const char*>(bytes_.data()) + position, static_cast<std::size_t>(count)};
  }

  std::span<const std::uint8_t> bytes_;
};

}  // namespace mirelo
