#include <cerrno>
#include <ctime>
#include <system_error>

#include "adapters/poll/polled.h"

namespace mirelo::poll {

int WaitFor(std::vector<pollfd>& polled, std::optional<std::chrono::nanoseconds> limit) {
  timespec time{};
  if (limit) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(*limit);
    time = {seconds.count(), (*limit - seconds).count()};
  }
  const int count = ::ppoll(polled.data(), polled.size(), limit ? &time : nullptr, nullptr);
  if (count >= 0) return count;
  if (errno != EINTR && errno != EAGAIN) throw std::system_error(errno, std::generic_category(), "poll");
  return 0;
}

}  // namespace mirelo::poll
