// What a day of saves leaves in the process: nothing.

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/child_process.h"
#include "support/environment_variable.h"
#include "support/error_number.h"
#include "support/optimized.h"
#include "support/sanitized.h"
#include "support/temp_directory.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using workbook::Spreadsheet;

constexpr std::int32_t kDiskFull = 61;
const int kSaves = kIsSanitized ? 200 : kIsOptimized ? 2000 : 500;
const int kFailures = kSaves / 10;
const std::int64_t kSlack = kSaves * 512;  // bytes of memory
constexpr int kWarmUp = 10;

std::ptrdiff_t OpenDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

std::int64_t ResidentBytes() {
  std::ifstream in("/proc/self/statm");
  std::int64_t total = 0;
  std::int64_t resident = 0;
  in >> total >> resident;
  return resident * ::sysconf(_SC_PAGESIZE);
}

// What is taken from now on.
class Taken {
 public:
  std::int32_t Descriptors() const { return static_cast<std::int32_t>(OpenDescriptors() - descriptors_); }
  std::int64_t Memory() const { return ResidentBytes() - memory_; }

 private:
  std::ptrdiff_t descriptors_ = OpenDescriptors();
  std::int64_t memory_ = ResidentBytes();
};

// In a folder whose disk is the memory, where there is one: so many saves would wait for the disk alone.
class LongRun : public ::testing::Test {
 protected:
  // A quote or two, and the empty sheet that every new workbook has.
  static Spreadsheet Quotes() {
    auto spreadsheet = Spreadsheet::New();
    const auto sheet = BookOf(spreadsheet)->Worksheets()->Add();
    sheet->Range("A1")->Value("MSFT");
    sheet->Range("B1")->Value(28.35);
    return spreadsheet;
  }

  EnvironmentVariable place{"TMPDIR", std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp"};
  TempDirectory folder;
  std::filesystem::path file = folder / "quotes.xlsx";
};

TEST_F(LongRun, TakesNoDescriptorsAndNoMemory) {
  auto spreadsheet = Quotes();
  for (int i = 0; i < kWarmUp; ++i) spreadsheet.Save(file);
  const Taken taken;
  for (int i = 0; i < kSaves; ++i) spreadsheet.Save(file);
  EXPECT_EQ(taken.Descriptors(), 0);
  if (!kIsSanitized) {
    EXPECT_LT(taken.Memory(), kSlack);
  }
}

// A limit of the size of files stands for a disk that is full.
TEST_F(LongRun, TakesNothingAndIsSilentWhileTheDiskIsFull) {
  constexpr rlim_t kRoom = 1000;
  ChildProcess child([&](const ChildProcess::Test& test) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{kRoom, kRoom};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return;
    auto spreadsheet = Quotes();
    const auto fail = [&](int times) {
      for (int i = 0; i < times; ++i) {
        if (NumberOf([&] { spreadsheet.Save(file); }) != kDiskFull) return false;
      }
      return true;
    };
    fail(kWarmUp);
    const Taken taken;
    ::testing::internal::CaptureStderr();
    test.Report(fail(kFailures));
    test.Report(taken.Descriptors() - 1);  // that of the capture
    test.Report(kIsSanitized || taken.Memory() < kSlack);
    test.Report(static_cast<std::int32_t>(::testing::internal::GetCapturedStderr().size()));
  });
  std::int32_t number = -1;
  EXPECT_TRUE(child.Read(number) && number == 1) << "each must fail";
  EXPECT_TRUE(child.Read(number) && number == 0) << number << " descriptors";
  EXPECT_TRUE(child.Read(number) && number == 1) << "memory has grown";
  EXPECT_TRUE(child.Read(number) && number == 0) << number << " bytes were written to standard error";
  EXPECT_TRUE(child.Finish());
}

}  // namespace
}  // namespace mirelo::testing
