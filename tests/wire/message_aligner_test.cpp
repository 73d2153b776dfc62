#include "wire/message_aligner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "support/level1_wire.h"
#include "support/processor_time.h"
#include "wire/aligned_chunks.h"
#include "wire/whole_messages.h"

namespace mirelo::wire {
namespace {

using namespace mirelo::testing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// --- Records -------------------------------------------------------------------------------------------

TEST(MessageAligner, GivesRecordsThatAreWhole) {
  const std::string records = Record("S1", 20) + Record("L1", 30) + Record("S1", 40);
  EXPECT_THAT(FeedAll(records), ElementsAre(records));
}

TEST(MessageAligner, BeginsAChunkWithEachKindThatIsOnlyReadThere) {
  const std::string quotes = Record("S1", 20) + Record("L1", 30);
  const std::string others = Record("HO", 40) + Record("HO", 44) + Record("S1", 20);
  const std::string rest = Record("HT", 50);
  EXPECT_THAT(FeedAll(quotes + others + rest), ElementsAre(quotes, others, rest));
}

TEST(MessageAligner, HoldsTheBeginningOfARecordWhereverItIsCut) {
  const std::string first = Record("S1", 20);
  const std::string second = Record("L1", 30);
  for (std::size_t cut = 1; cut < second.size(); ++cut) {
    SCOPED_TRACE(cut);
    MessageAligner aligner;
    EXPECT_THAT(Feed(aligner, first + second.substr(0, cut)), ElementsAre(first));
    if (cut < 6) {
      EXPECT_EQ(aligner.Patience(), std::nullopt) << "it holds nothing back";
    } else {
      EXPECT_EQ(aligner.Patience(), MessageAligner::kRecordPatience);
    }
    EXPECT_THAT(Feed(aligner, second.substr(cut)), ElementsAre(second));
  }
}

TEST(MessageAligner, GivesNoChunkAboveTheLimitButForALongRecord) {
  const std::string records = Record("S1", 4000) + Record("S1", kChunkLimit - 4000) + Record("S1", 14);
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, records), ElementsAre(records.substr(0, kChunkLimit), Record("S1", 14)));
  EXPECT_THAT(Feed(aligner, Record("S1", 20000)), ElementsAre(Record("S1", 20000)));
  EXPECT_THAT(Feed(aligner, ""), IsEmpty());
}

TEST(MessageAligner, LosesNothingOfAStreamHoweverItIsCut) {
  std::mt19937 chance(20101);
  std::string stream;
  for (int i = 0; i < 2000; ++i) stream += Record(i % 3 == 0 ? "L1" : "S1", 14 + chance() % 200);
  MessageAligner aligner;
  std::string joined;
  for (std::size_t at = 0; at < stream.size();) {
    const std::size_t size = 1 + chance() % kChunkLimit;
    for (const std::string& chunk : Feed(aligner, stream.substr(at, size))) {
      EXPECT_TRUE(chunk.starts_with("S1") || chunk.starts_with("L1"));
      joined += chunk;
    }
    at += size;
  }
  EXPECT_EQ(joined, stream);
}

// Its fields lead the class to another place than the next record's.
TEST(MessageAligner, GivesARecordAloneWhoseFieldsDoNotEndWithIt) {
  const std::string good = Record("S1", 20);
  for (const std::string& bad :
       {Level1Wire().Symbol("A").Id(4).Raw("1234").Bytes(),
        Level1Wire().Symbol("A").Id(18).Raw("no end").Bytes(), Level1Wire().Symbol("A").Raw("\2").Bytes()}) {
    EXPECT_THAT(FeedAll(good + bad + good + good), ElementsAre(good, bad, good + good));
  }
}

TEST(MessageAligner, GivesARecordAloneThatBeginsWithAnUnknownField) {
  const std::string good = Record("S1", 20);
  const std::string strange = Level1Wire().Id(77).Raw("1234").Symbol("A").Last(1);
  EXPECT_THAT(FeedAll(good + strange + good), ElementsAre(good, strange, good));
}

TEST(MessageAligner, LeavesOutRecordsWithoutFields) {
  const std::string good = Record("L1", 20);
  EXPECT_THAT(FeedAll(good + std::string("S1\4\0S1\5\0x", 9) + good), ElementsAre(good, good));
}

TEST(MessageAligner, LeavesOutARecordWhoseLengthCannotBeAndTellsOnce) {
  const std::string good = Record("S1", 20);
  for (const std::int16_t length : std::initializer_list<std::int16_t>{0, 3, -1, -32768}) {
    SCOPED_TRACE(length);
    const std::string bad = Level1Wire().Symbol("A").Last(1).Length(length);
    MessageAligner aligner;
    EXPECT_THAT(Feed(aligner, good + bad + good), ElementsAre(good, good));
    EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("length")));
    EXPECT_THAT(Feed(aligner, bad + good), ElementsAre(good));
    EXPECT_THAT(aligner.TakeNews(), IsEmpty());
  }
}

