#include "support/tcp_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace mirelo::testing {

namespace {

[[noreturn]] void RaiseErrorOf(const char* call) {
  throw std::system_error(errno, std::generic_category(), call);
}

}  // namespace

TcpClient::TcpClient(std::uint16_t port, int receive_buffer)
    : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  if (receive_buffer > 0) {
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receive_buffer, sizeof receive_buffer);
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) RaiseErrorOf("connect");
  const int on = 1;
  ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}
TcpClient::TcpClient(TcpClient&& other) noexcept
    : socket_(std::exchange(other.socket_, -1)), ended_(other.ended_) {}
TcpClient::~TcpClient() {
  if (socket_ >= 0) ::close(socket_);
}

void TcpClient::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0) RaiseErrorOf("send");
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void TcpClient::EndSending() { ::shutdown(socket_, SHUT_WR); }

std::string TcpClient::ReceiveChunk(std::size_t most) {
  if (!IsReadable(kPatience)) throw std::runtime_error("nothing came within the client's patience");
  std::string chunk(most, '\0');
  const auto count = ::recv(socket_, chunk.data(), chunk.size(), 0);
  if (count < 0) RaiseErrorOf("recv");
  if (count == 0) ended_ = true;
  chunk.resize(static_cast<std::size_t>(count));
  return chunk;
}

std::string TcpClient::ReceiveAll() {
  std::string all;
  for (;;) {
    const std::string chunk = ReceiveChunk();
    if (chunk.empty()) return all;
    all += chunk;
  }
}

std::string TcpClient::ReceiveUntil(std::string_view end) {
  std::string all;
  while (all.find(end) == std::string::npos) {
    const std::string chunk = ReceiveChunk();
    if (chunk.empty()) break;
    all += chunk;
  }
  return all;
}

bool TcpClient::IsReadable(std::chrono::milliseconds within) const {
  pollfd ready{socket_, POLLIN, 0};
  return ::poll(&ready, 1, static_cast<int>(within.count())) > 0;
}

std::string HttpGet(std::uint16_t port, std::string_view resource) {
  TcpClient client(port);
  client.Send("GET " + std::string(resource) + " HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n");
  return client.ReceiveAll();
}

std::string BodyOf(std::string_view reply) {
  const auto end = reply.find("\r\n\r\n");
  return end == std::string_view::npos ? std::string() : std::string(reply.substr(end + 4));
}

}  // namespace mirelo::testing
