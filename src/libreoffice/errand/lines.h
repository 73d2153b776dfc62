#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mirelo::libreoffice {

// The lines that a socket brings, and those that go out on it. The socket is the caller's.
class Lines {
 public:
  explicit Lines(int socket) : socket_(socket) {}

  // Takes what has come, without waiting.
  void Receive();
  // The next whole line of it, without its end.
  std::optional<std::string> Next();
  // Whether the other side has gone; what came before may still hold lines.
  bool HasEnded() const { return has_ended_; }

  // Sends a line, waiting for room. What cannot be sent, since the other side has gone, is dropped.
  void Send(std::string line) const;

 private:
  static constexpr std::size_t kLongestLine = std::size_t{1} << 20;

  int socket_;
  std::string received_;
  bool has_ended_ = false;
};

}  // namespace mirelo::libreoffice
