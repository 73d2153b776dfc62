#include <winsock2.h>

#include <ws2tcpip.h>

#undef Yield

#include <cstring>

#include "adapters/poll/name_resolver.h"
#include "adapters/poll/winsock_errors.h"

namespace mirelo::poll {

NameResolver::Answer NameResolver::AskSystem(const std::string& name) {
  StartWinsock();
  addrinfo hints = {};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int failure = ::getaddrinfo(name.c_str(), nullptr, &hints, &found);
  if (failure != 0) return {std::nullopt, WinsockText(failure)};
  Ipv4 ip{};
  std::memcpy(ip.data(), &reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr, ip.size());
  ::freeaddrinfo(found);
  return {ip, {}};
}

}  // namespace mirelo::poll
