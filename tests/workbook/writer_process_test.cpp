// The process that writes the file, when it does not come to its end.

#include "adapters/workbook/xlsx/writer_process.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "adapters/workbook/atomic_file.h"
#include "automation/runtime_error.h"
#include "support/error_number.h"
#include "support/memory_shortage.h"
#include "support/process_use.h"
#include "support/refused_calls.h"
#include "support/sanitized.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;

constexpr milliseconds kPatienceOfASave{60'000};
constexpr milliseconds kShort{100};
const std::vector<long> kToStartAProcess{SYS_clone, SYS_clone3};

class WriterProcess : public WorkbookFiles {
 protected:
  // Replaces the workbook by what `write` does, in a process of its own.
  void Replace(const std::function<void()>& write, milliseconds patience = kPatienceOfASave) const {
    workbook::ReplaceFile(File(), [&](const std::filesystem::path& fresh) {
      const auto half_of_it = [&] {
        WriteBytes(fresh, "half of it");
        write();
      };
      workbook::InWriterProcess(half_of_it, patience);
    });
  }
  // What comes of that, which leaves the old file as it was, and nothing behind; the next save is good.
  RuntimeError ErrorOfReplacing(const std::function<void()>& replace) const {
    auto spreadsheet = workbook::Spreadsheet::New();
    spreadsheet.Save(File());
    const std::string old = BytesOf(File());
    const std::size_t descriptors = ProcessUse::Now().descriptors;
    const RuntimeError error = ErrorOf(replace);
    EXPECT_EQ(BytesOf(File()), old);
    EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
    EXPECT_EQ(ProcessUse::Now().descriptors, descriptors);
    EXPECT_FALSE(HasChildren()) << "a zombie at least";
    SheetOf(spreadsheet)->Range("A1")->Value("next");
    spreadsheet.Save(File());
    EXPECT_EQ(SheetOf(workbook::Spreadsheet::Open(File()))->Range("A1")->Value(), Variant("next"));
    return error;
  }
  static bool HasChildren() { return ::waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD; }
};

TEST_F(WriterProcess, LeavesTheOldFileAndNothingElseWhereverItBreaksOff) {
  const auto abort = [] {
    const rlimit none{};
    ::setrlimit(RLIMIT_CORE, &none);
    std::abort();
  };
  struct Case {
    std::function<void()> write;
    std::string end;
  };
  for (const Case& c : {Case{abort, "signal 6"}, Case{[] { ::raise(SIGKILL); }, "signal 9"},
                        Case{[] { ::_exit(3); }, "exit code 3"}}) {
    SCOPED_TRACE(c.end);
    const RuntimeError error = ErrorOfReplacing([&] { Replace(c.write); });
    EXPECT_EQ(error.Number(), 1004);
    EXPECT_EQ(error.Description(), "The workbook cannot be written: the file writer broke off (" + c.end +
                                       "). Memory may be short.");
  }
}

TEST_F(WriterProcess, IsEndedWhenItStandsStill) {
  const auto stand_still = [] {
    for (;;) ::pause();
  };
  const RuntimeError error = ErrorOfReplacing([&] { Replace(stand_still, kShort); });
  EXPECT_EQ(error.Number(), 1004);
  EXPECT_EQ(error.Description(),
            "The workbook cannot be written: the file writer stood still and was ended. The disk may not "
            "answer.");
}

TEST_F(WriterProcess, IsToldOfWhereItCannotBeStarted) {
  if (kIsSanitized) GTEST_SKIP() << "beside other threads the file is written by the process itself";
  const auto replace = [&](int reason) {
    return ErrorOfReplacing([&] { WithRefusedCalls(kToStartAProcess, reason, [&] { Replace([] {}); }); });
  };
  const RuntimeError no_process = replace(EAGAIN);
  EXPECT_EQ(no_process.Number(), 1004);
  EXPECT_EQ(no_process.Description(),
            "The workbook cannot be written: no process can be started for it (Resource temporarily "
            "unavailable).");
  EXPECT_EQ(replace(ENOMEM).Number(), Errors::OutOfMemory().Number());
}

TEST_F(WriterProcess, IsGoneWhereThereIsNoMemoryForWhatItReports) {
  constexpr std::size_t kMuch = 1 << 20;
  const std::string report(kMuch, 'x');
  EXPECT_THROW(
      {
        const MemoryShortage shortage(kMuch / 2);
        workbook::InWriterProcess(
            [&] {
              const MemoryShortage none(std::numeric_limits<std::size_t>::max());
              throw RuntimeError(5, report);
            },
            kPatienceOfASave);
      },
      std::bad_alloc);
  EXPECT_FALSE(HasChildren());
}

TEST_F(WriterProcess, ReportsAnErrorOfAnyLength) {
  const std::string report(100'000, 'x');
  const RuntimeError error =
      ErrorOfReplacing([&] { Replace([&] { throw RuntimeError(5, report, "Writer"); }); });
  EXPECT_EQ(error.Number(), 5);
  EXPECT_EQ(error.Source(), "Writer");
  EXPECT_EQ(error.Description(), report);
}

}  // namespace
}  // namespace mirelo::testing
