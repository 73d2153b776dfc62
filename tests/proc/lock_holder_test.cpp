#include "adapters/proc/lock_holder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temp_directory.h"

namespace mirelo::proc {
namespace {

using Kind = SoughtLock::Kind;
using testing::ChildProcess;

class LockHolders : public ::testing::Test {
 protected:
  LockHolders() { std::ofstream(file_).close(); }

  testing::TempDirectory folder_;
  const std::filesystem::path file_ = folder_ / "file";
};

TEST_F(LockHolders, AreToldByTheSystem) {
  for (const Kind kind : {Kind::Whole, Kind::Records}) {
    const ChildProcess holder([&](const ChildProcess::Test& test) {
      const int descriptor = ::open(file_.c_str(), O_RDWR);
      struct flock whole {};
      whole.l_type = F_WRLCK;
      test.Report(kind == Kind::Whole ? ::flock(descriptor, LOCK_EX) : ::fcntl(descriptor, F_SETLK, &whole));
      std::int32_t end = 0;
      test.Await(end);
    });
    std::int32_t result = -1;
    ASSERT_TRUE(holder.Read(result));
    ASSERT_EQ(result, 0);
    EXPECT_EQ(LockHolder({{.file = file_, .kind = kind}}),
              "process " + std::to_string(holder.Id()) + " (test_proc)");
    const Kind other = kind == Kind::Whole ? Kind::Records : Kind::Whole;
    EXPECT_EQ(LockHolder({{.file = file_, .kind = other}}), "another program");
  }
}

// What a system tells, in files of its form.
class ToldLocks : public LockHolders {
 protected:
  ToldLocks() {
    std::filesystem::create_directories(proc_ / "self");
    std::filesystem::create_directories(proc_ / "4711");
    std::ofstream(proc_ / "4711/comm") << "backup\n";
    ::statx(AT_FDCWD, file_.c_str(), 0, STATX_INO | STATX_MNT_ID, &status_);
  }
  void Mount(const std::string& device) const {
    std::ofstream(proc_ / "self/mountinfo") << "1 0 0:1 / / rw - proc proc rw\n"
                                            << status_.stx_mnt_id << " 1 " << device << " / / rw - x y rw\n";
  }
  std::string Number() const { return std::to_string(status_.stx_ino); }
  std::string Device() const {
    char text[32];
    std::snprintf(text, sizeof text, "%02x:%02x", status_.stx_dev_major, status_.stx_dev_minor);
    return text;
  }
  std::string HolderWith(const std::string& locks, const SoughtLock& lock) const {
    std::ofstream(proc_ / "locks") << locks;
    return LockHolder({lock}, proc_);
  }

  const std::filesystem::path proc_ = folder_ / "proc";
  struct statx status_ {};
};

constexpr const char* kBackup = "process 4711 (backup)";
constexpr const char* kUnknown = "another program";

TEST_F(ToldLocks, AreOfTheDeviceOfTheFileOrOfItsMount) {
  Mount("7:300");
  const SoughtLock lock{.file = file_};
  EXPECT_EQ(HolderWith("1: FLOCK  ADVISORY  WRITE 4711 " + Device() + ":" + Number() + " 0 EOF\n", lock),
            kBackup);
  EXPECT_EQ(HolderWith("1: FLOCK  ADVISORY  WRITE 4711 07:12c:" + Number() + " 0 EOF\n", lock), kBackup);
  EXPECT_EQ(HolderWith("1: FLOCK  ADVISORY  WRITE 4711 07:12d:" + Number() + " 0 EOF\n", lock), kUnknown)
      << "a file of that number on another device";
  EXPECT_EQ(HolderWith("1: FLOCK  ADVISORY  WRITE 4711 07:12c:1" + Number() + " 0 EOF\n", lock), kUnknown);
}

TEST_F(ToldLocks, CountWhereTheyAreHeldForWritingBeforeThatByte) {
  Mount("7:300");
  const std::string file = " 07:12c:" + Number();
  const SoughtLock lock{.file = file_, .kind = Kind::Records, .before = 123};
  EXPECT_EQ(HolderWith("1: POSIX  ADVISORY  WRITE 4711" + file + " 122 122\n", lock), kBackup);
  for (const std::string& line : std::vector<std::string>{
           "1: POSIX  ADVISORY  WRITE 4711" + file + " 123 123",
           "1: POSIX  ADVISORY  READ 4711" + file + " 120 120",
           "1: -> POSIX  ADVISORY  WRITE 4711" + file + " 120 120",
           "1: FLOCK  ADVISORY  WRITE 4711" + file + " 0 EOF",
           "1: POSIX  ADVISORY  WRITE 0" + file + " 120 120",
           "1: POSIX  ADVISORY  WRITE 4711 07:12c 120 120",
           "1: POSIX  ADVISORY  WRITE 4711 x:y:z 120 120",
           "nonsense",
       }) {
    EXPECT_EQ(HolderWith(line + "\n", lock), kUnknown) << line;
  }
}

TEST_F(ToldLocks, AreUnknownOfAFileThatIsNotThereAndWhereNothingIsTold) {
  const SoughtLock absent{.file = folder_ / "absent"};
  EXPECT_EQ(HolderWith("1: FLOCK  ADVISORY  WRITE 4711 00:00:0 0 EOF\n", absent), kUnknown);
  EXPECT_EQ(LockHolder({{.file = file_}}, folder_ / "nowhere"), kUnknown);
}

}  // namespace
}  // namespace mirelo::proc
