#pragma once

#include <chrono>
#include <cstdint>

namespace mirelo::host {

// How long the other side may take for one step before a request is given up.
struct HttpTimeouts {
  static constexpr std::chrono::milliseconds kForever = std::chrono::hours(24 * 365);

  // Sets what an option of WinInetApi means, in milliseconds; a value below 1 is for ever. The options of
  // data connections, which HTTP has none of, are taken and have no effect. False for an option that is no
  // timeout.
  bool Set(std::uint32_t option, std::int32_t value);

  std::chrono::milliseconds connect = kForever;
  std::chrono::milliseconds send = kForever;     // without taking any of the request
  std::chrono::milliseconds receive = kForever;  // without sending any of the reply
};

}  // namespace mirelo::host
