// The same bytes cut in many ways, against the rules written down once more. Cuts lose quotes: chunks of one
// or two bytes are dropped, a record's head that is cut before its length is forgotten, and a chunk that
// happens to begin with the letters of a kind is taken for what it isn't.

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "streaming/random_records.h"
#include "streaming/reference_stream.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

class Cutting : public StreamTest {
 protected:
  Cutting() { Reset(); }

  void Reset() {
    Renew();
    stream->StopEndlessWalks(true);
    stream->connect();
    reference = ReferenceStream();
    published.clear();
  }

  ReferenceStream::Outcome Receive(const std::string& chunk) {
    try {
      Deliver(chunk);
    } catch (const RuntimeError& error) {
      switch (error.Number()) {
        case 9:
          return ReferenceStream::Outcome::SubscriptOutOfRange;
        case 6:
          return ReferenceStream::Outcome::Overflow;
        case cQTStreaming::kEndlessWalk:
          return ReferenceStream::Outcome::Endless;
        default:
          ADD_FAILURE() << error.Description();
      }
    }
    return ReferenceStream::Outcome::Done;
  }

  void ReceiveAndCompare(const std::string& chunk) {
    ASSERT_EQ(Receive(chunk), reference.Receive(chunk));
    for (const auto& quote : Take()) {
      published.push_back(Flat(*quote));
      // When the quote came, and the zone, are not the reference's matter.
      published.back().erase("DateQT");
      published.back().erase("TimeQT");
    }
    ASSERT_EQ(published, reference.published);
  }

  void ForgetPublished() {
    reference.published.clear();
    published.clear();
  }

  std::vector<std::string> Symbols() const {
    std::vector<std::string> symbols;
    for (const auto& quote : published) symbols.push_back(quote.contains("Symbol") ? quote.at("Symbol") : "");
    return symbols;
  }

  ReferenceStream reference;
  std::vector<FlatQuote> published;
};

TEST_F(Cutting, AtEveryPlaceGivesWhatTheRulesSay) {
  RandomRecords records(1);
  const std::string bytes = records.Next("S1") + records.Next("L1") + records.Next("S1") + records.Next("L1");
  for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
    SCOPED_TRACE(cut);
    Reset();
    ReceiveAndCompare(bytes.substr(0, cut));
    ReceiveAndCompare(bytes.substr(cut));
    if (HasFatalFailure()) return;
  }
}

TEST_F(Cutting, AtEveryTwoPlacesGivesWhatTheRulesSay) {
  const std::string bytes = std::string(Level1Wire("S1").Symbol("SL1").Last(1)) +
                            std::string(Level1Wire("L1").Symbol("L1").Last(2)) +
                            std::string(Level1Wire("HO").Symbol("HT").Last(3)) +
                            std::string(Level1Wire("S1").Symbol("OK").Last(4));
  for (std::size_t first = 0; first <= bytes.size(); ++first) {
    for (std::size_t second = first; second <= bytes.size(); ++second) {
      SCOPED_TRACE(std::to_string(first) + " and " + std::to_string(second));
      Reset();
      ReceiveAndCompare(bytes.substr(0, first));
      ReceiveAndCompare(bytes.substr(first, second - first));
      ReceiveAndCompare(bytes.substr(second));
      if (HasFatalFailure()) return;
    }
  }
}

TEST_F(Cutting, AtRandomGivesWhatTheRulesSay) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    RandomRecords records(seed);
    std::mt19937 random(seed);
    Reset();
    const std::string bytes = records.Stream(60, {"S1", "L1", "HO", "HT", "XX"});
    const std::size_t longest = seed % 3 == 0 ? 12 : seed % 3 == 1 ? 150 : 2000;
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t size = std::uniform_int_distribution<std::size_t>(1, longest)(random);
      ReceiveAndCompare(bytes.substr(at, size));
      if (HasFatalFailure()) return;
      at += size;
    }
  }
}

