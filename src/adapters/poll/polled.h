#pragma once

#include <chrono>
#include <optional>
#include <vector>

#ifndef _WIN32
#include <poll.h>
#endif

namespace mirelo::poll {

#ifdef _WIN32
// What poll(2) is given and fills in, for Windows, where there is none. The header of Windows' sockets
// declares the like, but brings macros that would rewrite names of our members.
struct pollfd {
  int fd;
  short events;
  short revents;
};
inline constexpr short POLLIN = 0x01;
inline constexpr short POLLOUT = 0x04;
inline constexpr short POLLERR = 0x08;
inline constexpr short POLLHUP = 0x10;
inline constexpr short POLLNVAL = 0x20;
#endif

// Waits as poll(2) does, and to less than milliseconds where the machine can: up to the limit, or without
// one. How many are ready; 0 also when a signal came. Raises std::system_error.
int WaitFor(std::vector<pollfd>& polled, std::optional<std::chrono::nanoseconds> limit);

}  // namespace mirelo::poll
