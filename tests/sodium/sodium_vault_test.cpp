#include "adapters/sodium/sodium_vault.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "adapters/sodium/folder_lock.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/memory_search.h"
#include "support/temp_directory.h"

namespace mirelo::sodium {
namespace {

using testing::ErrorOf;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

constexpr SodiumVault::Credentials kDemo{.name = "Demo", .secret = "secret"};

class Vault : public ::testing::Test {
 protected:
  std::string OpenedName() { return std::string(vault_.Decipher(vault_.Stored().name).text()); }
  std::string OpenedSecret() { return std::string(vault_.Decipher(vault_.Stored().secret).text()); }

  static unsigned ModeOf(const std::filesystem::path& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 0777;
  }

  // As versions that had a file for each credential left them.
  void StoreAsOlderVersion(const SodiumVault::Credentials& credentials) {
    vault_.Set(credentials);
    const auto [name, secret] = vault_.Stored();
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
  EXPECT_EQ(OpenedName(), "Demo");
  EXPECT_EQ(OpenedSecret(), "p\xC3\xA4ss word");
}

// A seed of the fuzz target is one byte, as many bytes of the key's file, and the credentials' file. The
// fuzzer cannot guess what opens with its key, so one seed has to.
TEST_F(Vault, OpensWhatItIsFuzzedWith) {
  std::ifstream file(MIRELO_SOURCE_DIR "/fuzz/seeds/sodium_vault/together", std::ios::binary);
  const std::string seed(std::istreambuf_iterator<char>(file), {});
  ASSERT_FALSE(seed.empty());
  const auto key = static_cast<std::size_t>(seed.front());
  std::filesystem::create_directories(data_);
  std::ofstream(data_ / "credentials.key", std::ios::binary) << seed.substr(1, key);
  std::ofstream(data_ / "credentials", std::ios::binary) << seed.substr(1 + key);
  EXPECT_EQ(OpenedName(), "Demo");
  EXPECT_EQ(OpenedSecret(), "secret");
}

TEST_F(Vault, TakesTheLongestCredentials) {
  const std::string longest(4096, 'x');
  vault_.Set({.name = longest, .secret = longest});
  EXPECT_EQ(OpenedName(), longest);
  EXPECT_EQ(OpenedSecret(), longest);
}

// Somebody who may write in the folder could keep the program waiting for ever by a pipe.
TEST_F(Vault, RefusesWhatIsNoRegularFileAndDoesNotWaitForIt) {
  for (const char* name : {"credentials", "credentials.key"}) {
    SCOPED_TRACE(name);
    vault_.Set(kDemo);
    const auto file = data_ / name;
    ASSERT_TRUE(std::filesystem::remove(file));
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    const auto error = ErrorOf([&] { OpenedName(); });
    EXPECT_EQ(error.Number(), 75);
    EXPECT_EQ(error.Description(), "cannot read " + file.string() + ": it is no regular file");
    vault_.Clear();
  }
}

TEST_F(Vault, RefusesAFileLargerThanAnyCredentials) {
  vault_.Set(kDemo);
  const auto file = data_ / "credentials";
  std::filesystem::resize_file(file, std::uintmax_t{1} << 40);
  const auto error = ErrorOf([&] { OpenedName(); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_EQ(error.Description(), "cannot read " + file.string() + ": it is larger than any credentials");
}

TEST_F(Vault, OutlivesItsObject) {
  vault_.Set(kDemo);
  SodiumVault again(folder_ / "data/mirelo");
  EXPECT_EQ(again.Decipher(again.Stored().name).text(), "Demo");
}

TEST_F(Vault, StoresTwoLinesOfBase64) {
  vault_.Set(kDemo);
  const auto lines = Split(vault_.Stored().secret, "\r\n");
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
  const auto first = vault_.Stored().name;
  vault_.Set(kDemo);
  EXPECT_NE(vault_.Stored().name, first);
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
  const auto error = ErrorOf([&] { vault_.Stored(); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_THAT(error.Description(), HasSubstr("mirelo credentials set"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "data"));
}

TEST_F(Vault, RefusesADamagedText) {
  vault_.Set(kDemo);
  const std::string stored = vault_.Stored().name;
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
  const auto error = ErrorOf([&] { vault_.Decipher(other.Stored().name); });
  EXPECT_EQ(error.Number(), 5);
}

TEST_F(Vault, RefusesToOpenWithoutItsKey) {
  vault_.Set(kDemo);
  std::filesystem::remove(folder_ / "data/mirelo/credentials.key");
  EXPECT_EQ(ErrorOf([&] { OpenedName(); }).Number(), 75);
}

TEST_F(Vault, RefusesAnEmptyCredential) {
  EXPECT_EQ(ErrorOf([&] { vault_.Set({.name = "", .secret = "secret"}); }).Number(), 5);
  EXPECT_EQ(ErrorOf([&] { vault_.Set({.name = "Demo", .secret = ""}); }).Number(), 5);
  EXPECT_FALSE(std::filesystem::exists(data_));
}

TEST_F(Vault, ForgetsWhenItIsCleared) {
  vault_.Set(kDemo);
  vault_.Clear();
  EXPECT_EQ(ErrorOf([&] { vault_.Stored(); }).Number(), 53);
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "data/mirelo"));
  vault_.Clear();
}

TEST_F(Vault, RefusesAFileThatLacksLines) {
  vault_.Set(kDemo);
  std::filesystem::resize_file(data_ / "credentials", 40);
  EXPECT_EQ(ErrorOf([&] { vault_.Stored(); }).Number(), 5);
}

TEST_F(Vault, ReadsWhatAnOlderVersionHasStored) {
  StoreAsOlderVersion({.name = "Older", .secret = "older secret"});
  EXPECT_EQ(OpenedName(), "Older");
  EXPECT_EQ(OpenedSecret(), "older secret");
  std::filesystem::remove(data_ / "application-secret");
  EXPECT_EQ(ErrorOf([&] { vault_.Stored(); }).Number(), 53);
}

TEST_F(Vault, LeavesNothingOfWhatAnOlderVersionHasStored) {
  const std::set<std::string> ours{"credentials", "credentials.key"};
  StoreAsOlderVersion({.name = "Older", .secret = "older secret"});
  vault_.Set(kDemo);
  EXPECT_EQ(Files(), ours);
  EXPECT_EQ(OpenedSecret(), "secret");

  std::ofstream(data_ / "application-secret") << "as a kill has left it";
  EXPECT_EQ(OpenedSecret(), "secret");
  EXPECT_EQ(Files(), ours);

  StoreAsOlderVersion({.name = "Older", .secret = "older secret"});
  vault_.Clear();
  EXPECT_TRUE(Files().empty());
}

// As from a copy of the folder that cannot be written, or another user's right to read.
TEST_F(Vault, IsReadWithoutTheRightToWrite) {
  vault_.Set(kDemo);
  std::ofstream(data_ / "application-secret") << "as a kill has left it";
  std::filesystem::permissions(data_, std::filesystem::perms(0500));
  testing::ChildProcess reader([&](const testing::ChildProcess::Test& test) {
    testing::DropRightsOfRoot();
    SodiumVault vault(data_);
    test.Report(vault.Decipher(vault.Stored().secret).text() == kDemo.secret ? 1 : 0);
  });
  std::int32_t as_stored = 0;
  EXPECT_TRUE(reader.Read(as_stored)) << "it could not be read";
  EXPECT_EQ(as_stored, 1);
  EXPECT_TRUE(std::filesystem::exists(data_ / "application-secret"));
  std::filesystem::permissions(data_, std::filesystem::perms(0700));
}

class LockedVault : public Vault {
 protected:
  // Holds the lock until it is told to end.
  testing::ChildProcess Holder() const {
    return testing::ChildProcess([this](const testing::ChildProcess::Test& test) {
      const FolderLock lock(data_, std::chrono::milliseconds(0));
      test.Report(1);
      std::int32_t end = 0;
      test.Await(end);
    });
  }
  void AwaitLockOf(const testing::ChildProcess& holder) {
    std::int32_t locked = 0;
    ASSERT_TRUE(holder.Read(locked));
  }
  std::string LockedBy(const testing::ChildProcess& holder) const {
    return "The folder " + data_.string() + " is locked by process " + std::to_string(holder.Id()) +
           " (test_sodium)";
  }

  SodiumVault impatient_{data_, std::chrono::milliseconds(20)};
};

TEST_F(LockedVault, IsWaitedForNoLongerThanThatAndTellsWhoHasIt) {
  vault_.Set(kDemo);
  const auto holder = Holder();
  AwaitLockOf(holder);
  for (const auto& change : {std::function<void()>([&] { impatient_.Set({.name = "New", .secret = "new"}); }),
                             std::function<void()>([&] { impatient_.Clear(); })}) {
    const auto error = ErrorOf(change);
    EXPECT_EQ(error.Number(), 75);
    EXPECT_EQ(error.Description(), LockedBy(holder));
  }
  EXPECT_EQ(OpenedName(), "Demo");
}

TEST_F(LockedVault, IsReadAtOnceAndTidiedUpLater) {
  vault_.Set(kDemo);
  std::ofstream(data_ / "application-secret") << "as a kill has left it";
  {
    const auto holder = Holder();
    AwaitLockOf(holder);
    EXPECT_EQ(OpenedSecret(), "secret");
    EXPECT_TRUE(std::filesystem::exists(data_ / "application-secret")) << "another process is at work";
  }
  EXPECT_EQ(OpenedSecret(), "secret");
  EXPECT_EQ(Files(), (std::set<std::string>{"credentials", "credentials.key"}));
}

TEST_F(LockedVault, IsWaitedForWhileTheOtherIsAtWork) {
  vault_.Set(kDemo);
  const auto holder = Holder();
  AwaitLockOf(holder);
  std::thread end([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    holder.Send(1);
  });
  vault_.Set({.name = "New", .secret = "new"});
  end.join();
  EXPECT_EQ(OpenedName(), "New");
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
  EXPECT_EQ(OpenedName(), "Demo");
  EXPECT_EQ(OpenedSecret(), "secret");
}

TEST_F(Vault, LeavesNoPlainTextInMemory) {
  if (!testing::CanSearchMemory()) GTEST_SKIP() << "there is too much of it";
  for (const std::size_t size : {20U, 200U, 2000U}) {
    const testing::HiddenText secret(size);
    vault_.Set({.name = "Demo", .secret = secret.Plain().text()});
    EXPECT_EQ(secret.CountInMemory(), 0) << "after it was stored";
    {
      const host::Secret opened = vault_.Decipher(vault_.Stored().secret);
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