TEST_F(Cutting, OfStreamsWithDamagedBytesGivesWhatTheRulesSay) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    RandomRecords records(seed);
    std::mt19937 random(seed);
    Reset();
    std::string bytes = records.Stream(30, {"S1", "L1"});
    for (int damages = 0; damages < 20; ++damages)
      bytes[random() % bytes.size()] = static_cast<char>(random());
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t size = std::uniform_int_distribution<std::size_t>(1, 400)(random);
      ReceiveAndCompare(bytes.substr(at, size));
      if (HasFatalFailure()) return;
      at += size;
    }
  }
}

// Of so many symbols, the decoder looks ahead at those of the records to come.
TEST_F(Cutting, OfDamagedStreamsAmongManySymbolsGivesWhatTheRulesSay) {
  for (int i = 0; i < 5'000; ++i) {
    ReceiveAndCompare(Level1Wire("S1").Symbol("S" + std::to_string(i)).Last(1));
    ForgetPublished();
  }
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    RandomRecords records(seed);
    std::mt19937 random(seed);
    std::string bytes = records.Stream(30, {"S1", "L1"});
    for (int i = 0; i < 10; ++i)
      bytes += Level1Wire("S1").Symbol("S" + std::to_string(5'000 + random() % 5'000)).Last(2);
    for (int damages = 0; damages < 10; ++damages)
      bytes[random() % bytes.size()] = static_cast<char>(random());
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t size = std::uniform_int_distribution<std::size_t>(1, 700)(random);
      ReceiveAndCompare(bytes.substr(at, size));
      if (HasFatalFailure()) return;
      at += size;
    }
    ForgetPublished();
  }
}

// What a cut does to three records, place by place, in words.
TEST_F(Cutting, LosesNothingButAtThePlacesNamedHere) {
  const std::string a = Level1Wire("S1").Symbol("A").Last(1);
  const std::string b = Level1Wire("L1").Symbol("B").Last(2);
  const std::string c = Level1Wire("S1").Symbol("C").Last(3);
  const std::string bytes = a + b + c;
  const std::size_t end_of_a = a.size();
  const std::size_t end_of_b = end_of_a + b.size();
  for (std::size_t cut = 1; cut < bytes.size(); ++cut) {
    SCOPED_TRACE(cut);
    Reset();
    ReceiveAndCompare(bytes.substr(0, cut));
    ReceiveAndCompare(bytes.substr(cut));
    const auto symbols = Symbols();
    if (cut <= 5) {
      // The first chunk is forgotten, and what follows is of no known kind.
      EXPECT_THAT(symbols, ElementsAre());
    } else if (cut > end_of_a && cut <= end_of_a + 3) {
      // B's head was forgotten, so the rest of the stream has nothing to be laid behind.
      EXPECT_THAT(symbols, ElementsAre("A"));
    } else if (cut > end_of_b && cut <= end_of_b + 3) {
      EXPECT_THAT(symbols, ElementsAre("A", "B"));
    } else if (cut + 2 >= bytes.size()) {
      // The last one or two bytes of C are dropped.
      EXPECT_THAT(symbols, ElementsAre("A", "B"));
    } else {
      EXPECT_THAT(symbols, ElementsAre("A", "B", "C"));
    }
  }
}

// Where a tail is pending and the next chunk begins with L1 the difference to the uncut stream is this: the
// torn record gets the chunk's last byte and zeros, the chunk's own records are lost, and the walk doesn't
// end in the zeros.
TEST_F(Cutting, BeforeTheLettersL1InsideARecordLosesTheRestOfTheChunk) {
  const std::string torn = Level1Wire("S1").Symbol("XL1").Last(1);
  const std::string next = Level1Wire("S1").Symbol("N").Last(2);
  const std::size_t cut = torn.find("L1");
  ReceiveAndCompare(torn.substr(0, cut));
  ASSERT_EQ(Receive(torn.substr(cut) + next), ReferenceStream::Outcome::Endless);
  EXPECT_THAT(Take(), ::testing::SizeIs(0)) << "the torn record has no price";
  ReceiveAndCompare(next);
  EXPECT_THAT(Symbols(), ElementsAre("N")) << "whole chunks are read again";
}

}  // namespace
}  // namespace mirelo::testing
