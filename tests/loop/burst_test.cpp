// Bursts of quotes on the road that a client of the library has: a socket of this machine, sockets that hand
// over whole messages, the stream class, and a handler that takes at each event. On every loop.

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "adapters/poll/poll_winsock_library.h"
#include "automation/variant.h"
#include "core/status_run_query.h"
#include "loop/tested_loops.h"
#include "support/burst.h"
#include "support/loopback_server.h"
#include "support/sanitized.h"
#include "support/stream_rig.h"
#include "wire/observed_sockets.h"

namespace mirelo {
namespace {

using testing::Burst;
using testing::BurstArrival;
using testing::kIsSanitized;
using testing::LoopbackServer;

class Bursts : public LoopTest {
 protected:
  // Streams a burst to the end, `behind_each` being what the handler does behind each take.
  BurstArrival Stream(const Burst& burst, const std::function<void(AnyLoop& loop)>& behind_each) {
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.Send("OK<STREAMER>SWISS.SDF</STREAMER>");
      peer.ReceiveUntil("\xFF");  // the subscription
      peer.Send(burst.Bytes());
      peer.ReceiveAll();
    });
    AnyLoop loop(GetParam());
    testing::StreamRig rig(loop);
    poll::PollWinsockLibrary plain(loop);
    wire::ObservedSockets sockets(plain, loop);
    rig.host.Use(sockets);
    rig.Setting("SocketPort", static_cast<std::int32_t>(server.Port()));
    rig.facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
    rig.stream->arrTickers(VariantArray::OfTexts(burst.Tickers()));
    BurstArrival arrival(burst);
    rig.stream->QTDatas.Subscribe([&] {
      for (const auto& quote : rig.Take())
        arrival.Take(quote->Symbol(), quote->Last_Price(), quote->Last_Volume());
      behind_each(loop);
    });
    rig.stream->connect();
    loop.RunUntil([&] { return arrival.IsComplete(); });
    rig.stream->DisConnect();
    rig.stream.reset();
    return arrival;
  }

  static void ExpectInOrder(const Burst& burst, const BurstArrival& arrival) {
    EXPECT_EQ(arrival.Count(), burst.Quotes());
    EXPECT_EQ(arrival.Displaced(), 0);
    EXPECT_EQ(arrival.Negative(), 0);
    EXPECT_EQ(arrival.Newest().size(), burst.Tickers().size());
    for (const auto& [ticker, place] : arrival.Newest()) EXPECT_EQ(place, burst.QuotesOfEach()) << ticker;
  }
};
INSTANTIATE_WITH_EVERY_LOOP(Bursts);

TEST_P(Bursts, ArriveInTheOrderSent) {
  for (const int quotes : {100, 1'000, 10'000}) {
    SCOPED_TRACE(quotes);
    const Burst burst({"MSFT", "IBM"}, quotes);
    ExpectInOrder(burst, Stream(burst, [](AnyLoop&) {}));
  }
}

TEST_P(Bursts, ArriveInTheOrderSentToAHandlerThatYields) {
  const Burst burst({"MSFT", "IBM", "GE"}, 3'000);
  ExpectInOrder(burst, Stream(burst, [](AnyLoop& loop) { loop.Yield(); }));
}

TEST_P(Bursts, ArriveInTheOrderSentToAHandlerThatWaitsNowAndThen) {
  const Burst burst({"MSFT", "IBM"}, 1'000);
  ExpectInOrder(burst, Stream(burst, [events = 0](AnyLoop& loop) mutable {
                  if (++events % 100 != 1) return;
                  bool over = false;
                  loop.StartTimer(host::MessageLoop::Milliseconds(2), [&] { over = true; });
                  loop.RunUntil([&] { return over; });
                }));
}

TEST_P(Bursts, OfMoreThanBuffersHoldArriveInTheOrderSent) {
  const int many = kIsSanitized ? 30'000 : 100'000;  // both more than any buffer on the way holds
  const Burst burst({"MSFT", "IBM", "GE", "INTC", "CSCO"}, many);
  ExpectInOrder(burst, Stream(burst, [](AnyLoop&) {}));
}

}  // namespace
}  // namespace mirelo
