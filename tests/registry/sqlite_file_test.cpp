#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/sqlite/database.h"
#include "adapters/sqlite/registry_file.h"
#include "adapters/sqlite/sqlite_registry.h"
#include "automation/runtime_error.h"
#include "registry/sqlite_file.h"
#include "support/child_process.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;
using host::Registry;
using sqlite::SqliteRegistry;
using std::chrono::milliseconds;
using ::testing::HasSubstr;

class RegistryInFile : public ::testing::Test {
 protected:
  // The error of opening a registry there.
  static std::optional<RuntimeError> OpenError(const fs::path& path,
                                               milliseconds timeout = milliseconds(20)) {
    try {
      SqliteRegistry registry(path, timeout);
      return std::nullopt;
    } catch (const RuntimeError& error) {
      return error;
    }
  }

  void ExpectRefused(std::int32_t number, const std::string& why) const {
    const auto error = OpenError(place.file());
    ASSERT_TRUE(error.has_value()) << "it opened";
    EXPECT_EQ(error->Number(), number);
    EXPECT_THAT(error->Description(), HasSubstr(place.file().string()));
    EXPECT_THAT(error->Description(), HasSubstr(why));
    EXPECT_EQ(error->Source(), "Mirelo.SqliteRegistry");
  }

  // A registry of one value, closed again.
  void MakeRegistry() const {
    SqliteRegistry registry(place.file());
    ASSERT_EQ(Store(registry, "Name", "kept"), Registry::kSuccess);
  }

  static unsigned ModeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
  }

  RegistryFolder place;
};

TEST_F(RegistryInFile, KeepsValuesFromRunToRun) {
  MakeRegistry();
  SqliteRegistry registry(place.file());
  EXPECT_EQ(Load(registry, "Name"), "kept");
}

TEST_F(RegistryInFile, IsItsOwnersAloneWhateverTheUmask) {
  for (const mode_t mask : {mode_t{0}, mode_t{0022}, mode_t{0277}}) {
    SCOPED_TRACE(mask);
    const RegistryFolder fresh;
    const mode_t before = ::umask(mask);
    SqliteRegistry registry(fresh.file());
    const auto stored = Store(registry, "Name", "x");
    ::umask(before);
    ASSERT_EQ(stored, Registry::kSuccess);
    EXPECT_EQ(ModeOf(fresh.file()), 0600U);
    EXPECT_EQ(ModeOf(fresh.file().string() + "-wal"), 0600U);
    EXPECT_EQ(ModeOf(fresh.file().string() + "-shm"), 0600U);
    EXPECT_EQ(ModeOf(fresh.file().parent_path()), 0700U);
    EXPECT_EQ(ModeOf(fresh.file().parent_path().parent_path()), 0700U);
  }
}

TEST_F(RegistryInFile, TakesAnOlderFileFromGroupAndOthers) {
  MakeRegistry();
  fs::permissions(place.file(), fs::perms(0664));
  SqliteRegistry registry(place.file());
  EXPECT_EQ(ModeOf(place.file()), 0600U);
  EXPECT_EQ(Load(registry, "Name"), "kept");
}

TEST_F(RegistryInFile, UsesAWriteAheadLog) {
  MakeRegistry();
  EXPECT_EQ(place.Sql("PRAGMA journal_mode"), "wal");
}

// Without that a write which was acknowledged could be lost with the machine's power.
TEST_F(RegistryInFile, WaitsForTheDiskAtEachWrite) {
  constexpr int kFull = 2;
  sqlite::Database database = sqlite::OpenRegistryFile(place.file(), milliseconds(20));
  const sqlite::Statement synchronous(database, "PRAGMA synchronous");
  sqlite::Run run(synchronous);
  ASSERT_TRUE(run.StepToRow());
  EXPECT_EQ(run.Integer(0), kFull);
}

TEST_F(RegistryInFile, RefusesAFileThatIsNoDatabase) {
  fs::create_directories(place.file().parent_path());
  std::ofstream(place.file()) << std::string(5000, 'x');
  ExpectRefused(321, "is damaged");
}

