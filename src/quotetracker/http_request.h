#pragma once

#include <cstddef>
#include <string_view>

namespace mirelo::quotetracker {

// A request as far as the HTTP interface reads it. The views are into the bytes that were parsed.
struct HttpRequest {
  static constexpr std::size_t kMostHead = std::size_t{64} * 1024;  // bytes of request line and headers
  static constexpr std::size_t kMostBody = std::size_t{64} * 1024;

  std::string_view method;
  std::string_view resource;  // path and query as they came, blanks within them included
  std::string_view body;
};

// How far the bytes received so far make a request.
struct HttpParse {
  enum class State { kIncomplete, kComplete, kRefused };

  State state = State::kIncomplete;
  HttpRequest request;       // when complete
  std::string_view refusal;  // when refused: status code and reason, such as "400 Bad Request"
};

// Looks at all bytes that a client has sent. Lines may end with CR LF or LF.
HttpParse ParseHttpRequest(std::string_view received);

}  // namespace mirelo::quotetracker
