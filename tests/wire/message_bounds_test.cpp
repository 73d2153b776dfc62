#include "wire/message_bounds.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "support/level1_wire.h"

namespace mirelo::wire {
namespace {

using testing::Level1Wire;

// A message with a bar where it ends; without a bar its end has not come.
struct Message {
  const char* text;
};

constexpr Message kMessages[] = {
    // What the server sends, and what it may put around it.
    {"OK<CONNECT><SERVERTIME>12/31/2005 09:30:15</SERVERTIME><SERVERVERSION>4</SERVERVERSION></CONNECT>|"},
    {"OK<CONNECT><SERVERTIME>09:30</SERVERTIME></CONNECT>|\r\n"},
    {"OK 0042: <connect><ServerTime>09:30</sErvertime></CONNECT>|more"},
    {"OK<CONNECT>QT</CONNECT><SERVERTIME>9</SERVERTIME> <SERVERVERSION>4</SERVERVERSION>|\xFF"},
    {"OK<SERVERVERSION>4</SERVERVERSION><SERVERTIME>9</SERVERTIME><CONNECT>QT</CONNECT>|"},
    {"OK<STREAMER>A.SDF</STREAMER>|OK<STREAMER>B.SDF</STREAMER>"},
    {"OK<X>1</X><STREAMER>A.SDF</STREAMER>|"},
    {"LO<STATUSCODE>0</STATUSCODE><STATUSDESC></STATUSDESC>|</LOGIN>"},
    {"LO <STATUSDESC>not you</STATUSDESC> <STATUSCODE>1</STATUSCODE>|"},
    {"ES<SOURCES><SOURCETYPE>L1</SOURCETYPE></SOURCES>|</SOURCES>"},
    {"ES</sources>|"},
    // An empty tag counts for nothing, and of a repeated one the first is read.
    {"OK<CONNECT></CONNECT><STREAMER>A.SDF</STREAMER>|"},
    {"OK<STREAMER></STREAMER><STREAMER>A.SDF</STREAMER>"},
    {"LO<STATUSCODE>1</STATUSCODE><STATUSCODE>0</STATUSCODE><STATUSDESC>x</STATUSDESC>|"},
    // What may still come would be read.
    {"OK"},
    {"OK<CONNECT>QT</CONNECT>"},
    {"OK<CONNECT>QT</CONNECT><SERVERTIME>9</SERVERTIME>"},
    {"OK<CONNECT><STREAMER>A.SDF</STREAMER>"},
    {"OK<STREAMER>A.SDF</STREAMER"},
    {"LO<STATUSCODE>0</STATUSCODE>"},
    {"LO<STATUSCODE>0<STATUSDESC>x</STATUSDESC>"},
    {"ES<SOURCES></SOURCE>"},
};

// Of a message whose bytes have come at once.
std::optional<std::size_t> EndOf(std::string_view bytes) {
  return GrowingMessage().EndOf(KindOf(bytes), bytes);
}
bool BreaksOff(std::string_view bytes) { return GrowingMessage().BreaksOff(bytes); }

TEST(MessageBounds, EndAControlMessageWhereNothingBehindItWouldBeRead) {
  for (const Message& message : kMessages) {
    SCOPED_TRACE(message.text);
    std::string text = message.text;
    const auto bar = text.find('|');
    if (bar == std::string::npos) {
      EXPECT_EQ(EndOf(text), std::nullopt);
    } else {
      text.erase(bar, 1);
      EXPECT_EQ(EndOf(text), bar);
    }
  }
}

// However the bytes come, the end is found at the same place, as soon as it has come.
TEST(MessageBounds, AreKnownWithTheLastByteOfTheMessage) {
  for (const Message& message : kMessages) {
    SCOPED_TRACE(message.text);
    std::string text = message.text;
    const auto bar = text.find('|');
    if (bar != std::string::npos) text.erase(bar, 1);
    for (std::size_t size = 2; size <= text.size(); ++size) {
      const auto end = EndOf(std::string_view(text).substr(0, size));
      EXPECT_EQ(end, bar != std::string::npos && size >= bar ? std::optional(bar) : std::nullopt) << size;
    }
  }
}

TEST(MessageBounds, TellKindsByTwoLetters) {
  for (const char* record : {"S1", "L1", "HO", "HT"}) EXPECT_EQ(KindOf(record), MessageKind::kRecord);
  EXPECT_EQ(KindOf("OK."), MessageKind::kAcceptance);
  EXPECT_EQ(KindOf("LO."), MessageKind::kLoginResult);
  EXPECT_EQ(KindOf("ES."), MessageKind::kSources);
  for (const char* other : {"ok", "S2", "KO", "  ", "\xFF\xFF"})
    EXPECT_EQ(KindOf(other), MessageKind::kUnknown);
  for (const char letter : std::string("SLHOE")) EXPECT_TRUE(MayBeginMessage(letter));
  for (const char letter : std::string("KT1o \xFF")) EXPECT_FALSE(MayBeginMessage(letter));
}

std::size_t PlaceOfHead(const std::string& bytes, MessageKind within = MessageKind::kUnknown) {
  const auto head = FindHead(bytes, 0, within);
  return head ? head->begin : std::string::npos;
}

TEST(MessageBounds, FindAControlMessageByItsLettersAndItsTag) {
  EXPECT_EQ(PlaceOfHead("..OK<CONNECT>"), 2U);
  EXPECT_EQ(PlaceOfHead("..OK<streamer>"), 2U);
  EXPECT_EQ(PlaceOfHead("..LO<STATUSCODE>"), 2U);
  EXPECT_EQ(PlaceOfHead("..LO 17 <STATUSDESC>"), 2U);
  EXPECT_EQ(PlaceOfHead("..ES<SOURCES>"), 2U);
  EXPECT_EQ(PlaceOfHead("A BOOK: HELLO 0 <STATUSCODE>"), 11U);
  EXPECT_EQ(PlaceOfHead("OK." + std::string(63, '.') + "<CONNECT>"), 0U);
}

TEST(MessageBounds, FindNothingInTextThatOnlyLooksAlike) {
  for (const std::string& text :
       {std::string("BOOK</NAME>"), std::string("OK<CONNECT"), std::string("LO<CONNECT>"),
        std::string("OK<STATUSCODE>"), std::string("OK<X><CONNECT>"), std::string("OK><CONNECT>"),
        "OK." + std::string(64, '.') + "<CONNECT>", std::string("S1 is a street"),
        std::string("S1\x06\0\1", 5), std::string("S1\x05\0\1\0", 6), std::string("S1\xFF\xFF\1\0", 6),
        std::string("S1\x06\0\0\0", 6), std::string("S1\x06\0\x20\0", 6), std::string("s1\x06\0\1\0", 6)}) {
    EXPECT_EQ(PlaceOfHead(text), std::string::npos) << text;
  }
}

TEST(MessageBounds, FindARecordByItsFirstField) {
  const std::string record = Level1Wire("HT").Symbol("MSFT").Last(1);
  EXPECT_EQ(PlaceOfHead("S1 junk " + record), 8U);
  EXPECT_EQ(PlaceOfHead("OK<X>" + record + "OK<CONNECT>"), 5U);
  EXPECT_EQ(PlaceOfHead("OK<CONNECT>" + record), 0U);
  const std::string shortest = Level1Wire("S1").Symbol("A");
  EXPECT_EQ(PlaceOfHead("S1" + shortest), 2U) << "the second letters could be the length of the first ones";
}

TEST(MessageBounds, TakeATagForThatOfAnotherMessageOnlyWhereItRepeats) {
  EXPECT_EQ(PlaceOfHead("LO HELLO<STATUSCODE>", MessageKind::kLoginResult), std::string::npos);
  EXPECT_EQ(PlaceOfHead("LO<STATUSCODE>0</STATUSCODE>HELLO<STATUSDESC>", MessageKind::kLoginResult),
            std::string::npos);
  EXPECT_EQ(PlaceOfHead("LO<STATUSCODE>0</STATUSCODE>LO<STATUSCODE>", MessageKind::kLoginResult), 28U);
  EXPECT_EQ(PlaceOfHead("OK<CONNECT>QT</CONNECT>OK<STREAMER>", MessageKind::kAcceptance), 23U);
  EXPECT_EQ(PlaceOfHead("OK<CONNECT>QT</CONNECT>LO<STATUSCODE>", MessageKind::kAcceptance), 23U);
}

TEST(MessageBounds, NoHeadReachesFurtherThanIsSaid) {
  const std::string longest = "LO" + std::string(64, '.') + "<STATUSCODE>";
  const auto head = FindHead(longest, 0);
  ASSERT_TRUE(head);
  EXPECT_EQ(head->begin, 0U);
  EXPECT_LE(head->known, kLongestHead);
}

TEST(MessageBounds, AreThoseOfAMessageThatGrowsByteByByte) {
  for (const std::string text :
       {"OK<CONNECT>QT<SERVERTIME>09</SERVERTIME></CONNECT>",
        "OK<CONNECT>QT</CONNECT><SERVERTIME>9</SERVERTIME>x", "OK<STREAMER>A</STREAMER><CONNECT>B</CONNECT>",
        "ok<streamer></streamer><X>y", "OK<STREAMER>A</STREAMER>",
        "OK<CONNECT>1</CONNECT>2<SERVERVERSION>3</SERVERVERSION><SERVERTIME>4</SERVERTIME>5",
        "LO<STATUSDESC>a>b<</STATUSDESC><STATUSCODE>0</STATUSCODE><STATUSCODE>",
        "LO<STATUSCODE></STATUSCODE>"}) {
    GrowingMessage growing;
    for (std::size_t size = 2; size <= text.size(); ++size) {
      SCOPED_TRACE(text.substr(0, size));
      const auto part = std::string_view(text).substr(0, size);
      EXPECT_EQ(growing.EndOf(KindOf(part), part), EndOf(part));
      EXPECT_EQ(growing.BreaksOff(part), BreaksOff(part));
    }
    growing.Forget();
    EXPECT_FALSE(growing.BreaksOff("OK")) << "it is another message";
  }
}

TEST(MessageBounds, TellAMessageThatBreaksOff) {
  for (const char* whole :
       {"OK", "OK 17", "LO<STATUSCODE>0</STATUSCODE>", "OK<CONNECT>QT</CONNECT>", "OK<X>y"})
    EXPECT_FALSE(BreaksOff(whole)) << whole;
  for (const char* part : {"OK<", "OK<CONNE", "OK<CONNECT>", "OK<CONNECT>QT</CONN", "LO<STATUSCODE>0",
                           "OK<CONNECT>QT</CONNECT><SERVERTIME>09", "LO<STATUSCODE>0</STATUSCODE><STAT"})
    EXPECT_TRUE(BreaksOff(part)) << part;
}

}  // namespace
}  // namespace mirelo::wire
