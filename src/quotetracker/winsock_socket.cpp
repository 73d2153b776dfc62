// Windows' headers first: ours use names that their macros take.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <stdexcept>

#include "adapters/poll/winsock_errors.h"
#include "quotetracker/socket.h"

namespace mirelo::quotetracker {
namespace {

constexpr int kBacklog = 1024;

SOCKET Handle(const poll::Descriptor& socket) { return static_cast<SOCKET>(socket.Number()); }

[[noreturn]] void Refused(const std::string& address, std::uint16_t port, int error) {
  throw std::runtime_error("cannot listen on " + address + " port " + std::to_string(port) + ": " +
                           poll::WinsockText(error));
}

bool WouldBlock() { return ::WSAGetLastError() == WSAEWOULDBLOCK; }

void NeverBlock(const poll::Descriptor& socket) {
  u_long on = 1;
  ::ioctlsocket(Handle(socket), static_cast<long>(FIONBIO), &on);
}

int AtMostInt(std::size_t size) { return static_cast<int>(std::min<std::size_t>(size, INT_MAX)); }

}  // namespace

// A port is free here as soon as its server has ended. SO_REUSEADDR would share it with one that has not.
poll::Descriptor ListenOn(const std::string& address, std::uint16_t port) {
  poll::StartWinsock();
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST | AI_PASSIVE;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int failure = ::getaddrinfo(address.c_str(), std::to_string(port).c_str(), &hints, &found);
  if (failure != 0) Refused(address, port, failure);
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> release(found, &::freeaddrinfo);

  poll::Descriptor socket(static_cast<int>(::WSASocketW(found->ai_family, SOCK_STREAM, 0, nullptr, 0,
                                                        WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)));
  if (!socket.IsOpen()) Refused(address, port, ::WSAGetLastError());
  NeverBlock(socket);
  if (::bind(Handle(socket), found->ai_addr, static_cast<int>(found->ai_addrlen)) != 0 ||
      ::listen(Handle(socket), kBacklog) != 0) {
    Refused(address, port, ::WSAGetLastError());
  }
  return socket;
}

std::uint16_t LocalPort(const poll::Descriptor& socket) {
  sockaddr_storage address{};
  int length = sizeof address;
  if (::getsockname(Handle(socket), reinterpret_cast<sockaddr*>(&address), &length) != 0) return 0;
  if (address.ss_family == AF_INET6) return ::ntohs(reinterpret_cast<sockaddr_in6*>(&address)->sin6_port);
  return ::ntohs(reinterpret_cast<sockaddr_in*>(&address)->sin_port);
}

Accepted Accept(const poll::Descriptor& listener) {
  for (;;) {
    poll::Descriptor socket(static_cast<int>(::accept(Handle(listener), nullptr, nullptr)));
    if (socket.IsOpen()) {
      NeverBlock(socket);
      // What is sent in one call should arrive as one chunk.
      const int on = 1;
      ::setsockopt(Handle(socket), IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
    }
    // A client that left while it waited is no reason to stop.
    if (!socket.IsOpen() && ::WSAGetLastError() == WSAECONNRESET) continue;
    const bool refused = !socket.IsOpen() && !WouldBlock();
    return {std::move(socket), refused};
  }
}

Transfer Receive(const poll::Descriptor& socket, std::span<char> buffer) {
  const int count = ::recv(Handle(socket), buffer.data(), AtMostInt(buffer.size()), 0);
  if (count > 0) return {count, false};
  if (count == 0) return {0, true};
  return {WouldBlock() ? 0 : -1, false};
}

Transfer Send(const poll::Descriptor& socket, std::string_view bytes) {
  const int count = ::send(Handle(socket), bytes.data(), AtMostInt(bytes.size()), 0);
  if (count >= 0) return {count, false};
  return {WouldBlock() ? 0 : -1, false};
}

void EndSending(const poll::Descriptor& socket) { ::shutdown(Handle(socket), SD_SEND); }

void ResetOnClose(const poll::Descriptor& socket) {
  const linger immediately{1, 0};
  ::setsockopt(Handle(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&immediately),
               sizeof immediately);
}

}  // namespace mirelo::quotetracker
