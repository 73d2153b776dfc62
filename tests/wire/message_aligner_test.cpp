#include "wire/message_aligner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/level1_wire.h"
#include "wire/whole_messages.h"

namespace mirelo::wire {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::Level1Wire;
using testing::WholeMessages;
using Chunks = std::vector<std::string>;

constexpr const char* kGreeting =
    "OK<CONNECT><SERVERTIME>12/31/2005 09:30:15</SERVERTIME><SERVERVERSION>4</SERVERVERSION></CONNECT>";
constexpr const char* kLoggedIn = "LO<STATUSCODE>0</STATUSCODE><STATUSDESC>Login accepted</STATUSDESC>";
constexpr const char* kAcceptedLogin = "OK<STREAMER>SWISS.SDF</STREAMER>";
constexpr const char* kSources =
    "ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE><FILENAME>A.SDF</FILENAME><NAME>LOOK: S1, "
    "HO</NAME></SOURCE>"
    "</SOURCES>";
constexpr const char* kAskSources = "<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>\xFF";

// A record of that many bytes in all, at least 14.
std::string Record(const std::string& kind, std::size_t length) {
  return Level1Wire(kind).Symbol("MSFT").Text(18, std::string(length - 14, 'x'));
}

Chunks Feed(MessageAligner& aligner, std::string_view bytes) {
  aligner.Add({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  Chunks chunks;
  while (const auto chunk = aligner.Next()) chunks.emplace_back(chunk->begin(), chunk->end());
  return chunks;
}

Chunks FeedAll(std::string_view bytes) {
  MessageAligner aligner;
  return Feed(aligner, bytes);
}

Chunks LetGo(MessageAligner& aligner) {
  aligner.LetGo();
  Chunks chunks;
  while (const auto chunk = aligner.Next()) chunks.emplace_back(chunk->begin(), chunk->end());
  return chunks;
}

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
  const std::string records = Record("S1", 4000) + Record("S1", 4192) + Record("S1", 14);
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, records), ElementsAre(records.substr(0, 8192), Record("S1", 14)));
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
    const std::size_t size = 1 + chance() % 8192;
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

// --- Records whose length reaches into those behind them -----------------------------------------------

// The record, with a length that is more than the true one by so many bytes.
std::string WithLength(Level1Wire record, std::size_t more) {
  return record.Length(static_cast<std::int16_t>(record.Bytes().size() + more));
}

TEST(MessageAligner, LeavesOutARecordWhoseLengthReachesIntoTheNextOneAndTells) {
  const std::string next = Level1Wire().Symbol("IBM").Last(2).Volume(200);
  for (const std::size_t more : {1U, 3U, 5U, 6U, 20U, static_cast<unsigned>(next.size())}) {
    SCOPED_TRACE(more);
    const std::string lying = WithLength(Level1Wire().Symbol("MSFT").Last(1), more);
    for (const std::string& before : {std::string(), next}) {
      WholeMessages all(false);
      all.Add(before + lying + next + next);
      EXPECT_EQ(all.Messages(), Chunks(before.empty() ? 2 : 3, next));
      EXPECT_THAT(all.Aligner().TakeNews(), ElementsAre(HasSubstr("length cannot be")));
    }
  }
}

// A record that was cut off at its sender's, so that its last field takes the next one's head for its value.
TEST(MessageAligner, FindsTheNextRecordInAFieldThatHasTakenItsHead) {
  const std::string next = Level1Wire().Symbol("IBM").Last(2).Volume(200);
  const Level1Wire whole = Level1Wire().Symbol("MSFT").Volume(7).Last(1);
  const auto length = static_cast<std::int16_t>(whole.Bytes().size());
  const Level1Wire cut_texts[] = {Level1Wire().Id(1).Raw("MS"), Level1Wire().Symbol("MSFT").Id(18).Raw("Mic"),
                                  Level1Wire().Symbol("MSFT").Id(4).Raw("\1\2\3"),
                                  Level1Wire().Symbol("MSFT").Id(15).Raw("0120")};
  for (Level1Wire cut : cut_texts) {
    cut.Length(length);
    WholeMessages all(false);
    all.Add(cut.Bytes() + next + next + next);
    EXPECT_THAT(all.Messages(), ElementsAre(next, next, next)) << ::testing::PrintToString(cut.Bytes());
    EXPECT_THAT(all.Aligner().TakeNews(), ElementsAre(HasSubstr("length cannot be")));
  }
}

TEST(MessageAligner, TakesAFieldThatOnlyLooksLikeARecordForAField) {
  for (const std::string symbol : {"HOT", "SHOP", "S1x", "L1 "}) {
    const std::string fit = Level1Wire().Symbol(symbol).Last(4).Volume(7);
    const std::string unfit = Level1Wire().Symbol(symbol).Last(4).Id(4).Raw("12");
    WholeMessages all(false);
    all.Add(fit + unfit + Record("S1", 120) + fit);
    EXPECT_THAT(all.Messages(), ElementsAre(fit, unfit, Record("S1", 120), fit));
    EXPECT_THAT(all.Aligner().TakeNews(), IsEmpty());
  }
}

// A head that strays into the stream holds good quotes back neither until they fill its length nor at all
// once that is known to lie.
TEST(MessageAligner, LosesNoQuoteToAStrayHead) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2).Volume(200);
  for (const int length : {200, 8'000, 32'767}) {
    SCOPED_TRACE(length);
    MessageAligner aligner;
    const std::string stray = Level1Wire().Id(1).Length(static_cast<std::int16_t>(length));
    EXPECT_THAT(Feed(aligner, stray), IsEmpty());
    EXPECT_EQ(aligner.Patience(), MessageAligner::kRecordPatience);
    EXPECT_THAT(Feed(aligner, quote), IsEmpty()) << "its fields may be the head's";
    EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
    EXPECT_THAT(Feed(aligner, quote), ElementsAre(quote + quote));
    EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("length cannot be")));
  }
}

