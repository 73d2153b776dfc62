// Positions in a walk are 16 bits wide where a wanted record begins.

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "automation/runtime_error.h"
#include "host/winsock_library.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

constexpr std::size_t kMostInOneEvent = host::SocketConnection::kChunkLimit;

class Positions : public StreamTest {
 protected:
  Positions() { stream->connect(); }

  // A record of exactly `size` bytes, at least 18, that is published.
  std::string Sized(std::size_t size, std::string_view kind = "S1") {
    const std::size_t others = std::string(Level1Wire(kind).Last(1).Text(18, "")).size();
    return Level1Wire(kind).Last(price_++).Text(18, std::string(size - others, 'c'));
  }
  // No chunk of one or two bytes among them: such are lost.
  void DeliverAllButTheLastByte(const std::string& record) {
    constexpr std::size_t kChunk = 8000;
    for (std::size_t at = 0; at + 1 < record.size(); at += kChunk) {
      ASSERT_EQ(ErrorNumberOf(record.substr(at, std::min(kChunk, record.size() - 1 - at))), 0);
    }
  }
  // Whether a position went out of range while `bytes` came in chunks of chance sizes, no more than the
  // socket hands over in one event. Other errors are those of bytes that were lost; the stream goes on behind
  // them.
  bool GoesOutOfRange(std::string_view bytes, unsigned seed) {
    std::mt19937 random(seed);
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t size = std::uniform_int_distribution<std::size_t>(1, kMostInOneEvent)(random);
      if (ErrorNumberOf(bytes.substr(at, size)) == 6) return true;
      at += size;
    }
    return false;
  }

 private:
  double price_ = 1;
};

TEST_F(Positions, OfAWantedRecordReachTo32767) {
  EXPECT_EQ(ErrorNumberOf(Sized(32767) + Sized(100)), 0);
  EXPECT_EQ(Take().size(), 2u);
}

TEST_F(Positions, OfAWantedRecordFartherOnAreAnError) {
  EXPECT_EQ(ErrorNumberOf(Sized(32000) + Sized(768) + Sized(100)), 6);
  EXPECT_EQ(Take().size(), 2u) << "what lies before is published";
}

TEST_F(Positions, AreCheckedBeforeTheRecordIsFoundIncomplete) {
  EXPECT_EQ(ErrorNumberOf(Sized(32000) + Sized(768) + Sized(100).substr(0, 50)), 6);
}

TEST_F(Positions, OfUnwantedRecordsMayLieFartherOn) {
  EXPECT_EQ(ErrorNumberOf(Sized(32000) + Sized(768) + Sized(100, "XX")), 0);
}

// The socket hands over 8192 bytes at most, and a tail is shorter than its record. So a record may be up to
// 32767 - 8192 + 3 bytes long before the one behind it can begin too far on. All fields together with texts
// of 5,000 bytes each are shorter.
constexpr std::size_t kLongestSafe = 32767 - kMostInOneEvent + 3;

TEST_F(Positions, StayInRangeForTheLongestTailAndTheLongestChunk) {
  const std::string record = Sized(kLongestSafe);
  std::string chunk = record.substr(record.size() - 1);
  while (chunk.size() + 18 <= kMostInOneEvent)
    chunk += Sized(std::min<std::size_t>(40, kMostInOneEvent - chunk.size()));
  ASSERT_LE(chunk.size(), kMostInOneEvent);
  DeliverAllButTheLastByte(record);
  EXPECT_EQ(ErrorNumberOf(chunk), 0);
}

TEST_F(Positions, OfALongerTailMayGoOutOfRange) {
  const std::string record = Sized(32767);
  DeliverAllButTheLastByte(record);
  EXPECT_EQ(ErrorNumberOf(record.substr(record.size() - 1) + Sized(100) + Sized(100)), 6);
}

// Records with none of the letters that begin a kind inside, so that a chunk which begins inside one is never
// taken for another: however they are cut, bytes that are lost included, no position goes out of range.
TEST_F(Positions, StayInRangeForWellFormedRecordsHoweverTheyAreCut) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    Renew();
    stream->StopEndlessWalks(true);
    stream->connect();
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::size_t> sizes(40, seed % 2 == 0 ? 600 : kLongestSafe);
    std::string bytes;
    while (bytes.size() < 400'000) {
      const std::string record = Sized(sizes(random), seed % 4 < 2 ? "S1" : "L1");
      if (record.find_first_of("SLHEO", 2) == std::string::npos) bytes += record;
    }
    EXPECT_FALSE(GoesOutOfRange(bytes, seed));
    EXPECT_GT(Take().size(), 0u);
  }
}

}  // namespace
}  // namespace mirelo::testing
