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

  // Takes what has come, without waiting, up to a little more than the longest line: the rest stays in the
  // socket until lines have been taken from here. Who sends a longer line is taken for gone, and that line
  // for nothing.
  void Receive();
  // The next whole line of it, without its end.
  std::optional<std::string> Next();
  // Whether the other side has gone; what came before may still hold lines.
  bool HasEnded() const { return has_ended_; }

  // Sends a line, waiting for room. What cannot be sent, since the other side has gone, is dropped.
  void Send(std::string line) const;

  // Of bytes without the line's end. An errand names as many tickers as a person does.
  static constexpr std::size_t kLongestLine = std::size_t{1} << 20;

 private:
  int socket_;
  std::string received_;
  bool has_ended_ = false;
};

}  // namespace mirelo::libreoffice
