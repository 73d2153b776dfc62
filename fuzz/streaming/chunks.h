#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/winsock_library.h"

namespace mirelo::fuzzing {

// An input as the chunks of a stream: each is two bytes of length, the low one first, and as many bytes; the
// last may be shorter. No chunk is longer than what a socket hands over at once.
inline std::vector<std::string> Chunks(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMostInOneEvent = host::SocketConnection::kChunkLimit;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> chunks;
  while (rest.size() > 2) {
    const auto low = static_cast<std::uint8_t>(rest[0]);
    const auto high = static_cast<std::uint8_t>(rest[1]);
    const std::size_t length =
        std::min<std::size_t>(kMostInOneEvent, static_cast<std::size_t>(high) << 8 | low);
    chunks.emplace_back(rest.substr(2, length));
    rest.remove_prefix(std::min(rest.size(), 2 + length));
  }
  return chunks;
}

}  // namespace mirelo::fuzzing
