#pragma once

#include <algorithm>
#include <cstddef>
#include <set>
#include <sstream>
#include <string>

#include "support/tested_loop.h"
#ifdef _WIN32
#include "adapters/windows/wininet_client.h"
#else
#include "adapters/curl/curl_internet.h"
#endif

namespace mirelo::testing {

// The HTTP client of this machine, of which the tests of this folder hold.
#ifdef _WIN32
using TestedInternet = windows::WinInetClient;
#else
using TestedInternet = curl::CurlInternet;
#endif

// A request with the lines of its head in one order, and without those that the client may add of its own
// accord.
inline std::string InOrder(const std::string& request) {
#ifdef _WIN32
  const std::set<std::string> added = {"Cache-Control: no-cache", "Pragma: no-cache"};
#else
  const std::set<std::string> added = {};
#endif
  const std::size_t end = std::min(request.find("\r\n\r\n"), request.size());
  std::istringstream head(request.substr(0, end));
  std::string first, line, ordered;
  std::getline(head, first);
  std::multiset<std::string> lines;
  while (std::getline(head, line)) {
    if (line.ends_with('\r')) line.pop_back();
    if (!added.contains(line)) lines.insert(line);
  }
  for (const std::string& each : lines) ordered += each + "\r\n";
  return first + "\n" + ordered + request.substr(end);
}

}  // namespace mirelo::testing
