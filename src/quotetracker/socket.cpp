#include "quotetracker/socket.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace mirelo::quotetracker {
namespace {

constexpr int kBacklog = 1024;

[[noreturn]] void Refused(const std::string& address, std::uint16_t port, const char* reason) {
  throw std::runtime_error("cannot listen on " + address + " port " + std::to_string(port) + ": " + reason);
}

bool WouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }

void SetOption(const poll::Descriptor& socket, int level, int name, int value) {
  ::setsockopt(socket.Number(), level, name, &value, sizeof value);
}

}  // namespace

poll::Descriptor ListenOn(const std::string& address, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV | AI_PASSIVE;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int failure = ::getaddrinfo(address.c_str(), std::to_string(port).c_str(), &hints, &found);
  if (failure != 0) Refused(address, port, ::gai_strerror(failure));
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> release(found, &::freeaddrinfo);

  poll::Descriptor socket(::socket(found->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket.IsOpen()) Refused(address, port, std::strerror(errno));
  // Connections of a server that has just ended must not keep the port from the next.
  SetOption(socket, SOL_SOCKET, SO_REUSEADDR, 1);
  if (::bind(socket.Number(), found->ai_addr, found->ai_addrlen) != 0 ||
      ::listen(socket.Number(), kBacklog) != 0) {
    Refused(address, port, std::strerror(errno));
  }
  return socket;
}

std::uint16_t LocalPort(const poll::Descriptor& socket) {
  sockaddr_storage address{};
  socklen_t length = sizeof address;
  if (::getsockname(socket.Number(), reinterpret_cast<sockaddr*>(&address), &length) != 0) return 0;
  if (address.ss_family == AF_INET6) return ntohs(reinterpret_cast<sockaddr_in6*>(&address)->sin6_port);
  return ntohs(reinterpret_cast<sockaddr_in*>(&address)->sin_port);
}

Accepted Accept(const poll::Descriptor& listener) {
  for (;;) {
    poll::Descriptor socket(::accept4(listener.Number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    // What is sent in one call should arrive as one chunk.
    if (socket.IsOpen()) SetOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
    // A client that left while it waited is no reason to stop.
    if (!socket.IsOpen() && (errno == ECONNABORTED || errno == EINTR)) continue;
    const bool refused = !socket.IsOpen() && !WouldBlock();
    return {std::move(socket), refused};
  }
}

Transfer Receive(const poll::Descriptor& socket, std::span<char> buffer) {
  const auto count = ::recv(socket.Number(), buffer.data(), buffer.size(), 0);
  if (count > 0) return {count, false};
  if (count == 0) return {0, true};
  return {WouldBlock() ? 0 : -1, false};
}

Transfer Send(const poll::Descriptor& socket, std::string_view bytes) {
  const auto count = ::send(socket.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (count >= 0) return {count, false};
  return {WouldBlock() ? 0 : -1, false};
}

void EndSending(const poll::Descriptor& socket) { ::shutdown(socket.Number(), SHUT_WR); }

void ResetOnClose(const poll::Descriptor& socket) {
  const linger immediately{1, 0};
  ::setsockopt(socket.Number(), SOL_SOCKET, SO_LINGER, &immediately, sizeof immediately);
}

}  // namespace mirelo::quotetracker