TEST(MessageAligner, FindsTheNextRecordBehindOneWhoseLengthIsTooShort) {
  const std::string good = Record("S1", 40);
  const std::string lies = Level1Wire().Symbol("MSFT").Last(1).Length(8);
  EXPECT_THAT(FeedAll(lies + good), ElementsAre(lies.substr(0, 8), good));
}

// --- Control messages ----------------------------------------------------------------------------------

TEST(MessageAligner, GivesEachControlMessageAlone) {
  EXPECT_THAT(
      FeedAll(std::string(kGreeting) + kLoggedIn + kAcceptedLogin + Record("S1", 20) + kAcceptedLogin),
      ElementsAre(kGreeting, kLoggedIn, kAcceptedLogin, Record("S1", 20), kAcceptedLogin));
}

TEST(MessageAligner, HoldsAControlMessageUntilItIsWholeWhereverItIsCut) {
  for (const std::string message : {kGreeting, kLoggedIn, kAcceptedLogin}) {
    for (std::size_t cut = 1; cut < message.size(); ++cut) {
      SCOPED_TRACE(message.substr(0, cut));
      MessageAligner aligner;
      EXPECT_THAT(Feed(aligner, message.substr(0, cut)), IsEmpty());
      EXPECT_THAT(Feed(aligner, message.substr(cut)), ElementsAre(message));
      EXPECT_EQ(aligner.Patience(), std::nullopt);
    }
  }
}

TEST(MessageAligner, LeavesOutWhatStandsBehindAMessage) {
  for (const std::string behind : {"\r\n", "\xFF", " have a nice day", "</LOGIN>\r\n", "<X>1</X>", "zz"}) {
    SCOPED_TRACE(behind);
    MessageAligner aligner;
    EXPECT_THAT(Feed(aligner, kGreeting + behind + kLoggedIn + behind + Record("S1", 20)),
                ElementsAre(kGreeting, kLoggedIn, Record("S1", 20)));
  }
}

TEST(MessageAligner, KnowsAMessageBehindAnotherByItsLettersOrItsTag) {
  const std::string accepted = "OK 0003 <STREAMER>A</STREAMER>";
  EXPECT_THAT(FeedAll(kGreeting + std::string(" bye\r\n") + accepted), ElementsAre(kGreeting, accepted));
  const std::string refused = "LO<ERROR>1</ERROR>";
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, kGreeting + std::string("\r\n") + refused), ElementsAre(kGreeting));
  EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
  EXPECT_THAT(LetGo(aligner), ElementsAre(refused));
}

TEST(MessageAligner, EndsAMessageOfUnknownShapeWhereAnotherBegins) {
  const std::string record = Record("S1", 20);
  for (const std::string strange :
       {"OK", "OK\r\n", "OK<SUBSCRIBED>5</SUBSCRIBED>", "LO<STATUSCODE>0</STATUSCODE>",
        "OK<CONNECT>QT</CONNECT><SERVERTIME>9</SERVERTIME>", "OK<CONNECT>"}) {
    SCOPED_TRACE(strange);
    EXPECT_THAT(FeedAll(strange + record), ElementsAre(strange, record));
  }
  EXPECT_THAT(FeedAll(std::string("LO<STATUSCODE>0</STATUSCODE>") + kAcceptedLogin),
              ElementsAre("LO<STATUSCODE>0</STATUSCODE>", kAcceptedLogin));
}

TEST(MessageAligner, WaitsForTheRestOfAMessageOfUnknownShapeButNotForEver) {
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, "LO<STATUSCODE>1</STATUSCODE>"), IsEmpty());
  EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
  EXPECT_THAT(LetGo(aligner), ElementsAre("LO<STATUSCODE>1</STATUSCODE>"));
  EXPECT_EQ(aligner.Patience(), std::nullopt);

  EXPECT_THAT(Feed(aligner, "OK<STREAMER>A.S"), IsEmpty());
  EXPECT_EQ(aligner.Patience(), MessageAligner::kLongPatience) << "the tag must be closed";
  EXPECT_THAT(LetGo(aligner), ElementsAre("OK<STREAMER>A.S"));
  EXPECT_THAT(Feed(aligner, kAcceptedLogin), ElementsAre(kAcceptedLogin));
}

TEST(MessageAligner, EndsAMessageThatGrowsTooLong) {
  const std::string endless = "OK<CONNECT>" + std::string(100'000, 'x');
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, endless + Record("S1", 20)),
              ElementsAre(endless.substr(0, MessageAligner::kLongestReply), Record("S1", 20)));
}

