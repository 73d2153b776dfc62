#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/memory_winsock.h"
#include "wire/observed_sockets.h"

namespace mirelo::testing {

// What comes to the sinks of a connection.
class AlignedClient : public host::BytesTransferEvents, public host::ConnectionEvents {
 public:
  void OnBytesReceived(host::SocketConnection&, std::span<const std::uint8_t> bytes) override {
    messages.emplace_back(bytes.begin(), bytes.end());
    if (at_message) at_message();
  }
  void OnDisconnected(host::SocketConnection&, const std::string& reason) override { ends.push_back(reason); }

  std::vector<std::string> messages;
  std::vector<std::string> ends;
  std::function<void()> at_message;
};

// A connection with such sinks, whose peer is the test.
class ConnectedClient : public ::testing::Test {
 protected:
  static constexpr const char* kAccepted = "OK<STREAMER>A.SDF</STREAMER>";
  static constexpr const char* kRefused = "LO<STATUSCODE>1</STATUSCODE>";

  ConnectedClient() {
    sockets.Told.Subscribe([this](const std::string& line) { told.push_back(line); });
    sockets.Dropped.Subscribe([this](const std::string& reason) { dropped.push_back(reason); });
    connection->Subscribe(std::shared_ptr<host::BytesTransferEvents>(client),
                          host::SocketConnection::kBytesTransfer);
    connection->Subscribe(std::shared_ptr<host::ConnectionEvents>(client),
                          host::SocketConnection::kConnectionEvents);
    Connect();
  }
  void Connect() { connection->Connect(*sockets.CreateAddress(host::WinsockLibrary::kInet)); }
  void Deliver(const std::string& bytes) { winsock.Newest().Deliver(bytes); }
  static std::string Record(const char* symbol) { return Level1Wire().Symbol(symbol).Last(1); }

  ManualLoop loop;
  MemoryWinsock winsock;
  wire::ObservedSockets sockets{winsock, loop};
  std::shared_ptr<host::SocketConnection> connection = sockets.CreateConnection(*sockets.FindProtocol(
      host::WinsockLibrary::kInet, host::WinsockLibrary::kStream, host::WinsockLibrary::kTcp));
  std::shared_ptr<AlignedClient> client = std::make_shared<AlignedClient>();
  std::vector<std::string> told;
  std::vector<std::string> dropped;
};

}  // namespace mirelo::testing
