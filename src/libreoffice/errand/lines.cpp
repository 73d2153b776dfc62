#include "libreoffice/errand/lines.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace mirelo::libreoffice {

void Lines::Receive() {
  std::array<char, 4096> bytes;
  while (!has_ended_ && received_.size() <= kLongestLine) {
    const auto count = ::recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
    has_ended_ = count <= 0;
    if (count > 0) received_.append(bytes.data(), static_cast<std::size_t>(count));
  }
  if (std::min(received_.find('\n'), received_.size()) <= kLongestLine) return;
  received_.clear();
  has_ended_ = true;
}

std::optional<std::string> Lines::Next() {
  const auto end = received_.find('\n');
  if (end == std::string::npos) return std::nullopt;
  std::string line = received_.substr(0, end);
  received_.erase(0, end + 1);
  return line;
}

void Lines::Send(std::string line) const {
  line += '\n';
  std::string_view rest = line;
  while (!rest.empty()) {
    const auto count = ::send(socket_, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (count > 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
      pollfd room{.fd = socket_, .events = POLLOUT, .revents = 0};
      ::poll(&room, 1, -1);
    } else if (errno != EINTR) {
      return;
    }
  }
}

}  // namespace mirelo::libreoffice