TEST(MessageAligner, GivesWhatCameBehindAStrayHeadWhenItIsLetGo) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  for (const int field : {1, 4, 6, 11, 15, 18}) {
    SCOPED_TRACE(field);
    const std::string stray = Level1Wire().Id(field).Length(30'000);
    for (const std::string& behind : {quote, std::string(kLoggedIn)}) {
      MessageAligner aligner;
      EXPECT_THAT(Feed(aligner, stray + behind), IsEmpty());
      EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
      EXPECT_TRUE(aligner.WaitsForRecord());
      EXPECT_THAT(LetGo(aligner), ElementsAre(behind));
      EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("do not end")));
      EXPECT_EQ(aligner.Patience(), std::nullopt);
    }
  }
}

TEST(MessageAligner, LetsGoOfTheRecordAtTheFrontAlone) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  MessageAligner aligner;
  Feed(aligner, Level1Wire().Id(1).Length(30'000).Bytes() + kLoggedIn + quote.substr(0, 10));
  EXPECT_THAT(LetGo(aligner), ElementsAre(kLoggedIn));
  EXPECT_EQ(aligner.Patience(), MessageAligner::kRecordPatience);
  EXPECT_THAT(Feed(aligner, quote.substr(10)), ElementsAre(quote));
}

TEST(MessageAligner, LeavesOutARecordWhoseRestDoesNotComeAndTells) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  MessageAligner aligner;
  Feed(aligner, quote.substr(0, 12));
  EXPECT_THAT(LetGo(aligner), IsEmpty());
  EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("do not end")));
  EXPECT_THAT(Feed(aligner, quote.substr(12) + quote), ElementsAre(quote));
}

TEST(MessageAligner, GivesAllThatWaitsBehindStrayHeadsAtTheEnd) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  const std::string stray = Level1Wire().Id(4).Length(30'000);
  const std::string refused = "LO<STATUSCODE>1</STATUSCODE>";
  WholeMessages all(false);
  all.Add(stray + quote + stray + refused).LetGo();
  EXPECT_THAT(all.Messages(), ElementsAre(quote, refused));
}

