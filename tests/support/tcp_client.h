#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace mirelo::testing {

// A plain blocking client of 127.0.0.1, which shares no code with the servers that it talks to. Whatever
// keeps it waiting longer than kPatience is an error; what its socket refuses raises std::system_error.
class TcpClient {
 public:
  static constexpr std::chrono::milliseconds kPatience{10'000};

  // `receive_buffer` bytes, or what the machine chooses, wait in the kernel for a client that does not read.
  explicit TcpClient(std::uint16_t port, int receive_buffer = 0);
  TcpClient(TcpClient&& other) noexcept;
  TcpClient& operator=(TcpClient&&) = delete;
  ~TcpClient();

  void Send(std::string_view bytes);
  void EndSending();

  // What one recv gives; empty at the end of the connection. Raises std::system_error for a reset.
  std::string ReceiveChunk(std::size_t most = 65536);
  // All that comes up to the end of the connection.
  std::string ReceiveAll();
  // What comes up to and including `end`; up to the end of the connection if it never does.
  std::string ReceiveUntil(std::string_view end);

  // True when something came, or the connection ended, within the time.
  bool IsReadable(std::chrono::milliseconds within) const;

  bool HasEnded() const { return ended_; }
  int Descriptor() const { return socket_; }

 private:
  int socket_;
  bool ended_ = false;
};

// One HTTP/1.0 exchange: all bytes of the reply.
std::string HttpGet(std::uint16_t port, std::string_view resource);

// The body of a reply: what stands behind its head.
std::string BodyOf(std::string_view reply);

}  // namespace mirelo::testing