TEST(MessageAligner, LeavesOutBytesOfNoKnownKind) {
  for (const std::string junk : {"x", "Sx", "L2..", "BOOK<NAME>", "\r\n\r\n", "\x80\x81\x82", "HE said OK"}) {
    SCOPED_TRACE(junk);
    EXPECT_THAT(FeedAll(junk + kGreeting + junk + Record("S1", 20)),
                ElementsAre(kGreeting, Record("S1", 20)));
  }
}

TEST(MessageAligner, IsAtABeginningAgainWhenNothingFollowsUnknownBytes) {
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, "junk LO"), IsEmpty());
  EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
  EXPECT_THAT(LetGo(aligner), IsEmpty());
  EXPECT_EQ(aligner.Patience(), std::nullopt);
  Feed(aligner, "LO<ERROR>1</ERROR>");
  EXPECT_THAT(LetGo(aligner), ElementsAre("LO<ERROR>1</ERROR>"));
}

// A few letters that stray into the stream have neither length nor end.
TEST(MessageAligner, LosesNoMessageToStrayLetters) {
  const std::string record = Record("S1", 20);
  for (const std::string stray : {"ES?", "ES", "E", "S", "S1", "S1?", "L1?", "HO?", "HT??", "OK?", "LO?", "L",
                                  "H", "O", "ES<SOURCES>", "OK<", "LO<STATUS", "?"}) {
    SCOPED_TRACE(stray);
    for (const std::string& message : {std::string(kGreeting), std::string(kLoggedIn), record}) {
      const Chunks chunks = FeedAll(stray + message + record);
      ASSERT_FALSE(chunks.empty());
      EXPECT_EQ(chunks.back(), message == record ? record + record : record);
      if (message == record) continue;
      // Letters of the message's own kind may stand in front of it, where the class passes over them.
      ASSERT_GE(chunks.size(), 2U);
      EXPECT_TRUE(chunks[chunks.size() - 2].ends_with(message));
      EXPECT_EQ(chunks[chunks.size() - 2].substr(0, 2), message.substr(0, 2));
    }
  }
}

// --- What is left out ----------------------------------------------------------------------------------

TEST(MessageAligner, KeepsLittleOfWhatItLeavesOut) {
  for (const std::string begin : {"ES<SOURCES>", "junk", "S1"}) {
    SCOPED_TRACE(begin);
    MessageAligner aligner;
    Feed(aligner, begin);
    for (int i = 0; i < 100; ++i) {
      EXPECT_THAT(Feed(aligner, std::string(kChunkLimit, '\xFE')), IsEmpty());
      EXPECT_LT(aligner.Waiting(), kLongestHead);
    }
    EXPECT_THAT(Feed(aligner, kGreeting), ElementsAre(kGreeting));
    EXPECT_EQ(aligner.Waiting(), 0U);
  }
}

// --- Symbols that were not subscribed --------------------------------------------------------------------

TEST(MessageAligner, LeavesOutRecordsOfEverNewSymbolsAndTellsOnce) {
  MessageAligner aligner;
  aligner.NoteRequest(
      "<L1QUOTES><ReqType>SUB</ReqType><Symbols>MSFT,IBM</Symbols><Symbols>F</Symbols></L1QUOTES>\xFF");
  const auto quotes_of = [&](const std::string& symbol) {
    return Feed(aligner, Level1Wire().Last(1).Symbol(symbol).Bytes()).size();
  };
  std::size_t passed = 0;
  for (std::size_t i = 0; i < 2 * SubscribedSymbols::kMostOthers; ++i)
    passed += quotes_of("N" + std::to_string(i));
  EXPECT_EQ(passed, SubscribedSymbols::kMostOthers);
  for (const char* subscribed : {"MSFT", "IBM", "F", "msft", "", "N0"})
    EXPECT_EQ(quotes_of(subscribed), 1U) << subscribed;
  EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("not asked for")));
  const std::string known = Record("S1", 20);
  EXPECT_THAT(Feed(aligner, known + Level1Wire().Symbol("NEW").Last(1).Bytes() + known),
              ElementsAre(known, known));
}

TEST(MessageAligner, KeepsAChunkWhileTheClientSends) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  MessageAligner aligner;
  aligner.Add({reinterpret_cast<const std::uint8_t*>(quote.data()), quote.size()});
  const auto chunk = aligner.Next();
  ASSERT_TRUE(chunk);
  aligner.NoteRequest("<L1QUOTES><Symbols>MSFT,IBM</Symbols></L1QUOTES>");
  EXPECT_EQ(std::string(chunk->begin(), chunk->end()), quote);
}

// --- However the bytes come -----------------------------------------------------------------------------

