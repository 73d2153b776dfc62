// The secret is in memory for as long as the login takes, and nowhere behind it.

#include <cstddef>
#include <string>

#include "streaming/stream_test.h"
#include "support/memory_search.h"

namespace mirelo::testing {
namespace {

class HidingVault : public host::CredentialVault {
 public:
  explicit HidingVault(std::size_t size) : secret(size) {}

  StoredCredentials Stored() override { return {.name = "name", .secret = "secret"}; }
  host::Secret Decipher(const std::string& stored) override {
    if (stored == "name") return host::Secret::Copy("Demo");
    return secret.Plain();
  }

  HiddenText secret;
};

class SecretInMemory : public StreamTest {};

TEST_F(SecretInMemory, IsGoneBehindTheLogin) {
  if (!CanSearchMemory()) GTEST_SKIP() << "there is too much of it";
  for (const std::size_t size : {20U, 60U, 200U, 2000U}) {
    SCOPED_TRACE(size);
    HidingVault hiding(size);
    host.Use(hiding);
    Renew();
    stream->connect();
    {
      const auto plain = hiding.secret.Plain();
      ASSERT_EQ(hiding.secret.CountInMemory(), 1);
    }
    Deliver("OK<CONNECT>hello<SERVERTIME>12/31/2005 09:30:15</SERVERTIME></CONNECT>");
    ASSERT_THAT(Sent(), ::testing::SizeIs(1));
    EXPECT_EQ(hiding.secret.CountInMemory(), 0);
  }
}

}  // namespace
}  // namespace mirelo::testing
