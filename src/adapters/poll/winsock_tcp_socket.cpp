#include <winsock2.h>

#include <algorithm>
#include <climits>
#include <cstring>

#include "adapters/poll/tcp_socket.h"
#include "adapters/poll/winsock_errors.h"

namespace mirelo::poll {

namespace {

SOCKET Handle(const TcpSocket& socket) { return static_cast<SOCKET>(socket.Number()); }

void SetOption(const TcpSocket& socket, int level, int option) {
  const int on = 1;
  ::setsockopt(Handle(socket), level, option, reinterpret_cast<const char*>(&on), sizeof on);
}

int AtMostInt(std::size_t size) { return static_cast<int>(std::min<std::size_t>(size, INT_MAX)); }

}  // namespace

// Handles of sockets are small numbers, whatever their type has room for. They are not handed to processes
// that this one starts.
TcpSocket TcpSocket::Open() {
  StartWinsock();
  TcpSocket opened;
  opened.descriptor_ = Descriptor::Opened(static_cast<int>(::WSASocketW(
      AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0, WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)));
  u_long never_block = 1;
  ::ioctlsocket(Handle(opened), static_cast<long>(FIONBIO), &never_block);
  SetOption(opened, IPPROTO_TCP, TCP_NODELAY);
  SetOption(opened, SOL_SOCKET, SO_OOBINLINE);
  return opened;
}

int TcpSocket::StartConnecting(Ipv4 ip, std::uint16_t port) {
  sockaddr_in to = {};
  to.sin_family = AF_INET;
  to.sin_port = ::htons(port);
  std::memcpy(&to.sin_addr, ip.data(), ip.size());
  if (::connect(Handle(*this), reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0) return 0;
  const int error = ::WSAGetLastError();
  return error == WSAEWOULDBLOCK ? 0 : error;
}

int TcpSocket::TakeError() {
  int error = 0;
  int size = sizeof error;
  ::getsockopt(Handle(*this), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size);
  return error;
}

TcpSocket::Passed TcpSocket::Send(const char* bytes, std::size_t size) {
  const int count = ::send(Handle(*this), bytes, AtMostInt(size), 0);
  return {count, count < 0 ? ::WSAGetLastError() : 0};
}

TcpSocket::Passed TcpSocket::Receive(char* bytes, std::size_t size) {
  const int count = ::recv(Handle(*this), bytes, AtMostInt(size), 0);
  return {count, count < 0 ? ::WSAGetLastError() : 0};
}

void TcpSocket::EndSending() { ::shutdown(Handle(*this), SD_SEND); }

// An end of receiving would lose what has come. The failure that sending met is met by receiving as well.
void TcpSocket::EndAfterFailure() { ::shutdown(Handle(*this), SD_SEND); }

bool TcpSocket::WouldBlock(int error) { return error == WSAEWOULDBLOCK || error == WSAEINTR; }

// The system says of a reset that came while it was sending that it broke the connection itself, and later
// that nothing can be sent any more.
std::string TcpSocket::ReasonFor(int error) {
  return WinsockText(error == WSAECONNABORTED || error == WSAESHUTDOWN ? WSAECONNRESET : error);
}

}  // namespace mirelo::poll
