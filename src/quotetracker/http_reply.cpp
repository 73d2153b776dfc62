#include "quotetracker/http_reply.h"

namespace mirelo::quotetracker {
namespace {

constexpr std::string_view kGood = "200 OK";
constexpr std::size_t kMostGarbage = 2000;

std::string Reply(std::string_view status_line, std::size_t announced_length, std::string_view body) {
  std::string reply;
  reply.reserve(128 + body.size());
  reply += status_line;
  reply += "\r\nContent-Type: text/plain\r\nContent-Length: ";
  reply += std::to_string(announced_length);
  reply += "\r\n\r\n";
  reply += body;
  return reply;
}

std::string Garbage(Random& random) {
  std::string bytes(static_cast<std::size_t>(random.Between(1, kMostGarbage)), '\0');
  for (char& c : bytes) c = static_cast<char>(random.Next());
  return bytes;
}

}  // namespace

std::string HttpReply(std::string_view status, std::string_view body) {
  return Reply("HTTP/1.0 " + std::string(status), body.size(), body);
}

std::string SpoiltReply(HttpFault fault, std::string_view body, Random& random) {
  std::string good = HttpReply(kGood, body);
  const std::size_t head = good.size() - body.size();
  switch (fault) {
    case HttpFault::kNone:
      return good;
    case HttpFault::kDrop:
    case HttpFault::kReset:
    case HttpFault::kStall:
      return {};
    case HttpFault::kTruncateHead:
      return good.substr(0, head / 2);
    case HttpFault::kTruncateBody:
      return good.substr(0, head + body.size() / 2);
    case HttpFault::kGarbage:
      return Garbage(random);
    case HttpFault::kWrongStatus:
      return Reply("HTTQ/9.9 OK 200", body.size(), body);
    case HttpFault::kShortLength:
      return Reply("HTTP/1.0 200 OK", body.size() / 2, body);
    case HttpFault::kLongLength:
      return Reply("HTTP/1.0 200 OK", body.size() * 2 + 1, body);
  }
  return good;
}

}  // namespace mirelo::quotetracker
