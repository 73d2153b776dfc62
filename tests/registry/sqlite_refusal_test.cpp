// Files that are no registry of ours are refused, and stay as they are.

#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/sqlite/database.h"
#include "adapters/sqlite/sqlite_registry.h"
#include "automation/runtime_error.h"
#include "registry/sqlite_file.h"
#include "support/child_process.h"
#include "support/refused_calls.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;
using host::Registry;
using sqlite::SqliteRegistry;
using std::chrono::milliseconds;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;

class RefusedFile : public ::testing::Test {
 protected:
  RefusedFile() { fs::create_directories(place.file().parent_path()); }

  static std::optional<RuntimeError> OpenError(const fs::path& path) {
    try {
      SqliteRegistry registry(path, milliseconds(20));
      return std::nullopt;
    } catch (const RuntimeError& error) {
      return error;
    }
  }

  static void ExpectRefused(const fs::path& path, std::int32_t number, const std::string& why) {
    const auto error = OpenError(path);
    ASSERT_TRUE(error.has_value()) << "it opened";
    EXPECT_EQ(error->Number(), number);
    EXPECT_THAT(error->Description(), HasSubstr(path.string()));
    EXPECT_THAT(error->Description(), HasSubstr(why));
  }

  // That, by its name and through a link, with nothing changed that stands in the folder.
  void ExpectRefusedAsItIs(std::int32_t number, const std::string& why) const {
    fs::permissions(place.file(), fs::perms(0664));
    const auto before = Folder();
    ExpectRefused(place.file(), number, why);
    EXPECT_EQ(Folder(), before);

    const fs::path link = place.folder() / "link.db";
    fs::create_symlink(place.file(), link);
    ExpectRefused(link, number, why);
    EXPECT_EQ(Folder(), before) << "through a link";
  }

  // Mode and content of what stands beside the file, itself included.
  std::map<std::string, std::string> Folder() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(place.file().parent_path())) {
      struct stat status {};
      EXPECT_EQ(::stat(entry.path().c_str(), &status), 0);
      std::ifstream file(entry.path(), std::ios::binary);
      files[entry.path().filename().string()] = std::to_string(status.st_mode & 07777U) + " " +
                                                std::string(std::istreambuf_iterator<char>(file), {});
    }
    return files;
  }

  // A registry of one value, closed again.
  void MakeRegistry() const {
    SqliteRegistry registry(place.file());
    ASSERT_EQ(Store(registry, "Name", "kept"), Registry::kSuccess);
  }

  // Leaves the file as a crash of whoever wrote to it does: the last write is only in the log.
  void WriteAndCrash(const std::string& sql) const {
    const fs::path saved = place.folder() / "saved";
    {
      sqlite::Database database(place.file().string());
      ASSERT_EQ(database.Execute("PRAGMA journal_mode = WAL"), 0) << database.Message();
      ASSERT_EQ(database.Execute(sql.c_str()), 0) << database.Message();
      fs::copy(place.file().parent_path(), saved);
    }
    fs::remove_all(place.file().parent_path());
    fs::remove(saved / (place.file().filename().string() + "-shm"));
    fs::rename(saved, place.file().parent_path());
    ASSERT_GT(fs::file_size(place.file().string() + "-wal"), 0U);
  }

  RegistryFolder place;
};

TEST_F(RefusedFile, IsATextLeftAsItIs) {
  std::ofstream(place.file()) << "root:x:0:0:root:/root:/bin/bash\n";
  ExpectRefusedAsItIs(321, "is damaged");
}

TEST_F(RefusedFile, IsADatabaseOfAnotherProgramLeftAsItIs) {
  place.Sql("CREATE TABLE bookmark (url TEXT)");
  ExpectRefusedAsItIs(321, "another program");
}

// SQLite would put the log of the crash into the file.
TEST_F(RefusedFile, IsADatabaseThatAnotherProgramLeftInACrashLeftAsItIs) {
  place.Sql("CREATE TABLE bookmark (url TEXT)");
  WriteAndCrash("INSERT INTO bookmark VALUES ('x')");
  ExpectRefusedAsItIs(321, "another program");
}

TEST_F(RefusedFile, IsADatabaseWithoutTablesLeftAsItIs) {
  place.Sql("CREATE TABLE bookmark (url TEXT); DROP TABLE bookmark");
  ExpectRefusedAsItIs(321, "another program");
}

TEST_F(RefusedFile, IsANewerRegistryLeftAsItIs) {
  MakeRegistry();
  place.Sql("PRAGMA user_version = 2; PRAGMA journal_mode = DELETE");
  ExpectRefusedAsItIs(321, "newer version");
}