TEST(MessageAligner, GivesTheSameHoweverTheBytesCome) {
  const std::string record = Record("S1", 20);
  const std::string stray = "ES?";
  const std::string streams[] = {
      std::string(kGreeting) + kLoggedIn + kAcceptedLogin + record + Record("HO", 30) + record,
      std::string(kGreeting) + "\r\n" + kLoggedIn + " bye" + kSources + record + stray + record,
      "OK 1 <connect>QT</connect><servertime>9</servertime>LO HELLO<STATUSCODE>0</STATUSCODE>" + record,
      "LOOK" + std::string(kGreeting) + "OKOK<STREAMER>A</STREAMER>ESOK<CONNECT>" + record,
      stray + kSources + stray + kSources + "S1" + kGreeting + "L1?" + record,
      record + Level1Wire().Symbol("A").Last(1).Length(0).Bytes() + record +
          Level1Wire().Symbol("A").Last(1).Length(7).Bytes() + record +
          Level1Wire().Id(99).Raw("abcd").Symbol("B").Bytes() + record,
      Level1Wire().Id(1).Length(300).Bytes() + record + record +
          WithLength(Level1Wire().Symbol("A").Last(1), 5) + record +
          Level1Wire().Symbol("A").Id(4).Raw("12").Length(40).Bytes() + record + record,
  };
  for (const std::string& stream : streams) {
    SCOPED_TRACE(stream);
    for (const bool asked : {false, true}) {
      const auto whole = WholeMessages(asked).Add(stream).Messages();
      EXPECT_FALSE(whole.empty());
      WholeMessages bytes(asked);
      for (const char byte : stream) bytes.Add({&byte, 1});
      EXPECT_EQ(bytes.Messages(), whole);
      for (std::size_t cut = 1; cut < stream.size(); ++cut) {
        EXPECT_EQ(WholeMessages(asked).Add(stream.substr(0, cut)).Add(stream.substr(cut)).Messages(), whole)
            << cut;
      }
    }
  }
}

// Whoever looks for a lost quote finds its bytes in one or the other.
TEST(MessageAligner, GivesOrTellsOfEachByteInTheirOrder) {
  const std::string quote = Level1Wire().Symbol("MSFT").Last(1);
  const std::string lying = WithLength(Level1Wire().Symbol("LIAR").Last(1), 20);
  const std::string stream = std::string(kGreeting) + "\r\n  " + quote + "garbage" + kSources + quote +
                             lying + quote + kLoggedIn + quote + Record("S1", 100).substr(0, 50) + quote +
                             quote;
  for (const std::size_t piece : {stream.size(), std::size_t{7}, std::size_t{1}}) {
    SCOPED_TRACE(piece);
    std::string given_or_told;
    std::string told;
    MessageAligner aligner;
    aligner.OnLeftOut([&](MessageAligner::Bytes bytes) {
      given_or_told.append(bytes.begin(), bytes.end());
      told.append(bytes.begin(), bytes.end());
    });
    const auto take_all = [&] {
      while (const auto chunk = aligner.Next()) given_or_told.append(chunk->begin(), chunk->end());
    };
    for (std::size_t at = 0; at < stream.size(); at += piece) {
      const std::string_view bytes = std::string_view(stream).substr(at, piece);
      aligner.Add({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
      take_all();
    }
    aligner.End();
    take_all();
    std::string without_blanks = stream;
    without_blanks.erase(without_blanks.find("\r\n  "), 4);
    EXPECT_EQ(given_or_told, without_blanks);
    EXPECT_THAT(told, HasSubstr("LIAR"));
    EXPECT_THAT(told, HasSubstr("garbage"));
    EXPECT_THAT(told, HasSubstr("<SOURCES>"));
  }
}

// A peer that sends single bytes is not to cost more for each than for the one before.
TEST(MessageAligner, LooksAtEachByteOfALongMessageOnce) {
  const std::size_t much = MessageAligner::kLongestReply - 64;
  for (const std::string& message : {
           "OK<CONNECT>" + std::string(much, 'x'), "OK" + std::string(much / 8, '<'),
           "LO<STATUSCODE>" + std::string(much, '>'),
           "S1\xFF\x7F\xFF\x7F" + std::string(32000, 'x'),  // a record that begins with no known field
       }) {
    SCOPED_TRACE(message.substr(0, 8));
    MessageAligner aligner;
    const auto began = testing::ProcessorTime();
    for (const char& byte : message) {
      EXPECT_THAT(Feed(aligner, {&byte, 1}), IsEmpty());
      (void)aligner.Patience();
    }
    EXPECT_LT(testing::ProcessorTime() - began, std::chrono::seconds(5));
    EXPECT_EQ(aligner.Waiting(), message.size());
  }
}

}  // namespace
}  // namespace mirelo::wire
