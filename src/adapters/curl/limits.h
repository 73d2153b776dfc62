#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace mirelo::curl {

// What a reply may come to before it is broken off. No server that means well gets there.
struct Limits {
  // Bytes of one line of the headers: libcurl takes no longer ones.
  static constexpr std::size_t kHeadLine = std::size_t{100} << 10;

  std::size_t head = std::size_t{256} << 10;     // bytes, with those of interim replies and of trailers
  std::uint64_t body = std::uint64_t{64} << 20;  // bytes
  int redirects = 10;
  // The time that a transfer may take from its request to the end of its reply, redirects included. Where a
  // client allows more than this for one step alone, the whole may take as long as that step.
  std::chrono::milliseconds time = std::chrono::minutes(5);
};

}  // namespace mirelo::curl
