#include "support/loopback_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace mirelo::testing {

namespace {

// What leaves a script when its server is being stopped.
struct ServerStopped {};

std::string AddressOf(std::uint16_t port) { return "127.0.0.1:" + std::to_string(port); }

}  // namespace

class LoopbackServer::Threads {
 public:
  Threads(Script script, std::uint32_t address, std::uint16_t port)
      : script_(std::move(script)),
        port_(port),
        listener_(BoundSocket(port_, address)),
        stop_(::eventfd(0, EFD_CLOEXEC)) {
    if (stop_ < 0 || ::listen(listener_, SOMAXCONN) != 0) {
      throw std::system_error(errno, std::generic_category(), "listen");
    }
    acceptor_ = std::thread([this] { Accept(); });
  }

  std::uint16_t Port() const { return port_; }

  std::string Received(std::size_t connection) const {
    const std::lock_guard lock(mutex_);
    return connection < served_.size() ? served_[connection].received : std::string();
  }
  std::size_t Connections() const {
    const std::lock_guard lock(mutex_);
    return served_.size();
  }

  void Go() {
    const std::lock_guard lock(mutex_);
    ++permits_;
    changed_.notify_all();
  }
  void WaitForScripts(std::size_t count) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return ended_ >= count; });
  }
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

  // What follows is called by scripts, on their threads. It raises ServerStopped.

  void Await() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return permits_ > 0 || stopped_; });
    if (stopped_) throw ServerStopped{};
    --permits_;
  }
  void Rest(std::chrono::milliseconds time) const {
    pollfd stopped = {stop_, POLLIN, 0};
    if (::poll(&stopped, 1, static_cast<int>(time.count())) > 0) throw ServerStopped{};
  }
  void WaitFor(int socket, short events) const {
    if (!Wait(socket, events)) throw ServerStopped{};
  }
  void NoteReceived(std::size_t index, std::string_view bytes) {
    const std::lock_guard lock(mutex_);
    served_[index].received += bytes;
  }

 private:
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

  void Serve(int socket, std::size_t index) {
    try {
      Peer peer(*this, socket, index);
      script_(peer);
    } catch (const ServerStopped&) {
      // The test is over.
    }
    const std::lock_guard lock(mutex_);
    served_[index].ended = true;
    ++ended_;
    changed_.notify_all();
  }

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

LoopbackServer::LoopbackServer(Script script) : LoopbackServer(std::move(script), kLoopback, 0) {}
LoopbackServer::LoopbackServer(Script script, std::uint32_t address, std::uint16_t port)
    : threads_(std::make_unique<Threads>(std::move(script), address, port)) {}
LoopbackServer::~LoopbackServer() { Stop(); }

std::uint16_t LoopbackServer::Port() const { return threads_->Port(); }
std::string LoopbackServer::Address() const { return AddressOf(Port()); }
std::string LoopbackServer::Received(std::size_t connection) const { return threads_->Received(connection); }
std::size_t LoopbackServer::Connections() const { return threads_->Connections(); }
void LoopbackServer::Go() { threads_->Go(); }
void LoopbackServer::WaitForScripts(std::size_t count) { threads_->WaitForScripts(count); }
void LoopbackServer::Stop() { threads_->Stop(); }

int LoopbackServer::BoundSocket(std::uint16_t& port, std::uint32_t at) {
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

LoopbackServer::Peer::Peer(Threads& threads, int socket, std::size_t index)
    : threads_(threads), socket_(socket), index_(index) {
  const int on = 1;
  ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}
LoopbackServer::Peer::~Peer() { Close(); }

bool LoopbackServer::Peer::Send(std::string_view bytes) {
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

std::string LoopbackServer::Peer::ReceiveUntil(std::string_view end) {
  std::size_t place = std::string::npos;
  while ((place = unread_.find(end)) == std::string::npos && ReadMore()) {
  }
  return Take(place == std::string::npos ? unread_.size() : place + end.size());
}

std::string LoopbackServer::Peer::Receive(std::size_t count) {
  while (unread_.size() < count && ReadMore()) {
  }
  return Take(std::min(count, unread_.size()));
}

std::string LoopbackServer::Peer::ReceiveSome() {
  if (unread_.empty()) ReadMore();
  return Take(unread_.size());
}

std::string LoopbackServer::Peer::ReceiveAll() {
  while (ReadMore()) {
  }
  return Take(unread_.size());
}

void LoopbackServer::Peer::Await() { threads_.Await(); }

void LoopbackServer::Peer::Rest(std::chrono::milliseconds time) { threads_.Rest(time); }

void LoopbackServer::Peer::ShutdownWrite() { ::shutdown(socket_, SHUT_WR); }

void LoopbackServer::Peer::Close() {
  if (socket_ >= 0) ::close(std::exchange(socket_, -1));
}

void LoopbackServer::Peer::Reset() {
  const linger at_once = {1, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  Close();
}

void LoopbackServer::Peer::Wait(short events) { threads_.WaitFor(socket_, events); }

// False at the end of what the client sends, however it ended.
bool LoopbackServer::Peer::ReadMore() {
  for (;;) {
    Wait(POLLIN);
    char buffer[65536];
    const ssize_t count = ::recv(socket_, buffer, sizeof buffer, 0);
    if (count < 0 && (errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK)) continue;
    if (count < 0 && errno == ECONNRESET) saw_reset_ = true;
    if (count <= 0) return false;
    const std::string_view bytes(buffer, static_cast<std::size_t>(count));
    unread_ += bytes;
    threads_.NoteReceived(index_, bytes);
    return true;
  }
}

std::string LoopbackServer::Peer::Take(std::size_t count) {
  std::string taken = unread_.substr(0, count);
  unread_.erase(0, count);
  return taken;
}

RefusingPort::RefusingPort() : socket_(LoopbackServer::BoundSocket(port_)) {}
RefusingPort::~RefusingPort() { ::close(socket_); }
std::string RefusingPort::Address() const { return AddressOf(port_); }

}  // namespace mirelo::testing