TEST_F(RefusedFile, IsADamagedRegistryLeftAsItIs) {
  MakeRegistry();
  place.Sql("PRAGMA journal_mode = DELETE");
  {
    std::fstream file(place.file(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(8192, '\xA5');
  }
  ExpectRefusedAsItIs(321, "is damaged");
}

TEST_F(RefusedFile, IsARegistryDamagedByACrashWhoseLogIsKept) {
  MakeRegistry();
  WriteAndCrash("DELETE FROM value; DROP TABLE value");
  const auto log = Folder().at("registry.db-wal");
  ExpectRefused(place.file(), 321, "is damaged");
  EXPECT_EQ(Folder().at("registry.db-wal"), log);
}

// All that was stored would pass for not set.
TEST_F(RefusedFile, IsARegistryWithoutATable) {
  for (const std::string table : {"key", "value"}) {
    SCOPED_TRACE(table);
    fs::remove(place.file());
    MakeRegistry();
    place.Sql("PRAGMA foreign_keys = OFF; DROP TABLE " + table);
    ExpectRefused(place.file(), 321, "is damaged: no such table: " + table);
  }
}

TEST_F(RefusedFile, IsARegistryWithoutAnyTable) {
  MakeRegistry();
  place.Sql("PRAGMA foreign_keys = OFF; DROP TABLE value; DROP TABLE key");
  ExpectRefused(place.file(), 321, "is damaged");
}

TEST_F(RefusedFile, IsARegistryWithATableOfOtherColumns) {
  MakeRegistry();
  place.Sql("ALTER TABLE value RENAME COLUMN data TO content");
  ExpectRefused(place.file(), 321, "is damaged: no such column: data");
}

TEST_F(RefusedFile, IsARegistryWithoutARoot) {
  MakeRegistry();
  place.Sql("DELETE FROM key WHERE id = 0x80000003");
  ExpectRefused(place.file(), 321, "is damaged: a root is missing");
}

TEST_F(RefusedFile, IsALinkThatLeadsNowhere) {
  fs::create_symlink(place.folder() / "absent.db", place.file());
  ExpectRefused(place.file(), 75, "is a link that leads nowhere");
  EXPECT_FALSE(fs::exists(place.folder() / "absent.db"));
}

TEST_F(RefusedFile, IsALinkThatLeadsBackToItself) {
  fs::create_symlink("round.db", place.file());
  fs::create_symlink(place.file().filename(), place.file().parent_path() / "round.db");
  ExpectRefused(place.file(), 75, "is a link that leads back to itself");
}

// A link there may lead where this process may not look.
TEST_F(RefusedFile, IsOneThatCannotBeLookedAtWithTheReason) {
  fs::create_directory(place.folder() / "theirs");
  fs::create_symlink(place.folder() / "theirs" / "registry.db", place.file());
  fs::permissions(place.folder() / "theirs", fs::perms::none);
  ChildProcess person([&](const ChildProcess::Test& test) {
    DropRightsOfRoot();
    const auto error = OpenError(place.file());
    test.Report(error && error->Description().ends_with("cannot be used: Permission denied") ? 1 : 0);
  });
  std::int32_t is_told = 0;
  EXPECT_TRUE(person.Read(is_told) && is_told == 1);
  person.Finish();
  fs::permissions(place.folder() / "theirs", fs::perms::owner_all);
}

TEST_F(RefusedFile, IsADevice) { ExpectRefused("/dev/null", 75, "is no file"); }

// Holds the write lock of a registry until it is told to end.
ChildProcess Holder(const fs::path& file) {
  return ChildProcess([file](const ChildProcess::Test& test) {
    sqlite::Database database(file.string());
    test.Report(database.Execute("BEGIN IMMEDIATE"));
    std::int32_t end = 0;
    test.Await(end);
  });
}

TEST_F(RefusedFile, IsANewOneThatAnotherProcessHasLockedSayingWhich) {
  std::ofstream(place.file()).close();
  const ChildProcess holder = Holder(place.file());
  std::int32_t locked = -1;
  ASSERT_TRUE(holder.Read(locked));
  ASSERT_EQ(locked, 0);
  const auto error = OpenError(place.file());
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->Number(), 75);
  EXPECT_EQ(error->Description(), "The settings file " + place.file().string() + " is locked by process " +
                                      std::to_string(holder.Id()) + " (test_registry)");
}

class LockedRegistry : public RefusedFile {};

TEST_F(LockedRegistry, SaysWhichProcessKeepsItFromWriting) {
  MakeRegistry();
  const ChildProcess holder = Holder(place.file());
  std::int32_t locked = -1;
  ASSERT_TRUE(holder.Read(locked));
  ASSERT_EQ(locked, 0);
  SqliteRegistry registry(place.file(), milliseconds(20));
  EXPECT_EQ(registry.LastFailure(), "");
  const std::string why = "The settings file " + place.file().string() + " is locked by process " +
                          std::to_string(holder.Id()) + " (test_registry)";

  EXPECT_EQ(Store(registry, "Name", "after"), Registry::kRegistryIoFailed);
  EXPECT_EQ(registry.LastFailure(), why);
  EXPECT_EQ(Load(registry, "Name"), "kept");
  EXPECT_EQ(registry.BeginTransaction(), Registry::kRegistryIoFailed);
  EXPECT_EQ(registry.LastFailure(), why);

  holder.Send(1);
  std::int32_t over = 0;
  EXPECT_FALSE(holder.Read(over));
  EXPECT_EQ(Store(registry, "Name", "after"), Registry::kSuccess);
  EXPECT_EQ(registry.LastFailure(), "");
}

TEST_F(LockedRegistry, IsWaitedForOnce) {
  constexpr milliseconds kTimeout{400};
  MakeRegistry();
  const ChildProcess holder = Holder(place.file());
  std::int32_t locked = -1;
  ASSERT_TRUE(holder.Read(locked));
  SqliteRegistry registry(place.file(), kTimeout);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Store(registry, "Name", "after"), Registry::kRegistryIoFailed);
  EXPECT_GE(std::chrono::steady_clock::now() - start, kTimeout);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(Store(registry, "Name", "after"), Registry::kRegistryIoFailed);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 6 * kTimeout);
}

