#include <string>
#include <string_view>

#include "streaming/MD5.h"
#include "streaming/stream_test.h"
#include "streaming/tags.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Credential = MemoryVault::Credential;

constexpr std::string_view kSecret = "open sesame";

class Login : public StreamTest {
 protected:
  Login() {
    vault.credentials = {{Credential::ApplicationName, "Rows & Quotes"},
                         {Credential::ApplicationSecret, std::string(kSecret)}};
    stream->connect();
  }

  void Greet(std::string_view time, std::string_view version = "3.9.5") {
    Deliver("OK<CONNECT>hello<SERVERTIME>" + std::string(time) + "</SERVERTIME><SERVERVERSION>" +
            std::string(version) + "</SERVERVERSION></CONNECT>");
  }
  static std::string Digest(std::string_view time) {
    return MD5().DigestString(std::string(kSecret) + std::string(time));
  }
};

TEST_F(Login, SendsNameVersionAndDigest) {
  Greet("12/31/2005 09:30:15");
  EXPECT_THAT(Sent(), ElementsAre("<LOGIN><AppName>Rows & Quotes</AppName><AppID>Rows & Quotes</AppID>"
                                  "<AppVer>3.9.5</AppVer><AppAuth>" +
                                  Digest("12312005 0930") + "</AppAuth></LOGIN>\xFF"));
}

TEST_F(Login, ProvesTheSecretByTheDigestThatAnyOtherMd5Gives) {
  Greet("12/31/2005 09:30:15");
  EXPECT_EQ(GetTagValue(Sent().back(), "<AppAuth>"), "879408D2927B18E1C42A4D5072D28F73")
      << "of the text: open sesame12312005 0930";
}

TEST_F(Login, DigestsTheServersTimeWithoutItsSecondsSlashesAndColons) {
  struct Case {
    const char* time;
    const char* digested;
  };
  for (const auto& [time, digested] : {
           Case{"12/31/2005 09:30:15", "12312005 0930"},
           {"09:30", "09"},
           {"12/31/2005", "12312005"},
           {"1:2:3:4", "123"},
           {":30", ""},
           {"noon", "noon"},
           {"31.12.2005 9.30", "31.12.2005 9.30"},
       }) {
    SCOPED_TRACE(time);
    Greet(time);
    EXPECT_EQ(GetTagValue(Sent().back(), "<AppAuth>"), Digest(digested));
  }
}

TEST_F(Login, NeedsNoServerVersion) {
  Greet("09:30", "");
  EXPECT_THAT(Sent().back(), ::testing::HasSubstr("<AppVer></AppVer>"));
}

TEST_F(Login, IsNotSentWithoutAServerTime) {
  Deliver("OK<CONNECT>hello<SERVERVERSION>3.9.5</SERVERVERSION></CONNECT>");
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_EQ(vault.deciphered, 0) << "the credentials stay enciphered";
}

TEST_F(Login, IsRepeatedForASecondGreetingWithTheCredentialsDecipheredAnew) {
  Greet("09:30");
  Greet("09:31:00");
  EXPECT_EQ(Sent().size(), 2u);
  EXPECT_EQ(vault.deciphered, 4);
}

TEST_F(Login, RaisesTheVaultsErrorWhenACredentialIsMissing) {
  vault.credentials.erase(Credential::ApplicationSecret);
  EXPECT_EQ(NumberOf([&] { Greet("09:30"); }), 32001);
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(Login, WritesCredentialsInTheCodePage) {
  vault.credentials[Credential::ApplicationName] = "Zürich";
  Greet("09:30");
  EXPECT_EQ(Sent().back().substr(7, 6 + 9 + 10), "<AppName>Z\xFCrich</AppName>");
}

// The conversation's other texts go through the same search.
TEST(TagValue, StandsBetweenATagAndItsClosingTag) {
  struct Case {
    const char* message;
    const char* tag;
    const char* value;
  };
  for (const auto& [message, tag, value] : {
           Case{"OK x<A>1</A>", "<A>", "1"},
           {"<a>1</A>", "<A>", "1"},
           {"<A>1</A><A>2</A>", "<A>", "1"},
           {"<A></A>", "<A>", ""},
           {"<A>1", "<A>", ""},
           {"1</A>", "<A>", ""},
           {"</A>1<A>", "<A>", ""},
           {"</A><A>1</A>", "<A>", "1"},
           {"<A><B>1</B></A>", "<A>", "<B>1</B>"},
           {"<AB>1</AB><A>2</A>", "<A>", "2"},
           {"<<A>1</A>", "<A>", "1"},
           {"<A", "<A>", ""},
           {"", "<A>", ""},
           {"<NAME>Z\xFCrich</NAME>", "<NAME>", "Zürich"},
       }) {
    EXPECT_EQ(GetTagValue(message, tag), value) << message;
  }
}

}  // namespace
}  // namespace mirelo::testing
