#include "adapters/sodium/sodium_vault.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "support/error_number.h"
#include "support/temp_directory.h"

namespace mirelo::sodium {
namespace {

using Credential = SodiumVault::Credential;
using testing::ErrorOf;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

class Vault : public ::testing::Test {
 protected:
  std::string Opened(Credential credential) { return vault_.Decipher(vault_.Stored(credential)); }

  static unsigned ModeOf(const std::filesystem::path& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 0777;
  }

  testing::TempDirectory folder_;
  SodiumVault vault_{folder_ / "data/mirelo"};
};

TEST_F(Vault, GivesBackWhatWasStored) {
  vault_.Set(Credential::ApplicationName, "Demo");
  vault_.Set(Credential::ApplicationSecret, "p\xC3\xA4ss word");
  EXPECT_EQ(Opened(Credential::ApplicationName), "Demo");
  EXPECT_EQ(Opened(Credential::ApplicationSecret), "p\xC3\xA4ss word");
}

TEST_F(Vault, OutlivesItsObject) {
  vault_.Set(Credential::ApplicationName, "Demo");
  SodiumVault again(folder_ / "data/mirelo");
  EXPECT_EQ(again.Decipher(again.Stored(Credential::ApplicationName)), "Demo");
}

TEST_F(Vault, StoresTwoLinesOfBase64) {
  vault_.Set(Credential::ApplicationSecret, "secret");
  const auto lines = Split(vault_.Stored(Credential::ApplicationSecret), "\r\n");
  ASSERT_EQ(lines.size(), 2U);
  for (const auto& line : lines) EXPECT_THAT(line, MatchesRegex("[A-Za-z0-9+/]+=*"));
}

TEST_F(Vault, NeverStoresThePlainText) {
  vault_.Set(Credential::ApplicationSecret, "open sesame");
  for (const auto& entry : std::filesystem::directory_iterator(folder_ / "data/mirelo")) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string content(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(content.find("sesame"), std::string::npos) << entry.path();
  }
}

TEST_F(Vault, SealsTheSameTextDifferentlyEachTime) {
  vault_.Set(Credential::ApplicationName, "Demo");
  const auto first = vault_.Stored(Credential::ApplicationName);
  vault_.Set(Credential::ApplicationName, "Demo");
  EXPECT_NE(vault_.Stored(Credential::ApplicationName), first);
}

TEST_F(Vault, KeepsItsFilesForTheOwner) {
  vault_.Set(Credential::ApplicationName, "Demo");
  vault_.Set(Credential::ApplicationSecret, "secret");
  EXPECT_EQ(ModeOf(folder_ / "data/mirelo"), 0700U);
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder_ / "data/mirelo")) {
    EXPECT_EQ(ModeOf(entry.path()), 0600U) << entry.path();
    ++files;
  }
  EXPECT_EQ(files, 3);
}

TEST_F(Vault, SaysHowToSetAMissingCredential) {
  const auto error = ErrorOf([&] { vault_.Stored(Credential::ApplicationName); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_THAT(error.Description(), HasSubstr("mirelo credentials set"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "data"));
}

TEST_F(Vault, RefusesADamagedText) {
  vault_.Set(Credential::ApplicationName, "Demo");
  const std::string stored = vault_.Stored(Credential::ApplicationName);
  for (std::size_t i = 0; i < stored.size(); ++i) {
    if (stored[i] == '\r' || stored[i] == '\n') continue;
    std::string damaged = stored;
    damaged[i] = damaged[i] == 'A' ? 'B' : 'A';
    EXPECT_EQ(ErrorOf([&] { vault_.Decipher(damaged); }).Number(), 5) << "damaged at " << i;
  }
  for (const char* text : {"", "!", "AAAA", "not base64 at all"}) {
    EXPECT_EQ(ErrorOf([&] { vault_.Decipher(text); }).Number(), 5) << text;
  }
}

TEST_F(Vault, RefusesATextSealedWithAnotherKey) {
  vault_.Set(Credential::ApplicationName, "Demo");
  SodiumVault other(folder_ / "other");
  other.Set(Credential::ApplicationName, "Demo");
  const auto error = ErrorOf([&] { vault_.Decipher(other.Stored(Credential::ApplicationName)); });
  EXPECT_EQ(error.Number(), 5);
}

TEST_F(Vault, RefusesToOpenWithoutItsKey) {
  vault_.Set(Credential::ApplicationName, "Demo");
  std::filesystem::remove(folder_ / "data/mirelo/credentials.key");
  EXPECT_EQ(ErrorOf([&] { Opened(Credential::ApplicationName); }).Number(), 75);
}

TEST_F(Vault, RefusesAnEmptyCredential) {
  EXPECT_EQ(ErrorOf([&] { vault_.Set(Credential::ApplicationName, ""); }).Number(), 5);
}

TEST_F(Vault, ForgetsWhenItIsCleared) {
  vault_.Set(Credential::ApplicationName, "Demo");
  vault_.Clear();
  EXPECT_FALSE(vault_.Has(Credential::ApplicationName));
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "data/mirelo"));
  vault_.Clear();
}

TEST_F(Vault, SaysWhichFileItCannotWrite) {
  SodiumVault nowhere("/proc/nothing");
  const auto error = ErrorOf([&] { nowhere.Set(Credential::ApplicationName, "Demo"); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_THAT(error.Description(), HasSubstr("/proc/nothing"));
}

}  // namespace
}  // namespace mirelo::sodium
