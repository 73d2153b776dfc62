#pragma once

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <utility>

namespace mirelo::testing {

// Two connected, non-blocking sockets: a test writes into `far`, the loop watches `near`.
struct SocketPair {
  int near = -1;
  int far = -1;

  SocketPair() {
    int ends[2] = {-1, -1};
    ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends);
    near = ends[0];
    far = ends[1];
  }
  ~SocketPair() {
    CloseNear();
    CloseFar();
  }
  SocketPair(const SocketPair&) = delete;
  SocketPair& operator=(const SocketPair&) = delete;

  void Write(std::string_view text) const { (void)::send(far, text.data(), text.size(), MSG_NOSIGNAL); }

  // Up to `limit` bytes that have arrived; none at the end and when nothing is there.
  std::string Read(std::size_t limit = 4096) const {
    std::string text(limit, '\0');
    const ssize_t count = ::recv(near, text.data(), text.size(), 0);
    text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return text;
  }

  void CloseNear() { Close(near); }
  void CloseFar() { Close(far); }

 private:
  static void Close(int& end) {
    if (end >= 0) ::close(std::exchange(end, -1));
  }
};

}  // namespace mirelo::testing
