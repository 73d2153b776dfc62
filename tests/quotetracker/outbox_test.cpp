#include "quotetracker/outbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Both ends of a connection that keeps apart what was sent apart.
class OutboxTest : public ::testing::Test {
 protected:
  OutboxTest() {
    std::array<int, 2> sockets{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK, 0, sockets.data()), 0);
    near_ = poll::Descriptor(sockets[0]);
    far_ = poll::Descriptor(sockets[1]);
  }

  // Sends all there is, waiting out its pauses, and gives the chunks that arrive.
  std::vector<std::string> Chunks(Outbox& outbox) {
    std::vector<std::string> chunks;
    for (;;) {
      const auto state = outbox.Flush(near_);
      for (std::string chunk = Arrived(); !chunk.empty(); chunk = Arrived()) chunks.push_back(chunk);
      if (state == Outbox::State::kEmpty) return chunks;
      EXPECT_NE(state, Outbox::State::kBroken);
    }
  }

  std::string Arrived() {
    std::string chunk(100'000, '\0');
    const auto count = ::recv(far_.Number(), chunk.data(), chunk.size(), 0);
    chunk.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return chunk;
  }

  poll::Descriptor near_;
  poll::Descriptor far_;
};

std::string Joined(const std::vector<std::string>& chunks) {
  return std::accumulate(chunks.begin(), chunks.end(), std::string());
}

TEST_F(OutboxTest, SendsAWholeMessageAsOneChunk) {
  Outbox outbox(1us, 1);
  outbox.Add("first", Chunking::kWhole);
  outbox.Add("", Chunking::kWhole);
  outbox.Add(std::string(9000, 'x'), Chunking::kWhole);
  EXPECT_EQ(outbox.Size(), 9005U);
  EXPECT_THAT(Chunks(outbox), ElementsAre("first", std::string(9000, 'x')));
  EXPECT_EQ(outbox.Size(), 0U);
}

TEST_F(OutboxTest, CutsAMessageIntoHalves) {
  Outbox outbox(1us, 1);
  outbox.Add("12345", Chunking::kHalves);
  outbox.Add("1", Chunking::kHalves);
  EXPECT_THAT(Chunks(outbox), ElementsAre("123", "45", "1"));
}

TEST_F(OutboxTest, CutsAMessageIntoBytes) {
  Outbox outbox(1us, 1);
  outbox.Add("abc", Chunking::kBytes);
  EXPECT_THAT(Chunks(outbox), ElementsAre("a", "b", "c"));
}

TEST_F(OutboxTest, CutsAMessageByChanceAndAlikeForTheSameSeed) {
  std::string message(20'000, '\0');
  std::iota(message.begin(), message.end(), '\0');
  const auto chunks_of = [&](std::uint64_t seed) {
    Outbox outbox(1us, seed);
    outbox.Add(message, Chunking::kRandom);
    return Chunks(outbox);
  };
  const auto chunks = chunks_of(1);
  EXPECT_EQ(Joined(chunks), message);
  EXPECT_GT(chunks.size(), 90U);
  EXPECT_LT(chunks.size(), 200U);
  for (const std::string& chunk : chunks) EXPECT_LE(chunk.size(), 300U);
  EXPECT_EQ(chunks_of(1), chunks);
  EXPECT_NE(chunks_of(2), chunks);
}

TEST_F(OutboxTest, PausesBetweenTheChunksOfACutMessage) {
  Outbox outbox(1h, 1);
  outbox.Add("ab", Chunking::kBytes);
  EXPECT_EQ(outbox.Flush(near_), Outbox::State::kPausing);
  EXPECT_EQ(outbox.Flush(near_), Outbox::State::kPausing);
  EXPECT_GT(outbox.ResumeTime(), std::chrono::steady_clock::now() + 50min);
  EXPECT_EQ(Arrived(), "a");
  EXPECT_EQ(Arrived(), "");
  EXPECT_EQ(outbox.Size(), 1U);
}

TEST_F(OutboxTest, KeepsWhatThePeerDoesNotTake) {
  Outbox outbox(1us, 1);
  const std::string message(50'000, 'x');
  for (int i = 0; i < 100; ++i) outbox.Add(message, Chunking::kWhole);
  EXPECT_EQ(outbox.Flush(near_), Outbox::State::kBlocked);
  EXPECT_GT(outbox.Size(), 0U);
  EXPECT_EQ(Joined(Chunks(outbox)).size(), 5'000'000U);
}

TEST_F(OutboxTest, SaysWhenThePeerIsGone) {
  Outbox outbox(1us, 1);
  outbox.Add("a", Chunking::kWhole);
  far_ = poll::Descriptor();
  EXPECT_EQ(outbox.Flush(near_), Outbox::State::kBroken);
}

}  // namespace
}  // namespace mirelo::quotetracker
