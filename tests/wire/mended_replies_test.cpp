#include "wire/mended_replies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/answering_internet.h"

namespace mirelo::wire {
namespace {

using testing::AnsweringInternet;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kRecord = "A,d,t,1,2,3,4,U,10,6,7,8,9,10,11,12,13,14,15";

// An internet whose connections are reset behind so many reads.
class ResettingInternet : public AnsweringInternet {
 public:
  int good_reads = 0;

  bool InternetReadFile(Handle handle, char* buffer, std::uint32_t capacity, std::uint32_t& read) override {
    if (good_reads-- > 0) return AnsweringInternet::InternetReadFile(handle, buffer, capacity, read);
    read = 0;
    return false;
  }
};

class Replies : public ::testing::Test {
 protected:
  Replies() {
    replies.Refused.Subscribe([this](const std::string& text) { refused.push_back(text); });
  }

  // The reply to a request, as its reader gets it; nothing when that fails.
  static std::optional<std::string> Read(host::WinInetApi& internet, const std::string& object) {
    const auto connection = internet.InternetConnectA(1, "quotes.example", 8000, "", "", 3);
    const auto request = internet.HttpOpenRequestA(connection, "GET", object, "HTTP/1.0", "", 0);
    EXPECT_TRUE(internet.HttpSendRequestA(request, "", ""));
    std::string reply;
    char piece[1000];
    for (std::uint32_t count = 1; count > 0;) {
      count = 7;
      if (!internet.InternetReadFile(request, piece, sizeof piece, count)) {
        EXPECT_EQ(count, 0U);
        return std::nullopt;
      }
      reply.append(piece, count);
    }
    internet.InternetCloseHandle(request);
    return reply;
  }
  void Answer(const std::string& reply) {
    internet.answer = [=](const AnsweringInternet::Request&) { return reply; };
  }

  AnsweringInternet internet;
  MendedReplies replies{internet};
  std::vector<std::string> refused;
};

TEST_F(Replies, FailWhereTheirReadingFails) {
  for (const std::string object : {"/req?GetLastQuote(A)", "/req?EnumPorts()"}) {
    for (const int good : {0, 1, 2}) {
      ResettingInternet resetting;
      resetting.answer = [](const AnsweringInternet::Request&) {
        return "OK\r\n" + kRecord + std::string(5000, ' ');
      };
      resetting.good_reads = good;
      MendedReplies mended(resetting);
      EXPECT_EQ(Read(mended, object), std::nullopt) << object << " behind " << good << " reads";
      EXPECT_THAT(mended.TakeFlaws(), IsEmpty()) << "what is wrong is not the record";
    }
  }
}

TEST_F(Replies, AreRefusedWithMoreLinesAndFieldsThanThat) {
  const std::string why =
      "The reply of http://quotes.example:8000 was refused: it has more than 100,000 lines and fields";
  for (const char separator : {',', '\n'}) {
    for (const std::string object : {"/req?GetLastQuote(A)", "/req?EnumPorts()"}) {
      Answer(std::string(MendedReplies::kMostFields + 1, separator));
      EXPECT_EQ(Read(replies, object), std::nullopt);
      EXPECT_THAT(refused, ElementsAre(why)) << "once";
      refused.clear();

      const std::string most(MendedReplies::kMostFields, separator);
      Answer(most);
      EXPECT_EQ(Read(replies, object), most);
      EXPECT_THAT(refused, IsEmpty());
    }
  }
}

TEST_F(Replies, AreMendedWhereTheyAreOfQuotes) {
  Answer("OK\r\n" + kRecord + "\r\n");
  EXPECT_EQ(Read(replies, "/req?GetLastQuote(A)"), "OK\r\n" + kRecord);
  EXPECT_EQ(Read(replies, "/req?EnumPorts()"), "OK\r\n" + kRecord + "\r\n");
}

}  // namespace
}  // namespace mirelo::wire
