#include "adapters/windows/user_vault.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "support/error_number.h"
#include "support/memory_registry.h"
#include "support/memory_search.h"

namespace mirelo::windows {
namespace {

using host::Registry;
using testing::NumberOf;

class Vault : public ::testing::Test {
 protected:
  void Store(std::string_view sealed) {
    Registry::Key key = 0;
    registry_.RegCreateKeyExA(Registry::kCurrentUser, UserVault::kKey, Registry::kAllAccess, key);
    registry_.RegSetValueExA(key, UserVault::kValue, Registry::kBinary, sealed.data(),
                             static_cast<std::uint32_t>(sealed.size()));
    registry_.RegCloseKey(key);
  }

  testing::MemoryRegistry registry_;
  UserVault vault_{registry_};
};

TEST_F(Vault, OpensWhatItHasSealed) {
  vault_.Set("MireloDemo", std::string("pass\0word", 9));
  const auto stored = vault_.Stored();
  EXPECT_EQ(vault_.Decipher(stored.name).text(), "MireloDemo");
  EXPECT_EQ(vault_.Decipher(stored.secret).text(), std::string_view("pass\0word", 9));
}

TEST_F(Vault, KeepsTheTextsOutOfTheRegistry) {
  vault_.Set("MireloDemo", "demo-secret");
  const auto stored = vault_.Stored();
  for (const std::string& sealed : {stored.name, stored.secret}) {
    EXPECT_EQ(sealed.find("demo"), std::string::npos);
    EXPECT_EQ(sealed.find("MireloDemo"), std::string::npos);
    EXPECT_EQ(sealed.find("\r\n"), sealed.rfind("\r\n")) << "two lines";
    EXPECT_NE(sealed.find("\r\n"), std::string::npos);
  }
}

TEST_F(Vault, ReplacesBoth) {
  vault_.Set("old", "former");
  vault_.Set("new", "later");
  EXPECT_EQ(vault_.Decipher(vault_.Stored().name).text(), "new");
  EXPECT_EQ(vault_.Decipher(vault_.Stored().secret).text(), "later");
}

TEST_F(Vault, SaysHowToSetWhatIsNotThere) {
  const RuntimeError error = testing::ErrorOf([&] { vault_.Stored(); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_NE(error.Description().find("StoreCredentials"), std::string::npos);
}

TEST_F(Vault, RefusesEmptyTexts) {
  EXPECT_EQ(NumberOf([&] { vault_.Set("", "secret"); }), 5);
  EXPECT_EQ(NumberOf([&] { vault_.Set("name", ""); }), 5);
  EXPECT_EQ(NumberOf([&] { vault_.Stored(); }), 53) << "nothing was stored";
}

TEST_F(Vault, LeavesNoCopyOfWhatItOpened) {
  const testing::HiddenText hidden(60);
  vault_.Set("MireloDemo", hidden.Plain().text());
  const int left_by_sealing = hidden.CountInMemory();
  {
    const auto opened = vault_.Decipher(vault_.Stored().secret);
    EXPECT_GT(hidden.CountInMemory(), left_by_sealing);
  }
  EXPECT_EQ(hidden.CountInMemory(), 0);
}

TEST_F(Vault, TellsOfWhatIsDamaged) {
  Store("only one line");
  EXPECT_EQ(NumberOf([&] { vault_.Stored(); }), 5);
  vault_.Set("name", "secret");
  const std::string cut_off = vault_.Stored().secret.substr(0, 24);
  EXPECT_EQ(NumberOf([&] { vault_.Decipher(cut_off); }), 5);
  EXPECT_EQ(NumberOf([&] { vault_.Decipher("!?\r\n*"); }), 5);
}

}  // namespace
}  // namespace mirelo::windows
