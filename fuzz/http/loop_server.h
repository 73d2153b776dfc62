#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/message_loop.h"

namespace mirelo::fuzz {

// What a server does to its connections.
struct ServerScript {
  enum class Ending { Close, Reset, WaitForClient };

  std::vector<std::string> replies;  // the bytes for each connection in turn; the last are for all later ones
  std::size_t piece = 0;             // bytes that are sent at a time, one piece a turn of the loop
  bool hasty = false;                // replies before the request has come
  Ending ending = Ending::Close;
  std::function<void()> before_piece = [] {};
};

// A server on 127.0.0.1 that lives on the message loop of its own client, so that the order of events is the
// same in each run.
class LoopServer {
 public:
  explicit LoopServer(host::MessageLoop& loop);
  ~LoopServer();
  LoopServer(const LoopServer&) = delete;
  LoopServer& operator=(const LoopServer&) = delete;

  std::uint16_t Port() const { return port_; }
  // Drops the connections that are left and serves further ones by this script.
  void Serve(ServerScript script);

 private:
  struct Connection {
    host::MessageLoop::Token watch = 0;
    host::MessageLoop::Token timer = 0;  // of the next piece
    std::string request;
    std::string_view reply;  // what is left of it
    bool replies = false;
  };

  void Accept();
  void Receive(int socket);
  void SendPiece(int socket);
  void End(int socket);
  void Close(int socket);

  host::MessageLoop& loop_;
  int listener_;
  std::uint16_t port_ = 0;
  host::MessageLoop::Token watch_ = 0;
  ServerScript script_;
  std::size_t next_reply_ = 0;
  std::map<int, Connection> connections_;  // by socket
};

}  // namespace mirelo::fuzz
