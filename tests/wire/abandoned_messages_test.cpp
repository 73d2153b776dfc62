// Messages that had come and that no sink of their connection gets any more.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "wire/aligned_client.h"
#include "wire/message_aligner.h"

namespace mirelo::wire {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// For whoever asks what became of them.
class AbandonedMessages : public testing::ConnectedClient {
 protected:
  AbandonedMessages() {
    sockets.Abandoned.Subscribe(
        [this](std::span<const std::uint8_t> bytes) { abandoned.emplace_back(bytes.begin(), bytes.end()); });
  }

  const std::string beginning = Record("C").substr(0, 10);
  std::vector<std::string> abandoned;
};

TEST_F(AbandonedMessages, AreToldWhereASinkHangsUp) {
  client->at_message = [this] { connection->Disconnect(); };
  Deliver(kAccepted + Record("A") + kAccepted + beginning);
  EXPECT_THAT(client->messages, ElementsAre(kAccepted));
  EXPECT_THAT(abandoned, ElementsAre(Record("A") + kAccepted + beginning));
  connection.reset();
  EXPECT_EQ(abandoned.size(), 1U) << "once";
}

TEST_F(AbandonedMessages, AreToldWhereWhoeverIsShownOneHangsUp) {
  sockets.Delivered.Subscribe([this](std::span<const std::uint8_t>) { connection->Disconnect(); });
  Deliver(Record("A") + kAccepted);
  EXPECT_THAT(client->messages, IsEmpty());
  EXPECT_THAT(abandoned, ElementsAre(kAccepted, Record("A")));
}

TEST_F(AbandonedMessages, AreToldWhereWhoeverHearsOfTheirBytesHangsUp) {
  sockets.Received.Subscribe([this](std::span<const std::uint8_t>) { connection->Disconnect(); });
  Deliver(Record("A") + kAccepted);
  EXPECT_THAT(client->messages, IsEmpty());
  EXPECT_THAT(abandoned, ElementsAre(Record("A") + kAccepted));
}

TEST_F(AbandonedMessages, AreToldWhereTheConnectionIsGivenUp) {
  const std::string part(std::size_t{1} << 20, 'x');
  client->at_message = [&] {
    for (int i = 0; i < 20; ++i) Deliver(part);
  };
  Deliver(kRefused);
  Deliver("<");
  loop.Advance(MessageAligner::kLongPatience);
  ASSERT_FALSE(abandoned.empty());
  EXPECT_EQ(abandoned.front().size(), 17 * part.size());
}

TEST_F(AbandonedMessages, AreToldWhereItBeginsAnew) {
  Deliver(beginning);
  Connect();
  EXPECT_THAT(abandoned, ElementsAre(beginning));
}

TEST_F(AbandonedMessages, AreToldWhereItIsLetGo) {
  Deliver(beginning);
  connection.reset();
  EXPECT_THAT(abandoned, ElementsAre(beginning));
}

TEST_F(AbandonedMessages, AreNoneWhereNothingWaits) {
  Deliver(kAccepted + Record("A"));
  connection->Disconnect();
  connection.reset();
  EXPECT_THAT(abandoned, IsEmpty());
}

}  // namespace
}  // namespace mirelo::wire
