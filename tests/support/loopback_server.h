#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace mirelo::testing {

// A TCP server on 127.0.0.1, at a port that the kernel chose. Each connection is served by the same script, a
// function that blocks as it likes, on a thread of its own. Destruction breaks off the scripts and joins the
// threads.
//
//   LoopbackServer server([](LoopbackServer::Peer& peer) {
//     peer.ReceiveUntil("\r\n\r\n");
//     peer.Send("HTTP/1.0 200 OK\r\n\r\nOK\n");
//   });
//
// A script that returns closes its connection. One that throws ends the program. Calls of Peer leave a script
// at once when the server is being destroyed. std::system_error is raised where there is no socket for it.
class LoopbackServer {
 public:
  class Peer;
  using Script = std::function<void(Peer& peer)>;

  static constexpr std::uint32_t kLoopback = 0x7F000001;  // 127.0.0.1 in the host's order of bytes

  explicit LoopbackServer(Script script);
  // At an address of the loopback, as kLoopback is one, and a port of the test's choice, where another server
  // may have stood a moment ago.
  LoopbackServer(Script script, std::uint32_t address, std::uint16_t port);
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::uint16_t Port() const;
  // "127.0.0.1:port"
  std::string Address() const;

  // What the script of a connection, counted from 0, has received so far. Empty for one that has not come.
  std::string Received(std::size_t connection = 0) const;
  // How many connections have come so far.
  std::size_t Connections() const;

  // Lets one Peer::Await go on, the next one if none waits now.
  void Go();
  // Blocks until the scripts of `count` connections have ended. What they wrote may be read then.
  void WaitForScripts(std::size_t count);
  // Accepts nothing more, breaks off the scripts and waits for them to end.
  void Stop();

  // A socket bound to a port of that address, to a free one, which is stored in `port`, if that is 0. Nobody
  // listens there yet.
  static int BoundSocket(std::uint16_t& port, std::uint32_t at = kLoopback);

 private:
  class Threads;
  std::unique_ptr<Threads> threads_;
};

// The server's end of one connection, as its script sees it.
class LoopbackServer::Peer {
 public:
  Peer(Threads& threads, int socket, std::size_t index);
  ~Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  // The connection's number, counted from 0.
  std::size_t Index() const { return index_; }

  // Returns when all bytes are on their way; false when the client is gone.
  bool Send(std::string_view bytes);

  // Up to and including `end`; all that came when the client is gone before.
  std::string ReceiveUntil(std::string_view end);
  // `count` bytes; fewer when the client is gone before.
  std::string Receive(std::size_t count);
  // What has come, at least one byte; empty when the client is gone.
  std::string ReceiveSome();
  // All until the client closes.
  std::string ReceiveAll();

  // Blocks until the test calls Go() of the server.
  void Await();

  // Blocks for so long.
  void Rest(std::chrono::milliseconds time);

  // Whether the client ended the connection by a reset, as far as receiving has found out.
  bool SawReset() const { return saw_reset_; }

  // Ends the outgoing direction; the client sees the end, and what it sends can still be received.
  void ShutdownWrite();
  void Close();
  // Closes so that the client sees a reset.
  void Reset();

 private:
  void Wait(short events);
  bool ReadMore();
  std::string Take(std::size_t count);

  Threads& threads_;
  int socket_;
  std::size_t index_;
  std::string unread_;
  bool saw_reset_ = false;
};

// A port of 127.0.0.1 that refuses connections for as long as this lives.
class RefusingPort {
 public:
  RefusingPort();
  ~RefusingPort();
  RefusingPort(const RefusingPort&) = delete;
  RefusingPort& operator=(const RefusingPort&) = delete;

  std::uint16_t Port() const { return port_; }
  std::string Address() const;

 private:
  std::uint16_t port_ = 0;
  int socket_;
};

}  // namespace mirelo::testing
