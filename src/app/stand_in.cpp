#include "app/stand_in.h"

#include <chrono>
#include <string_view>

#include "automation/number.h"
#include "automation/runtime_error.h"

namespace mirelo::app {

namespace {

constexpr std::string_view kHttpLine = "HTTP port ";
constexpr std::string_view kStreamLine = "stream port ";

std::vector<std::string> OnFreePorts(const std::vector<std::string>& arguments) {
  std::vector<std::string> all{"--http-port", "0", "--stream-port", "0", "--exit-with-parent"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return all;
}

int NumberBehind(std::string_view line, std::string_view head) {
  return line.substr(0, head.size()) == head ? RoundToInt32(Val(line.substr(head.size()))) : 0;
}

}  // namespace

StandIn::StandIn(const std::vector<std::string>& arguments)
    : process_(ProgramFolder() / "quotetracker", OnFreePorts(arguments)) {
  while (http_port_ == 0 || stream_port_ == 0) {
    const auto line = process_.ReadLine(std::chrono::seconds(10));
    if (!line) throw RuntimeError(75, "The QuoteTracker stand-in did not start");
    if (const int port = NumberBehind(*line, kHttpLine)) http_port_ = port;
    if (const int port = NumberBehind(*line, kStreamLine)) stream_port_ = port;
  }
}

}  // namespace mirelo::app
