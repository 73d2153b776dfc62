#pragma once

#include <optional>
#include <string>

namespace mirelo::curl {

// Where a request goes.
struct Destination {
  std::string
      origin;  // "http://host:port", without a slash behind it; empty when the host is no name or address
  std::string target;  // as in the request line
};

// The origin of an HTTP server; port 0 is 80. An IPv6 address may stand with or without brackets.
std::string HttpOrigin(const std::string& host, std::uint16_t port);

// Where a request to `from` is to go when its reply redirects it to `location`, which may be relative;
// nothing when that isn't an address that HTTP can go to.
std::optional<Destination> Redirected(const Destination& from, const std::string& location);

}  // namespace mirelo::curl