class RegistryOnFullDisk : public RefusedFile {};

TEST_F(RegistryOnFullDisk, SaysThatTheDiskIsFullWhenItStores) {
  MakeRegistry();
  for (const int reason : {ENOSPC, EDQUOT}) {
    SCOPED_TRACE(reason);
    SqliteRegistry registry(place.file());
    WithRefusedCalls({SYS_write, SYS_pwrite64}, reason,
                     [&] { EXPECT_EQ(Store(registry, "Name", "after"), Registry::kRegistryIoFailed); });
    EXPECT_EQ(registry.LastFailure(),
              "The settings file " + place.file().string() + " cannot be used: the disk is full");
    EXPECT_EQ(Load(registry, "Name"), "kept");
    EXPECT_EQ(Store(registry, "Name", "kept"), Registry::kSuccess) << "there is room again";
  }
}

// The index of its log finds no room.
TEST_F(RegistryOnFullDisk, SaysThatTheDiskIsFullWhenItIsOpened) {
  MakeRegistry();
  std::optional<RuntimeError> error;
  WithRefusedCalls({SYS_write, SYS_pwrite64, SYS_ftruncate, SYS_fallocate}, ENOSPC,
                   [&] { error = OpenError(place.file()); });
  ASSERT_TRUE(error.has_value()) << "it opened";
  EXPECT_EQ(error->Description(),
            "The settings file " + place.file().string() + " cannot be used: the disk is full");
}

TEST_F(RegistryOnFullDisk, SaysThatALimitOfFileSizesIsReached) {
  MakeRegistry();
  SqliteRegistry registry(place.file());
  WithRefusedCalls({SYS_write, SYS_pwrite64}, EFBIG,
                   [&] { EXPECT_EQ(Store(registry, "Name", "after"), Registry::kRegistryIoFailed); });
  EXPECT_THAT(registry.LastFailure(),
              HasSubstr("cannot be used: it has reached the limit of file sizes (ulimit -f)"));
}

TEST_F(LockedRegistry, SaysThatTheDatabaseRefused) {
  SqliteRegistry registry(place.file());
  ASSERT_EQ(Store(registry, "Name", "x"), Registry::kSuccess);
  place.Sql("CREATE TRIGGER refuse BEFORE UPDATE ON value BEGIN SELECT RAISE(ABORT, 'no room'); END");
  EXPECT_EQ(Store(registry, "Name", "y"), Registry::kRegistryIoFailed);
  EXPECT_EQ(registry.LastFailure(),
            "The settings file " + place.file().string() + " cannot be used: no room");
}

// What comes behind would be stored by itself.
TEST_F(LockedRegistry, StoresNothingOfATransactionThatAFailureHasEnded) {
  SqliteRegistry registry(place.file());
  ASSERT_EQ(Store(registry, "Name", "before"), Registry::kSuccess);
  place.Sql(
      "CREATE TRIGGER refuse BEFORE INSERT ON value WHEN NEW.name = CAST('Bad' AS BLOB) "
      "BEGIN SELECT RAISE(ROLLBACK, 'no'); END");
  ASSERT_EQ(registry.BeginTransaction(), Registry::kSuccess);
  EXPECT_EQ(Store(registry, "Name", "after"), Registry::kSuccess);
  EXPECT_EQ(Store(registry, "Bad", "after"), Registry::kRegistryIoFailed);
  EXPECT_EQ(Store(registry, "Name", "later"), Registry::kRegistryIoFailed);
  EXPECT_EQ(registry.CommitTransaction(), Registry::kRegistryIoFailed);
  registry.RollBackTransaction();
  EXPECT_EQ(Load(registry, "Name"), "before");
  EXPECT_EQ(Store(registry, "Name", "later"), Registry::kSuccess);
}

}  // namespace
}  // namespace mirelo::testing
