#include "loop_server.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace mirelo::fuzz {

LoopServer::LoopServer(host::MessageLoop& loop)
    : loop_(loop), listener_(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listener_, 64) != 0 ||
      ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    std::abort();
  }
  port_ = ntohs(address.sin_port);
  watch_ = loop_.Watch(listener_, host::MessageLoop::kRead, [this](unsigned) { Accept(); });
}

LoopServer::~LoopServer() {
  Serve({});
  loop_.Unwatch(watch_);
  ::close(listener_);
}

void LoopServer::Serve(ServerScript script) {
  while (!connections_.empty()) Close(connections_.begin()->first);
  script_ = std::move(script);
  next_reply_ = 0;
}

void LoopServer::Accept() {
  const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (socket < 0) return;
  Connection& connection = connections_[socket];
  if (!script_.replies.empty()) connection.reply = script_.replies[next_reply_];
  if (next_reply_ + 1 < script_.replies.size()) ++next_reply_;
  connection.watch =
      loop_.Watch(socket, host::MessageLoop::kRead, [this, socket](unsigned) { Receive(socket); });
  if (!script_.hasty) return;
  connection.replies = true;
  SendPiece(socket);
}

void LoopServer::Receive(int socket) {
  char buffer[65536];
  const ssize_t count = ::recv(socket, buffer, sizeof buffer, 0);
  if (count <= 0) return Close(socket);
  Connection& connection = connections_[socket];
  connection.request.append(buffer, static_cast<std::size_t>(count));
  if (connection.replies || connection.request.find("\r\n\r\n") == std::string::npos) return;
  connection.replies = true;
  SendPiece(socket);
}

void LoopServer::SendPiece(int socket) {
  script_.before_piece();
  Connection& connection = connections_[socket];
  const std::size_t size = std::min(connection.reply.size(), std::max<std::size_t>(script_.piece, 1));
  const ssize_t count = ::send(socket, connection.reply.data(), size, MSG_NOSIGNAL);
  if (count < 0 && errno != EAGAIN) return Close(socket);
  connection.reply.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
  connection.timer = loop_.StartTimer(
      {}, [this, socket, ended = connection.reply.empty()] { ended ? End(socket) : SendPiece(socket); });
}

void LoopServer::End(int socket) {
  if (script_.ending == ServerScript::Ending::WaitForClient) {
    ::shutdown(socket, SHUT_WR);
    return;
  }
  if (script_.ending == ServerScript::Ending::Reset) {
    const linger at_once = {1, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  }
  Close(socket);
}

void LoopServer::Close(int socket) {
  const auto connection = connections_.extract(socket);
  loop_.Unwatch(connection.mapped().watch);
  loop_.StopTimer(connection.mapped().timer);
  ::close(socket);
}

}  // namespace mirelo::fuzz