TEST(MessageAligner, SaysWhetherTheSameRecordStillWaits) {
  const std::string quote = Level1Wire().Symbol("IBM").Last(2);
  MessageAligner aligner;
  Feed(aligner, quote + quote.substr(0, 8));
  const auto front = aligner.Front();
  EXPECT_EQ(front, quote.size());
  Feed(aligner, quote.substr(8, 3));
  EXPECT_EQ(aligner.Front(), front);
  Feed(aligner, quote.substr(11) + quote.substr(0, 11));
  EXPECT_EQ(aligner.Front(), 2 * quote.size());
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

// --- Lists of sources ----------------------------------------------------------------------------------

TEST(MessageAligner, GivesAListOfSourcesForEachThatWasAskedFor) {
  MessageAligner aligner;
  aligner.NoteRequest(kAskSources);
  EXPECT_THAT(Feed(aligner, kSources + Record("S1", 20) + kSources + Record("L1", 20)),
              ElementsAre(kSources, Record("S1", 20), Record("L1", 20)));
  EXPECT_THAT(aligner.TakeNews(), IsEmpty());
}

TEST(MessageAligner, GivesAListOfSourcesWholeWhereverItIsCut) {
  const std::string list = kSources;
  for (std::size_t cut = 1; cut < list.size(); ++cut) {
    SCOPED_TRACE(list.substr(0, cut));
    MessageAligner aligner;
    aligner.NoteRequest(kAskSources);
    EXPECT_THAT(Feed(aligner, list.substr(0, cut)), IsEmpty());
    EXPECT_THAT(Feed(aligner, list.substr(cut) + kGreeting), ElementsAre(list, kGreeting));
  }
}

TEST(MessageAligner, GivesNoListThatNobodyAskedFor) {
  for (const char* request : {"", "<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>\xFF"}) {
    MessageAligner aligner;
    aligner.NoteRequest(request);
    EXPECT_THAT(Feed(aligner, kSources + Record("S1", 20)), ElementsAre(Record("S1", 20)));
    EXPECT_THAT(Feed(aligner, "ES?"), IsEmpty());
    EXPECT_EQ(aligner.Patience(), MessageAligner::kPatience);
    EXPECT_THAT(LetGo(aligner), IsEmpty());
    EXPECT_THAT(Feed(aligner, kLoggedIn), ElementsAre(kLoggedIn));
  }
}

TEST(MessageAligner, GivesAListBehindStrayLettersOfItsKind) {
  MessageAligner aligner;
  EXPECT_THAT(Feed(aligner, "ES?"), IsEmpty());
  aligner.NoteRequest(kAskSources);
  EXPECT_THAT(Feed(aligner, kSources), ElementsAre(kSources));
}

TEST(MessageAligner, LeavesOutAListThatBreaksOffAndTells) {
  MessageAligner aligner;
  aligner.NoteRequest(kAskSources);
  EXPECT_THAT(Feed(aligner, "ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>" + Record("S1", 20)),
              ElementsAre(Record("S1", 20)));
  EXPECT_THAT(aligner.TakeNews(), ElementsAre(HasSubstr("broke off")));
  EXPECT_THAT(Feed(aligner, "ES<SOURCES><SOURCETYPE>"), IsEmpty());
  EXPECT_EQ(aligner.Patience(), MessageAligner::kLongPatience);
  EXPECT_THAT(LetGo(aligner), IsEmpty());
  EXPECT_THAT(Feed(aligner, kSources), ElementsAre(kSources)) << "it is still awaited";
}

TEST(MessageAligner, GivesAListUpToItsBoundAndNoneBeyond) {
  const std::string begin = "ES<SOURCES>";
  const std::string end = "</SOURCES>";
  const std::size_t room = MessageAligner::kLongestSources - begin.size() - end.size();
  for (const std::size_t size : {room, room + 1}) {
    MessageAligner aligner;
    aligner.NoteRequest(kAskSources);
    Chunks chunks = Feed(aligner, begin);
    for (std::size_t at = 0; at < size; at += 8192) {
      for (auto& chunk : Feed(aligner, std::string(std::min<std::size_t>(8192, size - at), 'x')))
        chunks.push_back(std::move(chunk));
    }
    EXPECT_FALSE(aligner.IsOverfull());
    for (auto& chunk : Feed(aligner, end)) chunks.push_back(std::move(chunk));
    EXPECT_EQ(chunks.size(), size == room ? 1U : 0U);
    EXPECT_EQ(aligner.IsOverfull(), size != room);
  }
}

TEST(MessageAligner, KeepsLittleOfWhatItLeavesOut) {
  for (const std::string begin : {"ES<SOURCES>", "junk", "S1"}) {
    SCOPED_TRACE(begin);
    MessageAligner aligner;
    Feed(aligner, begin);
    for (int i = 0; i < 100; ++i) {
      EXPECT_THAT(Feed(aligner, std::string(8192, '\xFE')), IsEmpty());
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
    const auto began = std::chrono::steady_clock::now();
    for (const char& byte : message) {
      EXPECT_THAT(Feed(aligner, {&byte, 1}), IsEmpty());
      (void)aligner.Patience();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(5));
    EXPECT_EQ(aligner.Waiting(), message.size());
  }
}

// Those of records as well, whose lengths may lie: inside of this one others begin everywhere, and none of
// them ends where its fields do.
TEST(MessageAligner, LooksAtEachByteOfALongRecordOnce) {
  const std::string inner = Level1Wire().Id(6).Length(32'767);  // which is the value of a field, too
  std::string fields;
  while (fields.size() < 32'000) fields += inner;
  for (const int length : {32'767, 16'001}) {
    SCOPED_TRACE(length);
    const std::string message = Level1Wire().Id(6).Raw(fields).Length(static_cast<std::int16_t>(length));
    MessageAligner aligner;
    const auto began = std::chrono::steady_clock::now();
    for (const char& byte : message) {
      EXPECT_THAT(Feed(aligner, {&byte, 1}), IsEmpty());
      (void)aligner.Patience();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(5));
    EXPECT_EQ(aligner.Waiting(), message.size());
  }
}

// The same of one that comes whole: of those inside each would be walked over to the end.
TEST(MessageAligner, DoesNotLookAtAllOfTheRecordsThatAPeerNests) {
  std::string nested;
  while (nested.size() < 32'600)
    nested += Level1Wire().Id(11).Length(static_cast<std::int16_t>(32'700 - nested.size()));
  const std::string record = Level1Wire().Long(6, 0).Raw(nested).Raw("\x7F").Bytes();
  std::string hostile = record;
  for (int i = 0; i < 20; ++i) hostile += record;
  MessageAligner aligner;
  const auto began = std::chrono::steady_clock::now();
  Feed(aligner, hostile);
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(2));
}

}  // namespace
}  // namespace mirelo::wire
