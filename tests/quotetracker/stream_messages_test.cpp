#include "quotetracker/stream_messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace mirelo::quotetracker {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kGood[] = {
    "<LOGIN><AppName>N</AppName><AppID>I</AppID><AppVer>V</AppVer><AppAuth>A</AppAuth></LOGIN>",
    "<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>",
    "<L1SITE><STREAMER>S.SDF</STREAMER></L1SITE>",
    "<L1QUOTES><ReqType>SUB</ReqType><Symbols>A,B</Symbols></L1QUOTES>",
    "<L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>",
};

bool IsUnknown(std::string_view message) {
  return std::holds_alternative<UnknownRequest>(ParseStreamRequest(message));
}

TEST(StreamRequest, IsALogin) {
  const auto login = std::get<LoginRequest>(ParseStreamRequest(kGood[0]));
  EXPECT_EQ(login.app_name, "N");
  EXPECT_EQ(login.app_id, "I");
  EXPECT_EQ(login.app_version, "V");
  EXPECT_EQ(login.app_auth, "A");
}

TEST(StreamRequest, IsALoginAlsoWithoutAVersion) {
  const auto request = ParseStreamRequest(
      "<LOGIN><AppName>N</AppName><AppID>I</AppID><AppVer></AppVer><AppAuth>A</AppAuth></LOGIN>");
  EXPECT_EQ(std::get<LoginRequest>(request).app_version, "");
}

TEST(StreamRequest, AsksForSourcesOrChoosesAStreamer) {
  EXPECT_EQ(std::get<SourcesRequest>(ParseStreamRequest(kGood[1])).source_type, "L1");
  EXPECT_EQ(std::get<StreamerRequest>(ParseStreamRequest(kGood[2])).file, "S.SDF");
}

TEST(StreamRequest, SubscribesToTheSymbolsOfAllItsGroups) {
  const auto request = ParseStreamRequest(
      "<L1QUOTES><ReqType>SUB</ReqType><Symbols>A,B,C,D</Symbols><Symbols>E,F,G,H,I</Symbols><Symbols>J</"
      "Symbols>"
      "</L1QUOTES>");
  EXPECT_THAT(std::get<SubscribeRequest>(request).symbols,
              ElementsAre("A", "B", "C", "D", "E", "F", "G", "H", "I", "J"));
}

TEST(StreamRequest, MaySubscribeToNothing) {
  const auto request = ParseStreamRequest("<L1QUOTES><ReqType>SUB</ReqType><Symbols></Symbols></L1QUOTES>");
  EXPECT_THAT(std::get<SubscribeRequest>(request).symbols, IsEmpty());
}

TEST(StreamRequest, LeavesOutEmptySymbols) {
  const auto request =
      ParseStreamRequest("<L1QUOTES><ReqType>SUB</ReqType><Symbols>,A,,B,</Symbols></L1QUOTES>");
  EXPECT_THAT(std::get<SubscribeRequest>(request).symbols, ElementsAre("A", "B"));
}

TEST(StreamRequest, UnsubscribesFromAll) {
  EXPECT_TRUE(std::holds_alternative<UnsubscribeAllRequest>(ParseStreamRequest(kGood[4])));
}

TEST(StreamRequest, IsUnknownInAnyOtherForm) {
  for (const char* message :
       {"", "hello", "<LOGIN></LOGIN>", "<login><AppName>N</AppName></login>", "<L1QUOTES></L1QUOTES>",
        "<L1QUOTES><ReqType>SUB</ReqType></L1QUOTES>",
        "<L1QUOTES><ReqType>SUB</ReqType><Symbols>A</L1QUOTES>",
        "<L1QUOTES><ReqType>UNSUB</ReqType></L1QUOTES>", "<L1SITE></L1SITE>",
        "<L1QUOTES><ReqType>UNSUBALL</ReqType><Symbols>A</Symbols></L1QUOTES>",
        "<LOGIN><AppID>I</AppID><AppName>N</AppName><AppVer>V</AppVer><AppAuth>A</AppAuth></LOGIN>"}) {
    SCOPED_TRACE(message);
    EXPECT_TRUE(IsUnknown(message));
  }
}

TEST(StreamRequest, IsUnknownWithAnythingMissingBeforeOrBehind) {
  for (const std::string message : kGood) {
    SCOPED_TRACE(message);
    EXPECT_FALSE(IsUnknown(message));
    EXPECT_TRUE(IsUnknown(" " + message));
    EXPECT_TRUE(IsUnknown(message + "\r\n"));
    for (std::size_t length = 0; length < message.size(); ++length) {
      EXPECT_TRUE(IsUnknown(message.substr(0, length))) << length;
    }
  }
}

TEST(MessageSplitter, FindsMessagesWhereverTheirBytesAreCut) {
  const std::string bytes = "first\xFFsecond\xFF\xFFrest";
  for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
    MessageSplitter splitter;
    std::vector<std::string> messages;
    for (const std::string& part : {bytes.substr(0, cut), bytes.substr(cut)}) {
      EXPECT_TRUE(splitter.Add(part));
      while (auto message = splitter.Next()) messages.push_back(*message);
    }
    EXPECT_THAT(messages, ElementsAre("first", "second", "")) << cut;
    EXPECT_TRUE(splitter.Add("!\xFF"));
    EXPECT_EQ(splitter.Next(), "rest!");
  }
}

TEST(MessageSplitter, GivesUpOnAMessageWithoutEnd) {
  MessageSplitter splitter;
  const std::string megabyte(1024 * 1024, 'x');
  bool goes_on = true;
  for (std::size_t i = 0; i < MessageSplitter::kMostLength / megabyte.size(); ++i) {
    goes_on = splitter.Add(megabyte);
    EXPECT_TRUE(goes_on);
    EXPECT_EQ(splitter.Next(), std::nullopt);
  }
  EXPECT_FALSE(splitter.Add("x"));
}

TEST(MessageSplitter, TakesMoreThanTheMostWhenItHoldsWholeMessages) {
  MessageSplitter splitter;
  EXPECT_TRUE(splitter.Add(std::string(MessageSplitter::kMostLength, 'x') + "\xFF"));
  EXPECT_EQ(splitter.Next()->size(), MessageSplitter::kMostLength);
}

}  // namespace
}  // namespace mirelo::quotetracker
