#include "adapters/sodium/sodium_vault.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/memory_search.h"
#include "support/temp_directory.h"

namespace mirelo::sodium {
namespace {

using Credential = SodiumVault::Credential;
using testing::ErrorOf;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

constexpr SodiumVault::Credentials kDemo{.name = "Demo", .secret = "secret"};

class Vault : public ::testing::Test {
 protected:
  std::string Opened(Credential credential) {
    return std::string(vault_.Decipher(vault_.Stored(credential)).text());
  }

  static unsigned ModeOf(const std::filesystem::path& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 0777;
  }

  // As versions that had a file for each credential left them.
  void StoreAsOlderVersion(const SodiumVault::Credentials& credentials) {
    vault_.Set(credentials);
    const std::string name = vault_.Stored(Credential::ApplicationName);
    const std::string secret = vault_.Stored(Credential::ApplicationSecret);
    std::filesystem::remove(data_ / "credentials");
    std::ofstream(data_ / "application-name", std::ios::binary) << name;
    std::ofstream(data_ / "application-secret", std::ios::binary) << secret;
  }

  // The names of the files, in order.
  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(data_)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  testing::TempDirectory folder_;
  const std::filesystem::path data_ = folder_ / "data/mirelo";
  SodiumVault vault_{data_};
};

TEST_F(Vault, GivesBackWhatWasStored) {
  vault_.Set({.name = "Demo", .secret = "p\xC3\xA4ss word"});
  EXPECT_EQ(Opened(Credential::ApplicationName), "Demo");
  EXPECT_EQ(Opened(Credential::ApplicationSecret), "p\xC3\xA4ss word");
}

TEST_F(Vault, OutlivesItsObject) {
  vault_.Set(kDemo);
  SodiumVault again(folder_ / "data/mirelo");
  EXPECT_EQ(again.Decipher(again.Stored(Credential::ApplicationName)).text(), "Demo");
}

TEST_F(Vault, StoresTwoLinesOfBase64) {
  vault_.Set(kDemo);
  const auto lines = Split(vault_.Stored(Credential::ApplicationSecret), "\r\n");
  ASSERT_EQ(lines.size(), 2U);
  for (const auto& line : lines) EXPECT_THAT(line, MatchesRegex("[A-Za-z0-9+/]+=*"));
}

TEST_F(Vault, NeverStoresThePlainText) {
  vault_.Set({.name = "Demo", .secret = "open sesame"});
  for (const auto& entry : std::filesystem::directory_iterator(folder_ / "data/mirelo")) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string content(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(content.find("sesame"), std::string::npos) << entry.path();
  }
}

TEST_F(Vault, SealsTheSameTextDifferentlyEachTime) {
  vault_.Set(kDemo);
  const auto first = vault_.Stored(Credential::ApplicationName);
  vault_.Set(kDemo);
  EXPECT_NE(vault_.Stored(Credential::ApplicationName), first);
}

TEST_F(Vault, KeepsItsFilesForTheOwner) {
  vault_.Set({.name = "Demo", .secret = "secret"});
  EXPECT_EQ(ModeOf(folder_ / "data/mirelo"), 0700U);
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder_ / "data/mirelo")) {
    EXPECT_EQ(ModeOf(entry.path()), 0600U) << entry.path();
    ++files;
  }
  EXPECT_EQ(files, 2);
}

TEST_F(Vault, SaysHowToSetAMissingCredential) {
  const auto error = ErrorOf([&] { vault_.Stored(Credential::ApplicationName); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_THAT(error.Description(), HasSubstr("mirelo credentials set"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "data"));
}

TEST_F(Vault, RefusesADamagedText) {
  vault_.Set(kDemo);
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
  vault_.Set(kDemo);
  SodiumVault other(folder_ / "other");
  other.Set(kDemo);
  const auto error = ErrorOf([&] { vault_.Decipher(other.Stored(Credential::ApplicationName)); });
  EXPECT_EQ(error.Number(), 5);
}

TEST_F(Vault, RefusesToOpenWithoutItsKey) {
  vault_.Set(kDemo);
  std::filesystem::remove(folder_ / "data/mirelo/credentials.key");
  EXPECT_EQ(ErrorOf([&] { Opened(Credential::ApplicationName); }).Number(), 75);
}

TEST_F(Vault, RefusesAnEmptyCredential) {
  EXPECT_EQ(ErrorOf([&] { vault_.Set({.name = "", .secret = "secret"}); }).Number(), 5);
  EXPECT_EQ(ErrorOf([&] { vault_.Set({.name = "Demo", .secret = ""}); }).Number(), 5);
  EXPECT_FALSE(std::filesystem::exists(data_));
}

TEST_F(Vault, ForgetsWhenItIsCleared) {
  vault_.Set(kDemo);
  vault_.Clear();
  EXPECT_EQ(ErrorOf([&] { vault_.Stored(Credential::ApplicationName); }).Number(), 53);
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "data/mirelo"));
  vault_.Clear();
}

