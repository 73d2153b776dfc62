// Workbook files that cannot be saved: the program says so before it does anything, and touches nothing.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/files.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/program.h"
#include "app/workbook/workbook_file.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "quotetracker/server.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/loopback_server.h"
#include "support/refused_calls.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class GuardedWorkbook : public ::testing::Test {
 protected:
  GuardedWorkbook() {
    std::filesystem::create_directory(Folder());
    auto spreadsheet = workbook::Spreadsheet::New();
    spreadsheet.Application()->Range("A1")->Value("mine");
    spreadsheet.Save(File());
  }
  ~GuardedWorkbook() override {
    ::chmod(Folder().c_str(), 0755);
    Release();
  }

  std::filesystem::path Folder() const { return home / "workbooks"; }
  std::filesystem::path File() const { return Folder() / "quotes.xlsx"; }
  std::string Bytes() const {
    std::ifstream in(File(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::vector<std::string> Listing() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Folder()))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  ProgramResult Go(const std::filesystem::path& file) {
    return RunMirelo(home.path(), {"go", "--http-port", std::to_string(server.HttpPort()), "--tickers",
                                   "MSFT", "--set", "Seconds=7", "--workbook", file.string()});
  }
  std::string StoredSeconds() { return RunMirelo(home.path(), {"settings", "get", "Seconds"}).out; }
  // An open descriptor of the file, until it is released.
  int Hold() { return descriptor_ = ::open(File().c_str(), O_RDWR | O_CLOEXEC); }
  // Held as a command does that works on it, in another process.
  void HoldElsewhere() {
    holder_ = std::make_unique<ChildProcess>([&](const ChildProcess::Test& test) {
      const auto hold = app::HoldForGo(files, File());
      std::int32_t number = 0;
      test.Report(number);
      test.Await(number);
    });
    std::int32_t number = 0;
    ASSERT_TRUE(holder_->Read(number));
  }
  void Release() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
    holder_.reset();
  }

  TempDirectory home;
  workbook::Files files;
  quotetracker::Server server;

 private:
  int descriptor_ = -1;
  std::unique_ptr<ChildProcess> holder_;
};

TEST_F(GuardedWorkbook, StaysAsItIsAndGoSaysWhatToDo) {
  constexpr const char* kMakeWritable =
      "Make the file and its folder writable, or name another file with --workbook.";
  struct Case {
    const char* name;
    std::function<void()> guard;
    std::string reason;
    std::string advice;
  };
  const auto lock_file = [&](const char* name) {
    return [this, name] { std::ofstream(Folder() / name) << ","; };
  };
  const std::vector<Case> cases{
      {"read-only", [&] { ASSERT_EQ(::chmod(File().c_str(), 0444), 0); },
       "error: Cannot save " + File().string() + ": Permission denied.", kMakeWritable},
      {"in a folder that is read-only", [&] { ASSERT_EQ(::chmod(Folder().c_str(), 0555), 0); },
       "error: Cannot save " + File().string() + ": Permission denied.", kMakeWritable},
      {"open in a spreadsheet program", lock_file(".~lock.quotes.xlsx#"), "another program has it open",
       "close it there. If none has, delete " + (Folder() / ".~lock.quotes.xlsx#").string()},
      {"open in another one", lock_file("~$quotes.xlsx"), "another program has it open",
       "If none has, delete " + (Folder() / "~$quotes.xlsx").string()},
      {"record-locked",
       [&] {
         struct flock lock {};
         lock.l_type = F_WRLCK;
         ASSERT_EQ(::fcntl(Hold(), F_SETLK, &lock), 0);
       },
       "another program has locked it", "try again when that program is done"},
      {"locked as a whole", [&] { ASSERT_EQ(::flock(Hold(), LOCK_EX), 0); }, "another program has locked it",
       "try again when that program is done"},
      {"held by another process of this program", [&] { HoldElsewhere(); },
       "another Mirelo works on it (process ", "end that one first, or take another file"},
  };
  const std::string old = Bytes();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    c.guard();
    const auto listing = Listing();
    const auto result = Go(File());
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, AllOf(HasSubstr(c.reason), HasSubstr(c.advice)));
    EXPECT_EQ(Bytes(), old);
    EXPECT_EQ(Listing(), listing);
    EXPECT_THAT(server.Requests(), IsEmpty()) << "nothing was tried";
    EXPECT_EQ(StoredSeconds(), "10\n") << "nothing was stored";

    ::chmod(Folder().c_str(), 0755);
    ::chmod(File().c_str(), 0644);
    for (const char* lock : {".~lock.quotes.xlsx#", "~$quotes.xlsx"})
      std::filesystem::remove(Folder() / lock);
    Release();
  }
}

TEST_F(GuardedWorkbook, CannotBeWhereThereIsNoFolder) {
  const auto result = Go(Folder() / "none" / "quotes.xlsx");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("No such file or directory"), HasSubstr("name another file")));
  EXPECT_THAT(Listing(), ElementsAre("quotes.xlsx"));
}

