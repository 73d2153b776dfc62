#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace mirelo::testing {

// A plain blocking client of 127.0.0.1, which shares no code with the servers that it talks to. Whatever
// keeps it waiting longer than kPatience is an error.
class TcpClient {
 public:
  static constexpr std::chrono::milliseconds kPatience{10'000};

  // `receive_buffer` bytes, or what the machine chooses, wait in the kernel for a client that does not read.
  explicit TcpClient(std::uint16_t port, int receive_buffer = 0)
      : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (receive_buffer > 0) {
      ::setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receive_buffer, sizeof receive_buffer);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) Fail("connect");
    const int on = 1;
    ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  }
  TcpClient(TcpClient&& other) noexcept : socket_(std::exchange(other.socket_, -1)), ended_(other.ended_) {}
  TcpClient& operator=(TcpClient&&) = delete;
  ~TcpClient() {
    if (socket_ >= 0) ::close(socket_);
  }

  void Send(std::string_view bytes) {
    while (!bytes.empty()) {
      const auto count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (count < 0) Fail("send");
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }

  void EndSending() { ::shutdown(socket_, SHUT_WR); }

  // What one recv gives; empty at the end of the connection. Raises std::system_error for a reset.
  std::string ReceiveChunk(std::size_t most = 65536) {
    if (!IsReadable(kPatience)) throw std::runtime_error("nothing came within the client's patience");
    std::string chunk(most, '\0');
    const auto count = ::recv(socket_, chunk.data(), chunk.size(), 0);
    if (count < 0) Fail("recv");
    if (count == 0) ended_ = true;
    chunk.resize(static_cast<std::size_t>(count));
    return chunk;
  }

  // All that comes up to the end of the connection.
  std::string ReceiveAll() {
    std::string all;
    for (;;) {
      const std::string chunk = ReceiveChunk();
      if (chunk.empty()) return all;
      all += chunk;
    }
  }

  // What comes up to and including `end`; up to the end of the connection if it never does.
  std::string ReceiveUntil(std::string_view end) {
    std::string all;
    while (all.find(end) == std::string::npos) {
      const std::string chunk = ReceiveChunk();
      if (chunk.empty()) break;
      all += chunk;
    }
    return all;
  }

  // True when something came, or the connection ended, within the time.
  bool IsReadable(std::chrono::milliseconds within) const {
    pollfd ready{socket_, POLLIN, 0};
    return ::poll(&ready, 1, static_cast<int>(within.count())) > 0;
  }

  bool HasEnded() const { return ended_; }
  int Descriptor() const { return socket_; }

 private:
  [[noreturn]] static void Fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
  }

  int socket_;
  bool ended_ = false;
};

// One HTTP/1.0 exchange: all bytes of the reply.
inline std::string HttpGet(std::uint16_t port, std::string_view resource) {
  TcpClient client(port);
  client.Send("GET " + std::string(resource) + " HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n");
  return client.ReceiveAll();
}

// The body of a reply: what stands behind its head.
inline std::string BodyOf(std::string_view reply) {
  const auto end = reply.find("\r\n\r\n");
  return end == std::string_view::npos ? std::string() : std::string(reply.substr(end + 4));
}

}  // namespace mirelo::testing
