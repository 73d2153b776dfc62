#include "quotetracker/http_request.h"

#include <charconv>
#include <optional>

#include "quotetracker/ascii.h"

namespace mirelo::quotetracker {
namespace {

constexpr std::string_view kBadRequest = "400 Bad Request";
constexpr std::string_view kBodyTooLarge = "413 Content Too Large";
constexpr std::string_view kHeadTooLarge = "431 Request Header Fields Too Large";
constexpr std::string_view kNoSuchMethod = "501 Not Implemented";

HttpParse Refused(std::string_view refusal) { return {HttpParse::State::kRefused, {}, refusal}; }

// Takes one line with its end off the text.
std::string_view TakeLine(std::string_view& text) {
  const auto end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The length of the head with its blank line; nothing while that has not come.
std::optional<std::size_t> HeadLength(std::string_view received) {
  for (auto end = received.find('\n'); end != std::string_view::npos; end = received.find('\n', end + 1)) {
    const std::string_view rest = received.substr(end + 1);
    if (rest.starts_with('\n')) return end + 2;
    if (rest.starts_with("\r\n")) return end + 3;
  }
  return std::nullopt;
}

// METHOD blank resource blank HTTP/digit.digit
bool ParseRequestLine(std::string_view line, HttpRequest& request) {
  const auto first = line.find(' ');
  const auto last = line.rfind(' ');
  if (first == std::string_view::npos || first == 0 || last == first) return false;
  const std::string_view version = line.substr(last + 1);
  if (version.size() != 8 || !version.starts_with("HTTP/1.")) return false;
  request.method = line.substr(0, first);
  request.resource = Trimmed(line.substr(first, last - first));
  return request.resource.starts_with('/');
}

// The announced length of the body; nothing when it is no number.
std::optional<std::size_t> ContentLength(std::string_view headers) {
  while (!headers.empty()) {
    const std::string_view line = TakeLine(headers);
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || !SameText(line.substr(0, colon), "Content-Length")) continue;
    const std::string_view number = Trimmed(line.substr(colon + 1));
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), length);
    if (error != std::errc{} || end != number.data() + number.size()) return std::nullopt;
    return length;
  }
  return 0;
}

}  // namespace

HttpParse ParseHttpRequest(std::string_view received) {
  const auto head_length = HeadLength(received.substr(0, HttpRequest::kMostHead));
  if (!head_length) return received.size() < HttpRequest::kMostHead ? HttpParse{} : Refused(kHeadTooLarge);

  std::string_view head = received.substr(0, *head_length);
  HttpParse parse;
  if (!ParseRequestLine(TakeLine(head), parse.request)) return Refused(kBadRequest);
  if (parse.request.method != "GET" && parse.request.method != "POST") return Refused(kNoSuchMethod);

  const auto content_length = ContentLength(head);
  if (!content_length) return Refused(kBadRequest);
  if (*content_length > HttpRequest::kMostBody) return Refused(kBodyTooLarge);
  if (received.size() - *head_length < *content_length) return {};
  parse.request.body = received.substr(*head_length, *content_length);
  parse.state = HttpParse::State::kComplete;
  return parse;
}

}  // namespace mirelo::quotetracker
