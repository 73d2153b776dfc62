#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/winsock_library.h"

namespace mirelo::poll {

// A connection with one sink for all its events, which notes what it is told and then does what the test
// wants.
class Client {
 public:
  struct Sink final : host::BytesTransferEvents, host::ConnectionEvents {
    std::string received;
    std::vector<std::size_t> chunks;  // their sizes
    std::int64_t sent = 0;
    int connected = 0;
    std::vector<std::string> reasons;  // of OnDisconnected
    std::vector<std::string> log;      // names of the events, in order

    std::function<void()> on_connected, on_available, on_sent, on_disconnected;
    std::function<void(const std::string& chunk)> on_received;

    void OnConnected(host::SocketConnection&) override {
      ++connected;
      Raise("connected", on_connected);
    }
    void OnDisconnected(host::SocketConnection&, const std::string& reason) override {
      reasons.push_back(reason);
      Raise("disconnected", on_disconnected);
    }
    void OnBytesAvailable(host::SocketConnection&) override { Raise("available", on_available); }
    void OnBytesReceived(host::SocketConnection&, std::span<const std::uint8_t> bytes) override {
      const std::string chunk(bytes.begin(), bytes.end());
      received += chunk;
      chunks.push_back(chunk.size());
      log.push_back("received");
      if (on_received) on_received(chunk);
    }
    void OnBytesSent(host::SocketConnection&, std::int32_t count) override {
      sent += count;
      Raise("sent", on_sent);
    }

   private:
    void Raise(const char* name, const std::function<void()>& reaction) {
      log.push_back(name);
      if (reaction) reaction();
    }
  };

  explicit Client(host::WinsockLibrary& library)
      : connection(library.CreateConnection(*library.FindProtocol(
            host::WinsockLibrary::kInet, host::WinsockLibrary::kStream, host::WinsockLibrary::kTcp))),
        library_(library) {
    bytes_id = connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(sink),
                                     host::SocketConnection::kBytesTransfer);
    connection_id = connection->Subscribe(std::static_pointer_cast<host::ConnectionEvents>(sink),
                                          host::SocketConnection::kConnectionEvents);
  }

  void Connect(const std::string& address) {
    const auto target = library_.CreateAddress(host::WinsockLibrary::kInet);
    target->SetText(address);
    connection->Connect(*target);
  }

  bool IsConnected() const { return connection->State() == host::SocketConnection::kConnected; }
  bool IsDropped() const { return connection->State() == host::SocketConnection::kDropped; }

  const std::shared_ptr<Sink> sink = std::make_shared<Sink>();
  std::shared_ptr<host::SocketConnection> connection;
  std::int32_t bytes_id = 0;
  std::int32_t connection_id = 0;

 private:
  host::WinsockLibrary& library_;
};

}  // namespace mirelo::poll
