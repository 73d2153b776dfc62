// Counts what the program asks of the heap, so it is a program of its own.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

#include "automation/variant.h"
#include "core/status_run_query.h"
#include "support/idle_loop.h"
#include "support/level1_wire.h"
#include "support/stream_rig.h"
#include "wire/observed_sockets.h"

namespace {
std::size_t allocations = 0;
std::size_t live = 0;
}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  ++live;
  if (void* block = std::malloc(size)) return block;
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
  if (block != nullptr) --live;
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

namespace mirelo::testing {
namespace {

class Allocations : public ::testing::Test, protected StreamRig {
 protected:
  Allocations() : StreamRig(loop_) {
    stream->DovantaFormatUserDate("mm/dd/yyyy hh:mm:ss");
    stream->connect();
  }
  // Records of ten tickers, all fields that a quote usually has, and symbols that go through the code page
  // too.
  static std::string Records(int count, double price) {
    std::string bytes;
    for (int i = 0; i < count; ++i) {
      bytes += Level1Wire()
                   .Symbol(i % 10 == 9 ? "Z\xFCrich" : "TICKER" + std::to_string(i % 10))
                   .Bid(price)
                   .Ask(price)
                   .Last(price)
                   .Change(1)
                   .Volume(1000)
                   .High(price)
                   .Low(price)
                   .Stamp("01202011083613")
                   .Bytes();
    }
    return bytes;
  }
  template <class Action>
  static std::size_t Count(Action&& action) {
    const std::size_t before = allocations;
    action();
    return allocations - before;
  }

  host::MessageLoop& Loop() { return loop_; }

 private:
  IdleLoop loop_;
};

TEST_F(Allocations, AreNoneForRecordsThatPublishNothing) {
  const std::string chunk = Records(60, 1);
  Deliver(chunk);
  Take();
  EXPECT_EQ(Count([&] { Deliver(chunk); }), 0u);
}

TEST_F(Allocations, DependOnTheChunksAndNotOnTheRecordsWhereChunksAreTorn) {
  const std::string few = Records(2, 1);
  const std::string many = Records(60, 1);
  Deliver(many);
  Take();
  const auto in_two = [&](const std::string& bytes) {
    return Count([&] {
      Deliver(std::string_view(bytes).substr(0, 40));
      Deliver(std::string_view(bytes).substr(40));
    });
  };
  in_two(many);  // once, so that the place for the tail is there
  EXPECT_EQ(in_two(many), in_two(few));
  EXPECT_LE(in_two(many), 1u) << "the chunk behind its tail";
}

TEST_F(Allocations, AreGivenBackWithTheQuotes) {
  const auto publish = [&](int rounds) {
    for (int i = 0; i < rounds; ++i) {
      Deliver(Records(60, 1 + i % 2));
      Take();
    }
  };
  publish(10);
  const std::size_t before = live;
  publish(2'000);
  EXPECT_EQ(live, before) << "120,000 quotes later";
}

// A peer that sends ever new symbols, to a client that subscribed two.
class AllocationsOfFlood : public Allocations {
 protected:
  AllocationsOfFlood() {
    host.Use(aligned_);
    facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
    stream->arrTickers(VariantArray::OfTexts({"MSFT", "IBM"}));
    stream->connect();
    Deliver("OK<STREAMER>A.SDF</STREAMER>");
  }
  void Flood(int first, int count) {
    std::string chunk;
    for (int i = first; i < first + count; ++i)
      chunk += Level1Wire().Symbol("NEW" + std::to_string(i)).Bytes();
    Deliver(chunk);
  }

 private:
  wire::ObservedSockets aligned_{sockets, Loop()};
};

TEST_F(AllocationsOfFlood, EndWithTheSymbolsThatMayComeUnasked) {
  for (int i = 0; i < 10'000; i += 100) Flood(i, 100);
  const std::size_t before = live;
  for (int i = 10'000; i < 100'000; i += 100) Flood(i, 100);
  EXPECT_EQ(live, before) << "90,000 new symbols later";
  EXPECT_TRUE(Take().empty());
  Deliver(Level1Wire().Symbol("MSFT").Last(1));
  EXPECT_EQ(Take().size(), 1u);
}

TEST_F(Allocations, ShowWhenTheyAreNotExpected) {
  const std::string chunk = Records(60, 1);
  EXPECT_GT(Count([&] { Deliver(chunk); }), 60u) << "the count counts";
}

}  // namespace
}  // namespace mirelo::testing
