// In which order the stream calls its library, tells its owner and shows boxes: all in one list.

#include <cstdint>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

class Order : public StreamTest {
 protected:
  Order() {
    stream->OnStatusText.Subscribe([this](const std::string& text) { log.push_back("status: " + text); });
    stream->PerformanceFollowingProcess.Subscribe(
        [this](std::int16_t process) { log.push_back("process " + std::to_string(process)); });
    desktop.while_open = [this] { log.push_back("box"); };
  }

  std::vector<std::string>& log = sockets.calls;
};

TEST_F(Order, OfAConnection) {
  stream->connect();
  EXPECT_THAT(log, ElementsAre("status: Connection started...", "address 2", "text 127.0.0.1:16240",
                               "protocol 2 1 6", "connection", "subscribe 1", "subscribe 8",
                               "status: Connecting to host...", "connect"));
}

TEST_F(Order, OfAConnectionThatFailsAtItsStart) {
  sockets.FailAt("address", RuntimeError(5, "No way"));
  stream->connect();
  EXPECT_THAT(log, ElementsAre("status: Connection started...", "address 2", "box", "status: No way"));
}

TEST_F(Order, OfAConnectionThatFailsAtItsEnd) {
  sockets.FailAt("connect", RuntimeError(5, "No way"));
  stream->connect();
  log.erase(log.begin(), log.end() - 4);
  EXPECT_THAT(log, ElementsAre("status: Connecting to host...", "connect", "box", "status: No way"));
}

TEST_F(Order, OfADrop) {
  stream->connect();
  log.clear();
  sockets.Newest().Drop();
  EXPECT_THAT(log, ElementsAre("unsubscribe 102", "unsubscribe 101"));
}

TEST_F(Order, OfASourceList) {
  stream->connect();
  log.clear();
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE></SOURCE></SOURCES>");
  EXPECT_THAT(log, ElementsAre("status: Data source list updated successfully", "process 1"));
}

TEST_F(Order, OfAnAcceptedStreamer) {
  stream->arrTickers(VariantArray::OfTexts({"MSFT"}));
  stream->connect();
  log.clear();
  Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  EXPECT_THAT(log, ElementsAre("send", "process 5"));
}

}  // namespace
}  // namespace mirelo::testing