TEST_F(GuardedWorkbook, ThatCannotBeIsRefusedWithWhatFits) {
  std::filesystem::create_symlink("round.xlsx", Folder() / "link.xlsx");
  std::filesystem::create_symlink("link.xlsx", Folder() / "round.xlsx");
  std::filesystem::create_symlink("none/quotes.xlsx", Folder() / "lost.xlsx");
  ASSERT_EQ(::mkfifo((Folder() / "pipe.xlsx").c_str(), 0600), 0);
  struct Case {
    std::string name;
    const char* reason;
    const char* advice;
  };
  const std::vector<Case> cases{
      {"link.xlsx", "Too many levels of symbolic links.",
       "Remove the symbolic link, which leads back to itself, or name another file with --workbook."},
      {"none/quotes.xlsx", "No such file or directory.",
       "Make its folder, or name another file with --workbook."},
      {"lost.xlsx", "No such file or directory.", "Make its folder, or name another file with --workbook."},
      {"quotes.xlsx/quotes.xlsx", "Not a directory.",
       "Make its folder, or name another file with --workbook."},
      {"pipe.xlsx", "it is a device or a pipe, and no file.",
       "See that nothing but a file stands there, or name another file with --workbook."},
      {"", "it is a folder.",
       "See that nothing but a file stands there, or name another file with --workbook."},
      {std::string(246, 'x') + ".xlsx", "File name too long.",
       "Make the name shorter: hidden files beside it have longer ones, or name another file with "
       "--workbook."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const auto error = ErrorOf([&] { app::HoldForGo(files, Folder() / c.name); });
    EXPECT_EQ(error.Number(), 75);
    EXPECT_THAT(error.Description(), ::testing::EndsWith(std::string(c.reason) + "\n" + c.advice));
  }
}

TEST_F(GuardedWorkbook, IsRefusedWithWhatTheReasonOfTheFileSystemAsksFor) {
  const std::vector<std::pair<int, const char*>> cases{
      {EROFS, "Make its file system writable, or name another file with --workbook."},
      {EPERM, "Make the file and its folder writable, or name another file with --workbook."},
      {EIO, "Mend that, or name another file with --workbook."},
  };
  for (const auto& [reason, advice] : cases) {
    SCOPED_TRACE(advice);
    RuntimeError error(0, "");
    WithRefusedCalls({SYS_flock}, reason, [&] { error = ErrorOf([&] { app::HoldForDay(files, File()); }); });
    EXPECT_EQ(error.Number(), 75);
    EXPECT_THAT(error.Description(), ::testing::EndsWith(std::string(".\n") + advice));
  }
}

TEST_F(GuardedWorkbook, ThatIsNoWorkbookStaysAsItIs) {
  std::ofstream(File(), std::ios::binary) << "something else";
  const auto result = Go(File());
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("error: Cannot open " + File().string()));
  EXPECT_EQ(Bytes(), "something else");
  EXPECT_EQ(StoredSeconds(), "10\n");
}

TEST_F(GuardedWorkbook, IsSavedOnceTheOtherProgramIsDone) {
  const auto lock = Folder() / ".~lock.quotes.xlsx#";
  std::ofstream(lock) << ",";
  EXPECT_EQ(Go(File()).exit_code, 1);
  std::filesystem::remove(lock);
  EXPECT_EQ(Go(File()).exit_code, 0);
  EXPECT_EQ(StoredSeconds(), "7\n");
}

TEST_F(GuardedWorkbook, BeginsNoDayWhereItCannotBeHeld) {
  ::testing::internal::CaptureStderr();
  const RuntimeError error =
      ErrorOf([&] { WithRefusedCalls({SYS_flock}, EIO, [&] { app::HoldForDay(files, File()); }); });
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(error.Number(), 75);
  EXPECT_THAT(error.Description(),
              AllOf(HasSubstr("Cannot save " + File().string() + ": Input/output error.\n"),
                    HasSubstr("name another file with --workbook.")));
}

// Opened elsewhere while the dialog was up

TEST_F(GuardedWorkbook, StaysAsItIsAfterGoAsWell) {
  const auto hold = app::HoldForGo(files, File());
  const auto document = app::OpenOrNew(files, File());
  const std::string old = Bytes();
  std::ofstream(Folder() / "~$quotes.xlsx") << ",";
  ::testing::internal::CaptureStderr();
  EXPECT_THROW(app::SaveAfterGo(File(), *document), RuntimeError);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "The settings are stored, but the workbook is as it was.\n");
  EXPECT_EQ(Bytes(), old);
}

// Another program saves it while QuoteTracker is asked.
TEST_F(GuardedWorkbook, StaysAsAnotherProgramHasSavedItMeanwhile) {
  LoopbackServer tracker([this](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    std::ofstream(File(), std::ios::binary) << "theirs";
    peer.Send("HTTP/1.0 200 OK\r\n\r\nOK\r\nMain");
  });
  const auto result = RunMirelo(home.path(), {"go", "--http-port", std::to_string(tracker.Port()),
                                              "--tickers", "MSFT", "--workbook", File().string()});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("The settings are stored, but the workbook is as it was.\n"),
                                HasSubstr("error: Cannot save " + File().string() +
                                          ": another program has changed it.\n"),
                                HasSubstr("Press Go again, on what that program has saved.")));
  EXPECT_EQ(Bytes(), "theirs");
  EXPECT_THAT(Listing(), ElementsAre("quotes.xlsx"));
}

}  // namespace
}  // namespace mirelo::testing
