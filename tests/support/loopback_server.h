#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

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
// at once when the server is being destroyed.
class LoopbackServer {
 public:
  class Peer;
  using Script = std::function<void(Peer& peer)>;

  explicit LoopbackServer(Script script) : LoopbackServer(std::move(script), INADDR_LOOPBACK, 0) {}
  // At an address of the loopback (in the host's order of bytes) and a port of the test's choice, where
  // another server may have stood a moment ago.
  LoopbackServer(Script script, std::uint32_t address, std::uint16_t port)
      : script_(std::move(script)),
        port_(port),
        listener_(BoundSocket(port_, address)),
        stop_(::eventfd(0, EFD_CLOEXEC)) {
    if (stop_ < 0 || ::listen(listener_, SOMAXCONN) != 0) {
      throw std::system_error(errno, std::generic_category(), "listen");
    }
    acceptor_ = std::thread([this] { Accept(); });
  }
  ~LoopbackServer() { Stop(); }
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::uint16_t Port() const { return port_; }
  // "127.0.0.1:port"
  std::string Address() const { return "127.0.0.1:" + std::to_string(port_); }

  // What the script of a connection, counted from 0, has received so far. Empty for one that has not come.
  std::string Received(std::size_t connection = 0) const {
    const std::lock_guard lock(mutex_);
    return connection < served_.size() ? served_[connection].received : std::string();
  }
  // How many connections have come so far.
  std::size_t Connections() const {
    const std::lock_guard lock(mutex_);
    return served_.size();
  }

  // Lets one Peer::Await go on, the next one if none waits now.
  void Go() {
    const std::lock_guard lock(mutex_);
    ++permits_;
    changed_.notify_all();
  }
  // Blocks until the scripts of `count` connections have ended. What they wrote may be read then.
  void WaitForScripts(std::size_t count) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return ended_ >= count; });
  }
  // Accepts nothing more, breaks off the scripts and waits for them to end.
  void Stop() {
    if (!acceptor_.joinable()) return;
    {
      const std::lock_guard lock(mutex_);
      stopped_ = true;
      changed_.notify_all();
    }
    ::eventfd_write(stop_, 1);  // never taken back: all that poll it see it
    acceptor_.join();
    for (Served& served : served_) {
      if (served.thread.joinable()) served.thread.join();
    }
    ::close(listener_);
    ::close(stop_);
  }

  // A socket bound to a port of that address, to a free one, which is stored in `port`, if that is 0. Nobody
  // listens there yet.
  static int BoundSocket(std::uint16_t& port, std::uint32_t at = INADDR_LOOPBACK) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    if (port != 0) ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(at);
    address.sin_port = htons(port);
    socklen_t size = sizeof address;
    if (socket < 0 || ::bind(socket, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
      throw std::system_error(errno, std::generic_category(), "bind");
    }
    port = ntohs(address.sin_port);
    return socket;
  }

 private:
  struct Stopped {};
  struct Served {
    std::thread thread;
    std::string received;
    bool ended = false;
  };

  void Accept() {
    while (Wait(listener_, POLLIN)) {
      const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
      if (socket < 0) continue;
      const std::lock_guard lock(mutex_);
      JoinTheEnded();
      const std::size_t index = served_.size();
      served_.emplace_back().thread = std::thread([this, socket, index] { Serve(socket, index); });
    }
  }

  // A thread that has set its `ended` needs the mutex no more.
  void JoinTheEnded() {
    for (Served& served : served_) {
      if (served.ended && served.thread.joinable()) served.thread.join();
    }
  }

  inline void Serve(int socket, std::size_t index);

  // Waits for events of a socket; false when the server is being stopped.
  bool Wait(int socket, short events) const {
    pollfd set[] = {{stop_, POLLIN, 0}, {socket, events, 0}};
    while (::poll(set, 2, -1) < 0 && errno == EINTR) {
    }
    return set[0].revents == 0;
  }

  Script script_;
  std::uint16_t port_ = 0;
  int listener_;
  int stop_;
  std::thread acceptor_;

  mutable std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  std::deque<Served> served_;  // by the number of the connection
  std::size_t ended_ = 0;
  int permits_ = 0;
  bool stopped_ = false;
};

