#include "adapters/poll/tcp_socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace mirelo::poll {

namespace {

void SetOption(const Descriptor& socket, int level, int option) {
  const int on = 1;
  ::setsockopt(socket.Number(), level, option, &on, sizeof on);
}

TcpSocket::Passed PassedOrErrno(ssize_t count) { return {count, count < 0 ? errno : 0}; }

}  // namespace

TcpSocket TcpSocket::Open() {
  TcpSocket opened;
  opened.descriptor_ =
      Descriptor::Opened(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_TCP));
  SetOption(opened.descriptor_, IPPROTO_TCP, TCP_NODELAY);
  SetOption(opened.descriptor_, SOL_SOCKET, SO_OOBINLINE);
  return opened;
}

int TcpSocket::StartConnecting(Ipv4 ip, std::uint16_t port) {
  sockaddr_in to = {};
  to.sin_family = AF_INET;
  to.sin_port = htons(port);
  std::memcpy(&to.sin_addr, ip.data(), ip.size());
  if (::connect(Number(), reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0) return 0;
  return errno == EINPROGRESS ? 0 : errno;
}

int TcpSocket::TakeError() {
  int error = 0;
  socklen_t size = sizeof error;
  ::getsockopt(Number(), SOL_SOCKET, SO_ERROR, &error, &size);
  return error;
}

TcpSocket::Passed TcpSocket::Send(const char* bytes, std::size_t size) {
  return PassedOrErrno(::send(Number(), bytes, size, MSG_NOSIGNAL));
}

TcpSocket::Passed TcpSocket::Receive(char* bytes, std::size_t size) {
  return PassedOrErrno(::recv(Number(), bytes, size, 0));
}

void TcpSocket::EndSending() { ::shutdown(Number(), SHUT_WR); }

void TcpSocket::EndAfterFailure() { ::shutdown(Number(), SHUT_RDWR); }

bool TcpSocket::WouldBlock(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

// The system calls a reset by a peer that had ended its own direction before a broken pipe.
std::string TcpSocket::ReasonFor(int error) {
  return std::generic_category().message(error == EPIPE ? ECONNRESET : error);
}

}  // namespace mirelo::poll