TEST_F(Vault, RefusesAFileThatLacksLines) {
  vault_.Set(kDemo);
  std::filesystem::resize_file(data_ / "credentials", 40);
  EXPECT_EQ(ErrorOf([&] { vault_.Stored(Credential::ApplicationName); }).Number(), 5);
}

TEST_F(Vault, ReadsWhatAnOlderVersionHasStored) {
  StoreAsOlderVersion({.name = "Older", .secret = "older secret"});
  EXPECT_EQ(Opened(Credential::ApplicationName), "Older");
  EXPECT_EQ(Opened(Credential::ApplicationSecret), "older secret");
  std::filesystem::remove(data_ / "application-secret");
  EXPECT_EQ(ErrorOf([&] { vault_.Stored(Credential::ApplicationSecret); }).Number(), 53);
}

TEST_F(Vault, LeavesNothingOfWhatAnOlderVersionHasStored) {
  const std::set<std::string> ours{"credentials", "credentials.key"};
  StoreAsOlderVersion({.name = "Older", .secret = "older secret"});
  vault_.Set(kDemo);
  EXPECT_EQ(Files(), ours);
  EXPECT_EQ(Opened(Credential::ApplicationSecret), "secret");

  std::ofstream(data_ / "application-secret") << "as a kill has left it";
  EXPECT_EQ(Opened(Credential::ApplicationSecret), "secret");
  EXPECT_EQ(Files(), ours);

  StoreAsOlderVersion({.name = "Older", .secret = "older secret"});
  vault_.Clear();
  EXPECT_TRUE(Files().empty());
}

TEST_F(Vault, LeavesNothingOfWritesThatWereKilled) {
  vault_.Set(kDemo);
  std::ofstream(data_ / "credentials.new") << "half";
  std::ofstream(data_ / "credentials.key.new") << "half";
  vault_.Clear();
  EXPECT_TRUE(Files().empty());

  std::filesystem::create_directories(data_);
  std::ofstream(data_ / "credentials.new") << "half";
  std::ofstream(data_ / "credentials.key.new") << "half";
  vault_.Set(kDemo);
  EXPECT_EQ(Files(), (std::set<std::string>{"credentials", "credentials.key"}));
}

// Each would make a key of its own, and only one key is kept.
TEST_F(Vault, IsMadeByOneOfSeveralThatStartAtOnce) {
  std::vector<std::unique_ptr<testing::ChildProcess>> starters;
  for (int i = 0; i < 4; ++i) {
    starters.push_back(std::make_unique<testing::ChildProcess>(
        [&](const testing::ChildProcess::Test&) { SodiumVault(data_).Set(kDemo); }));
  }
  for (const auto& starter : starters) EXPECT_TRUE(starter->Finish());
  EXPECT_EQ(Opened(Credential::ApplicationName), "Demo");
  EXPECT_EQ(Opened(Credential::ApplicationSecret), "secret");
}

TEST_F(Vault, LeavesNoPlainTextInMemory) {
  if (!testing::CanSearchMemory()) GTEST_SKIP() << "there is too much of it";
  for (const std::size_t size : {20, 200, 2000}) {
    const testing::HiddenText secret(size);
    vault_.Set({.name = "Demo", .secret = secret.Plain().text()});
    EXPECT_EQ(secret.CountInMemory(), 0) << "after it was stored";
    {
      const host::Secret opened = vault_.Decipher(vault_.Stored(Credential::ApplicationSecret));
      EXPECT_EQ(secret.CountInMemory(), 1) << "while it is open";
    }
    EXPECT_EQ(secret.CountInMemory(), 0) << "after it was open";
  }
}

TEST_F(Vault, SaysWhichFileItCannotWrite) {
  SodiumVault nowhere("/proc/nothing");
  const auto error = ErrorOf([&] { nowhere.Set(kDemo); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_THAT(error.Description(), HasSubstr("/proc/nothing"));
}

}  // namespace
}  // namespace mirelo::sodium