// The server's end of one connection, as its script sees it.
class LoopbackServer::Peer {
 public:
  Peer(LoopbackServer& server, int socket, std::size_t index)
      : server_(server), socket_(socket), index_(index) {
    const int on = 1;
    ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  }
  ~Peer() { Close(); }
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  // The connection's number, counted from 0.
  std::size_t Index() const { return index_; }

  // Returns when all bytes are on their way; false when the client is gone.
  bool Send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (count >= 0) {
        bytes.remove_prefix(static_cast<std::size_t>(count));
      } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
        Wait(POLLOUT);
      } else if (errno != EINTR) {
        return false;
      }
    }
    return true;
  }

  // Up to and including `end`; all that came when the client is gone before.
  std::string ReceiveUntil(std::string_view end) {
    std::size_t place = std::string::npos;
    while ((place = unread_.find(end)) == std::string::npos && ReadMore()) {
    }
    return Take(place == std::string::npos ? unread_.size() : place + end.size());
  }
  // `count` bytes; fewer when the client is gone before.
  std::string Receive(std::size_t count) {
    while (unread_.size() < count && ReadMore()) {
    }
    return Take(std::min(count, unread_.size()));
  }
  // What has come, at least one byte; empty when the client is gone.
  std::string ReceiveSome() {
    if (unread_.empty()) ReadMore();
    return Take(unread_.size());
  }
  // All until the client closes.
  std::string ReceiveAll() {
    while (ReadMore()) {
    }
    return Take(unread_.size());
  }

  // Blocks until the test calls Go() of the server.
  void Await() {
    std::unique_lock lock(server_.mutex_);
    server_.changed_.wait(lock, [this] { return server_.permits_ > 0 || server_.stopped_; });
    if (server_.stopped_) throw Stopped{};
    --server_.permits_;
  }

  // Blocks for so long.
  void Rest(std::chrono::milliseconds time) {
    pollfd stopped = {server_.stop_, POLLIN, 0};
    if (::poll(&stopped, 1, static_cast<int>(time.count())) > 0) throw Stopped{};
  }

  // Whether the client ended the connection by a reset, as far as receiving has found out.
  bool SawReset() const { return saw_reset_; }

  // Ends the outgoing direction; the client sees the end, and what it sends can still be received.
  void ShutdownWrite() { ::shutdown(socket_, SHUT_WR); }
  void Close() {
    if (socket_ >= 0) ::close(std::exchange(socket_, -1));
  }
  // Closes so that the client sees a reset.
  void Reset() {
    const linger at_once = {1, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    Close();
  }

 private:
  void Wait(short events) {
    if (!server_.Wait(socket_, events)) throw Stopped{};
  }

  // False at the end of what the client sends, however it ended.
  bool ReadMore() {
    for (;;) {
      Wait(POLLIN);
      char buffer[65536];
      const ssize_t count = ::recv(socket_, buffer, sizeof buffer, 0);
      if (count < 0 && (errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK)) continue;
      if (count < 0 && errno == ECONNRESET) saw_reset_ = true;
      if (count <= 0) return false;
      const std::string_view bytes(buffer, static_cast<std::size_t>(count));
      unread_ += bytes;
      const std::lock_guard lock(server_.mutex_);
      server_.served_[index_].received += bytes;
      return true;
    }
  }

  std::string Take(std::size_t count) {
    std::string taken = unread_.substr(0, count);
    unread_.erase(0, count);
    return taken;
  }

  LoopbackServer& server_;
  int socket_;
  std::size_t index_;
  std::string unread_;
  bool saw_reset_ = false;
};

inline void LoopbackServer::Serve(int socket, std::size_t index) {
  try {
    Peer peer(*this, socket, index);
    script_(peer);
  } catch (const Stopped&) {
    // The test is over.
  }
  const std::lock_guard lock(mutex_);
  served_[index].ended = true;
  ++ended_;
  changed_.notify_all();
}

// A port of 127.0.0.1 that refuses connections for as long as this lives.
class RefusingPort {
 public:
  RefusingPort() : socket_(LoopbackServer::BoundSocket(port_)) {}
  ~RefusingPort() { ::close(socket_); }
  RefusingPort(const RefusingPort&) = delete;
  RefusingPort& operator=(const RefusingPort&) = delete;

  std::uint16_t Port() const { return port_; }
  std::string Address() const { return "127.0.0.1:" + std::to_string(port_); }

 private:
  std::uint16_t port_ = 0;
  int socket_;
};

}  // namespace mirelo::testing
