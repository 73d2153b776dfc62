#include <csignal>
#include <string>

#include <sys/time.h>

#include "automation/runtime_error.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

// Ends the process by a signal when it has used up a fifth of a second of processor time: a walk that ends
// takes some microseconds.
void LimitProcessorTime() {
  const itimerval limit{{0, 0}, {0, 200'000}};
  ::setitimer(ITIMER_VIRTUAL, &limit, nullptr);
}

class EndlessWalk : public StreamTest {
 protected:
  EndlessWalk() { stream->connect(); }

  // An unwanted record that says the next one begins where it does.
  static std::string InPlace() { return Quote("A") + std::string(Level1Wire("XX").Length(0)); }
  // Two unwanted records that send the walk to and fro.
  static std::string Backwards() {
    return Quote("A") + std::string(Level1Wire("XX").Length(4)) + std::string(Level1Wire("YY").Length(-4));
  }

  // A tail and a chunk of L1 behind it: the torn record ends before the zeros do.
  void DeliverTail() { Deliver(Quote("A").substr(0, 9)); }
  static std::string BehindTail() { return Level1Wire("L1").Symbol("B").Last(2); }
};

using EndlessWalkDeathTest = EndlessWalk;

TEST_F(EndlessWalkDeathTest, GoesOnForEverInPlace) {
  EXPECT_EXIT(
      {
        LimitProcessorTime();
        Deliver(InPlace());
      },
      ::testing::KilledBySignal(SIGVTALRM), "");
}

TEST_F(EndlessWalkDeathTest, GoesOnForEverBackwards) {
  EXPECT_EXIT(
      {
        LimitProcessorTime();
        Deliver(Backwards());
      },
      ::testing::KilledBySignal(SIGVTALRM), "");
}

TEST_F(EndlessWalkDeathTest, GoesOnForEverInTheZerosBehindATail) {
  EXPECT_EXIT(
      {
        LimitProcessorTime();
        DeliverTail();
        Deliver(BehindTail());
      },
      ::testing::KilledBySignal(SIGVTALRM), "");
}

TEST_F(EndlessWalkDeathTest, IsTheDefaultAlsoBehindSwitchingOff) {
  stream->StopEndlessWalks(true);
  stream->StopEndlessWalks(false);
  EXPECT_EXIT(
      {
        LimitProcessorTime();
        Deliver(InPlace());
      },
      ::testing::KilledBySignal(SIGVTALRM), "");
}

TEST_F(EndlessWalk, EndsWithAnErrorWhenSwitchedSo) {
  stream->StopEndlessWalks(true);
  for (const std::string& chunk : {InPlace(), Backwards()}) {
    ExpectError(ErrorOf([&] { Deliver(chunk); }), 0x80040065, "The quote stream lost its place",
                "Mirelo.cQTStreaming.DecodeRecords");
  }
  EXPECT_EQ(Take().size(), 1u) << "what came before the place is published";
}

TEST_F(EndlessWalk, ForgetsTheTailWhenItEnds) {
  stream->StopEndlessWalks(true);
  DeliverTail();
  EXPECT_EQ(ErrorNumberOf(InPlace()), cQTStreaming::kEndlessWalk);
  EXPECT_EQ(Take().size(), 1u);
  Deliver(Level1Wire().Symbol("A").Last(2).Bytes().substr(9));
  EXPECT_EQ(Take().size(), 0u);
}

TEST_F(EndlessWalk, EndsInTheZerosBehindATailToo) {
  stream->StopEndlessWalks(true);
  DeliverTail();
  EXPECT_EQ(ErrorNumberOf(BehindTail()), cQTStreaming::kEndlessWalk);
}

TEST_F(EndlessWalk, GoesOnWithTheStreamBehindAnError) {
  stream->StopEndlessWalks(true);
  EXPECT_EQ(ErrorNumberOf(InPlace()), cQTStreaming::kEndlessWalk);
  Take();
  const std::string next = Quote("B");
  Deliver(next.substr(0, 8));
  Deliver(next.substr(8));
  EXPECT_EQ(Take().size(), 1u);
}

// A walk may step back and end all the same: the record before is read once more, with another end.
TEST_F(EndlessWalk, IsNotSeenInAWalkThatEndsByItself) {
  const std::string back = Level1Wire("XX")
                               .Id(2)
                               .Raw(std::string(8, '\x40'))
                               .Length(static_cast<std::int16_t>(-Quote("A").size()));
  for (const bool stop : {false, true}) {
    SCOPED_TRACE(stop);
    Renew();
    stream->StopEndlessWalks(stop);
    stream->connect();
    EXPECT_NO_THROW(Deliver(Quote("A") + back));
    EXPECT_EQ(Take().size(), 1u);
  }
}

}  // namespace
}  // namespace mirelo::testing
