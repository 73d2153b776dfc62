// What a sink gets through the sockets that cut bytes anew: several chunks of one read are handed over as
// several reads are.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/winsock_library.h"
#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/memory_winsock.h"
#include "wire/observed_sockets.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Library = host::WinsockLibrary;
using host::SocketConnection;

class Sink : public host::BytesTransferEvents {
 public:
  std::vector<std::string> chunks;
  std::function<void()> react = [] {};

  void OnBytesReceived(SocketConnection&, std::span<const std::uint8_t> bytes) override {
    chunks.emplace_back(bytes.begin(), bytes.end());
    react();
  }
};

// A connection whose sink gets three chunks for one read: the two kinds may not lie in one chunk.
class SeveralChunks : public ::testing::Test {
 protected:
  SeveralChunks() {
    id_ = connection_->Subscribe(sink_, SocketConnection::kBytesTransfer);
    connection_->Connect(*library_.CreateAddress(Library::kInet));
  }

  static std::string Record(const char* kind, double price) {
    return Level1Wire(kind).Symbol("MSFT").Last(price).Bytes();
  }
  void DeliverThree() { sockets_.Newest().Deliver(first_ + second_ + third_); }

  const std::string first_ = Record("HO", 1), second_ = Record("HT", 2), third_ = Record("HO", 3);
  ManualLoop loop_;
  MemoryWinsock sockets_;
  wire::ObservedSockets library_{sockets_, loop_};
  std::shared_ptr<SocketConnection> connection_ =
      library_.CreateConnection(*library_.FindProtocol(Library::kInet, Library::kStream, Library::kTcp));
  std::shared_ptr<Sink> sink_ = std::make_shared<Sink>();
  std::int32_t id_ = 0;
};

TEST_F(SeveralChunks, AreHandedOverInOrder) {
  DeliverThree();
  EXPECT_THAT(sink_->chunks, ElementsAre(first_, second_, third_));
}

TEST_F(SeveralChunks, AreTheSinksAndWhatLiesBetweenThemIsToldAsLeftOut) {
  std::string left_out;
  library_.LeftOut.Subscribe(
      [&](std::span<const std::uint8_t> bytes) { left_out.append(bytes.begin(), bytes.end()); });
  sockets_.Newest().Deliver(first_ + "between" + second_);
  EXPECT_THAT(sink_->chunks, ElementsAre(first_, second_));
  EXPECT_EQ(left_out, "between");
}

TEST_F(SeveralChunks, AreHandedOverThoughTheSinkThrows) {
  sink_->react = [&] { throw std::runtime_error("chunk " + std::to_string(sink_->chunks.size())); };
  try {
    DeliverThree();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "chunk 1");
  }
  EXPECT_THAT(sink_->chunks, ElementsAre(first_, second_, third_));
}

TEST_F(SeveralChunks, EndWhenTheSinkDisconnects) {
  sink_->react = [&] { connection_->Disconnect(); };
  DeliverThree();
  EXPECT_THAT(sink_->chunks, ElementsAre(first_));
}

TEST_F(SeveralChunks, EndWhenTheSinkIsUnsubscribed) {
  sink_->react = [&] { connection_->Unsubscribe(id_); };
  DeliverThree();
  EXPECT_THAT(sink_->chunks, ElementsAre(first_));
}

TEST_F(SeveralChunks, EndWhenTheSinkDropsTheConnection) {
  sink_->react = [&] { connection_.reset(); };
  DeliverThree();
  EXPECT_THAT(sink_->chunks, ElementsAre(first_));
}

TEST_F(SeveralChunks, OfAConnectionThatIsConnectedAnewBeginWithWhatItDelivers) {
  sockets_.Newest().Deliver(first_ + second_.substr(0, 9));
  connection_->Disconnect();
  connection_->Connect(*library_.CreateAddress(Library::kInet));
  sockets_.Newest().Deliver(third_);
  EXPECT_THAT(sink_->chunks, ElementsAre(first_, third_));
}

}  // namespace
}  // namespace mirelo::testing
