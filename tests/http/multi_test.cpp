#include "adapters/curl/multi.h"

#include <gtest/gtest.h>

#include <optional>

#include "adapters/poll/poll_loop.h"

namespace mirelo::curl {
namespace {

struct NotedEnd final : Multi::Client {
  void OnActivity() override {}
  void OnEnd(CURLcode result) override { end = result; }
  std::optional<CURLcode> end;
};

TEST(Multi, EndsATransferThatCannotBeStarted) {
  poll::PollLoop loop;
  Multi multi(loop);
  NotedEnd client;
  multi.Start(nullptr, client);
  EXPECT_EQ(client.end, CURLE_FAILED_INIT);
}

}  // namespace
}  // namespace mirelo::curl
