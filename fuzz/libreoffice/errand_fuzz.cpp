// What a program and its office say to each other, said by anybody: it is cut into lines at their ends, and a
// line is an errand or news that is the same when it is told on, or it is nothing.
//
// An input is what comes on the socket.

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "libreoffice/errand/errand.h"
#include "libreoffice/errand/lines.h"

namespace {

using namespace mirelo::libreoffice;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// The lines of what comes before the other side goes.
std::vector<std::string> Received(std::string_view bytes) {
  std::array<int, 2> ends{};
  Require(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) == 0, "a pair of sockets");
  Lines lines(ends[0]);
  const auto sent = ::send(ends[1], bytes.data(), bytes.size(), MSG_DONTWAIT);
  Require(sent == static_cast<std::ptrdiff_t>(bytes.size()), "an input fits into a socket");
  ::close(ends[1]);
  std::vector<std::string> received;
  do {
    lines.Receive();
    while (auto line = lines.Next()) received.push_back(*std::move(line));
  } while (!lines.HasEnded());
  ::close(ends[0]);
  return received;
}

void RequireLines(const std::vector<std::string>& lines, std::string_view bytes) {
  for (const std::string& line : lines) {
    Require(bytes.starts_with(line + '\n'), "lines as they came");
    bytes.remove_prefix(line.size() + 1);
  }
  Require(bytes.find('\n') == std::string_view::npos, "all lines");
}

// A text that is read is told on as one line, which is read as the same.
template <class Read>
void TellOn(std::string_view text, Read read) {
  const auto first = read(text);
  if (!first) return;
  const std::string told = LineOf(*first);
  Require(told.find('\n') == std::string::npos, "one line");
  const auto again = read(told);
  Require(again.has_value(), "it can be read again");
  Require(LineOf(*again) == told, "it is the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto lines = Received(bytes);
  RequireLines(lines, bytes);
  for (const std::string& line : lines) {
    TellOn(line, ErrandOf);
    TellOn(line, NewsOf);
  }
  return 0;
}
