#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <system_error>

#include "adapters/poll/name_resolver.h"

namespace mirelo::poll {

NameResolver::Answer NameResolver::AskSystem(const std::string& name) {
  addrinfo hints = {};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int failure = ::getaddrinfo(name.c_str(), nullptr, &hints, &found);
  if (failure == EAI_SYSTEM) return {std::nullopt, std::generic_category().message(errno)};
  if (failure != 0) return {std::nullopt, ::gai_strerror(failure)};
  Ipv4 ip{};
  std::memcpy(ip.data(), &reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr, ip.size());
  ::freeaddrinfo(found);
  return {ip, {}};
}

}  // namespace mirelo::poll
