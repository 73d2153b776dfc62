#include <winsock2.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <system_error>

namespace {

// Windows' values, before ours take their names.
constexpr short kIn = POLLIN;
constexpr short kOut = POLLOUT;
constexpr short kError = POLLERR;
constexpr short kHangUp = POLLHUP;
constexpr short kNotOpen = POLLNVAL;

}  // namespace

#undef POLLIN
#undef POLLOUT
#undef POLLERR
#undef POLLHUP
#undef POLLNVAL
#include "adapters/poll/polled.h"

namespace mirelo::poll {

namespace {

struct Pair {
  short ours;
  short theirs;
};
constexpr std::array kAsked{Pair{POLLIN, kIn}, Pair{POLLOUT, kOut}};
constexpr std::array kTold{Pair{POLLIN, kIn}, Pair{POLLOUT, kOut}, Pair{POLLERR, kError},
                           Pair{POLLHUP, kHangUp}, Pair{POLLNVAL, kNotOpen}};

short Theirs(short events) {
  int bits = 0;
  for (const Pair& pair : kAsked) bits |= (events & pair.ours) != 0 ? pair.theirs : 0;
  return static_cast<short>(bits);
}

short Ours(short events) {
  int bits = 0;
  for (const Pair& pair : kTold) bits |= (events & pair.theirs) != 0 ? pair.ours : 0;
  return static_cast<short>(bits);
}

// Whole milliseconds, and no wait is cut short; the longest that it takes is 24 days, after which the caller
// looks again.
INT MillisecondsOf(std::optional<std::chrono::nanoseconds> limit) {
  constexpr std::chrono::milliseconds kLongest(0x7FFFFFFF);
  if (!limit) return -1;
  return static_cast<INT>(std::min(std::chrono::ceil<std::chrono::milliseconds>(*limit), kLongest).count());
}

// For a wait that was refused because of them. How many there are.
int FindThoseNotOpen(std::vector<WSAPOLLFD>& asked) {
  int count = 0;
  for (WSAPOLLFD& each : asked) {
    int kind = 0;
    int size = sizeof kind;
    const bool is_open =
        ::getsockopt(each.fd, SOL_SOCKET, SO_TYPE, reinterpret_cast<char*>(&kind), &size) == 0;
    each.revents = is_open ? SHORT{0} : kNotOpen;
    count += is_open ? 0 : 1;
  }
  return count;
}

}  // namespace

int WaitFor(std::vector<pollfd>& polled, std::optional<std::chrono::nanoseconds> limit) {
  std::vector<WSAPOLLFD> asked;  // it takes neither an empty array nor a negative descriptor
  std::vector<pollfd*> owners;
  for (pollfd& each : polled) {
    each.revents = 0;
    if (each.fd < 0) continue;
    asked.push_back({static_cast<SOCKET>(each.fd), Theirs(each.events), 0});
    owners.push_back(&each);
  }
  const INT time = MillisecondsOf(limit);
  if (asked.empty()) {
    ::Sleep(time < 0 ? INFINITE : static_cast<DWORD>(time));
    return 0;
  }
  int count = ::WSAPoll(asked.data(), static_cast<ULONG>(asked.size()), time);
  if (count == SOCKET_ERROR) {
    const int error = ::WSAGetLastError();
    if (error == WSAENOTSOCK) count = FindThoseNotOpen(asked);
    if (count <= 0) throw std::system_error(error, std::system_category(), "WSAPoll");
  }
  for (std::size_t i = 0; i < asked.size(); ++i) owners[i]->revents = Ours(asked[i].revents);
  return count;
}

}  // namespace mirelo::poll