TEST_F(RegistryInFile, RefusesADamagedDatabase) {
  MakeRegistry();
  {
    // Behind the first page, so that the header still reads well.
    std::fstream file(place.file(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(8192, '\xA5');
  }
  ExpectRefused(321, "is damaged");
}

TEST_F(RegistryInFile, RefusesATruncatedDatabase) {
  MakeRegistry();
  fs::resize_file(place.file(), 6000);
  ExpectRefused(321, "is damaged");
}

TEST_F(RegistryInFile, RefusesADatabaseOfAnotherProgram) {
  fs::create_directories(place.file().parent_path());
  place.Sql("CREATE TABLE bookmark (url TEXT)");
  ExpectRefused(321, "another program");
  EXPECT_EQ(place.Sql("PRAGMA journal_mode"), "delete") << "it must be left as it was";
}

TEST_F(RegistryInFile, RefusesANewerLayout) {
  MakeRegistry();
  place.Sql("PRAGMA user_version = 2");
  ExpectRefused(321, "newer version");
}

TEST_F(RegistryInFile, TakesAnEmptyFileForANewOne) {
  fs::create_directories(place.file().parent_path());
  std::ofstream(place.file()).close();
  SqliteRegistry registry(place.file());
  EXPECT_EQ(Store(registry, "Name", "x"), Registry::kSuccess);
}

TEST_F(RegistryInFile, SaysWhenAFolderOfThePathIsAFile) {
  std::ofstream(place.folder() / "made").close();
  ExpectRefused(75, "Not a directory");
}

TEST_F(RegistryInFile, SaysWhenThePathIsAFolder) {
  fs::create_directories(place.file());
  ExpectRefused(75, "is no file");
}

// As a user without rights, whoever runs the test: root may write everywhere.
TEST_F(RegistryInFile, SaysWhenTheFolderCannotBeWritten) {
  const fs::path locked = place.folder() / "locked";
  fs::create_directory(locked);
  fs::permissions(place.folder(), fs::perms(0755));
  fs::permissions(locked, fs::perms(0555));
  ChildProcess child([&](const ChildProcess::Test& test) {
    if (::geteuid() == 0 && ::setuid(65534) != 0) return test.Report(-1);
    const auto error = OpenError(locked / "registry.db");
    if (!error) return test.Report(0);
    const bool names_file = error->Description().find((locked / "registry.db").string()) != std::string::npos;
    const bool says_why = error->Description().find("Permission denied") != std::string::npos;
    test.Report(names_file && says_why ? error->Number() : -2);
  });
  std::int32_t number = 0;
  ASSERT_TRUE(child.Read(number));
  EXPECT_EQ(number, 75);
}

// Another connection that holds the file for itself.
class Lock {
 public:
  explicit Lock(const fs::path& file) : database_(file.string()) {
    EXPECT_EQ(database_.Execute("BEGIN IMMEDIATE"), 0);
  }
  void Release() { EXPECT_EQ(database_.Execute("COMMIT"), 0); }

 private:
  sqlite::Database database_;
};

TEST_F(RegistryInFile, GivesUpWritingWhenItStaysLocked) {
  SqliteRegistry registry(place.file(), milliseconds(20));
  ASSERT_EQ(Store(registry, "Name", "before"), Registry::kSuccess);
  Lock lock(place.file());

  Registry::Key key = 0;
  EXPECT_EQ(Store(registry, "Name", "after"), Registry::kRegistryIoFailed);
  EXPECT_EQ(registry.RegCreateKeyExA(Registry::kCurrentUser, "New", Registry::kAllAccess, key),
            Registry::kRegistryIoFailed);
  EXPECT_EQ(registry.RegDeleteKeyA(Registry::kCurrentUser, "Software\\Company"), Registry::kRegistryIoFailed);
  EXPECT_EQ(Load(registry, "Name"), "before") << "reading goes on";

  lock.Release();
  EXPECT_EQ(Store(registry, "Name", "after"), Registry::kSuccess);
  EXPECT_EQ(Load(registry, "Name"), "after");
}

TEST_F(RegistryInFile, SaysWhenANewFileStaysLocked) {
  fs::create_directories(place.file().parent_path());
  std::ofstream(place.file()).close();
  const Lock lock(place.file());
  ExpectRefused(75, "locked");
}

TEST_F(RegistryInFile, DoesNotClaimToHaveStoredInAFileThatIsGone) {
  SqliteRegistry registry(place.file());
  ASSERT_EQ(Store(registry, "Name", "x"), Registry::kSuccess);
  fs::remove(place.file());
  EXPECT_EQ(Store(registry, "Name", "y"), Registry::kRegistryIoFailed);
}

TEST_F(RegistryInFile, LeavesNothingOfAPathThatCannotBeMadeWhole) {
  SqliteRegistry registry(place.file());
  place.Sql(
      "CREATE TRIGGER refuse BEFORE INSERT ON key WHEN NEW.name = CAST('Third' AS BLOB) "
      "BEGIN SELECT RAISE(ABORT, 'no'); END");
  Registry::Key key = 0;
  EXPECT_EQ(
      registry.RegCreateKeyExA(Registry::kCurrentUser, "First\\Second\\Third", Registry::kAllAccess, key),
      Registry::kRegistryIoFailed);
  EXPECT_EQ(registry.RegOpenKeyExA(Registry::kCurrentUser, "First", Registry::kRead, key),
            Registry::kFileNotFound);
  EXPECT_EQ(registry.RegCreateKeyExA(Registry::kCurrentUser, "First\\Second", Registry::kAllAccess, key),
            Registry::kSuccess)
      << "the next write goes on as usual";
}

// As a user without rights, like above, whose own file it is. The folders can be written, since SQLite makes
// its index beside the file.
TEST_F(RegistryInFile, DeniesWritingToAFileThatMayOnlyBeRead) {
  constexpr uid_t kNobody = 65534;
  MakeRegistry();
  for (fs::path folder = place.file().parent_path(); folder != place.folder();
       folder = folder.parent_path()) {
    fs::permissions(folder, fs::perms(0777));
  }
  fs::permissions(place.folder(), fs::perms(0755));
  fs::permissions(place.file(), fs::perms(0400));
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(place.file().c_str(), kNobody, kNobody), 0);
  }
  ChildProcess child([&](const ChildProcess::Test& test) {
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) return test.Report(-1);
    SqliteRegistry registry(place.file());
    Registry::Key key = 0;
    test.Report(
        registry.RegOpenKeyExA(Registry::kCurrentUser, "Software\\Company", Registry::kAllAccess, key));
    test.Report(registry.RegSetValueExA(key, "Name", Registry::kSz, "x", 1));
    test.Report(registry.RegCreateKeyExA(key, "Sub", Registry::kAllAccess, key));
    test.Report(registry.RegDeleteKeyA(Registry::kCurrentUser, "Software\\Company"));
  });
  for (const std::int32_t expected :
       {Registry::kSuccess, Registry::kAccessDenied, Registry::kAccessDenied, Registry::kAccessDenied}) {
    std::int32_t code = -1;
    ASSERT_TRUE(child.Read(code));
    EXPECT_EQ(code, expected);
  }
}

TEST_F(RegistryInFile, ReportsAWriteThatTheDatabaseRefuses) {
  SqliteRegistry registry(place.file());
  ASSERT_EQ(Store(registry, "Name", "x"), Registry::kSuccess);
  place.Sql("CREATE TRIGGER refuse BEFORE UPDATE ON value BEGIN SELECT RAISE(ABORT, 'no'); END");
  EXPECT_EQ(Store(registry, "Name", "y"), Registry::kRegistryIoFailed);
  EXPECT_EQ(Load(registry, "Name"), "x");
}

}  // namespace
}  // namespace mirelo::testing
