// Saving beside the program, which goes on: by a copy of the process.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "adapters/workbook/descriptor.h"
#include "adapters/workbook/file_hold.h"
#include "adapters/workbook/files.h"
#include "host/documents.h"
#include "host/excel/application.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/process_use.h"
#include "support/processes.h"
#include "support/refused_calls.h"
#include "support/sanitized.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using workbook::FileHold;

constexpr std::int32_t kDiskFullNumber = 61;
constexpr std::int32_t kHeldNumber = 70;

class SavingBeside : public WorkbookFiles {
 protected:
  void Write(const Variant& value, const char* cell = "A1") const {
    document->Application()->Range(cell)->Value(value);
  }
  // Some 100 KB in the file: a save of it takes its time.
  void WriteMuch() const {
    constexpr std::int32_t kRowsOfMuch = 4000;
    VariantArray table(1, kRowsOfMuch, 1, 8);
    for (std::int32_t row = 1; row <= kRowsOfMuch; ++row) {
      for (std::int32_t column = 1; column <= 8; ++column) table(row, column) = Variant(row * 1.37 / column);
    }
    document->Application()->Range("A10")->Resize(kRowsOfMuch, 8)->Value(table);
  }
  // From now on the document is one that loses something when it is saved: two cells that were merged. The
  // save waits until that was told, for as long as the test does not run the loop.
  void TakeOneWithALoss() {
    Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    InsertBehind(parts[kSheetPart], "</sheetData>", "<mergeCells><mergeCell ref=\"C1:D1\"/></mergeCells>");
    Open(parts);
  }

  void Begin(const std::filesystem::path& file) {
    ended = false;
    failure = nullptr;
    saving = document->SaveBeside(
        loop, file,
        [this](const std::string& sentence) {
          told.push_back(sentence);
          if (when_told) when_told();
        },
        [this](const std::exception_ptr& error) {
          failure = error;
          ended = true;
          saving.reset();
        });
    ASSERT_NE(saving, nullptr);
  }
  void Begin() { Begin(File()); }
  void Finish() {
    loop.RunUntil([this] { return ended; });
  }
  void FinishWell() {
    Finish();
    if (failure) std::rethrow_exception(failure);
  }
  // Waits for the end, which must be a failure.
  RuntimeError Failure() {
    Finish();
    return ErrorOf([this] {
      if (failure) std::rethrow_exception(failure);
    });
  }
  Variant Saved(const char* name = "quotes.xlsx", const char* cell = "A1") const {
    return SheetOf(workbook::Spreadsheet::Open(File(name)))->Range(cell)->Value();
  }
  static pid_t Copy() {
    const std::vector<pid_t> children = ChildrenOf(::getpid());
    EXPECT_EQ(children.size(), 1U);
    return children.empty() ? 0 : children.front();
  }

  poll::PollLoop loop;
  workbook::Files files;
  std::unique_ptr<host::Document> document = files.New();
  std::unique_ptr<host::Saving> saving;
  std::vector<std::string> told;
  std::function<void()> when_told;
  bool ended = false;
  std::exception_ptr failure;
};

TEST_F(SavingBeside, SavesTheDocumentAsItWasWhenItBegan) {
  Write("then");
  Begin();
  Write("now");
  FinishWell();
  EXPECT_EQ(Saved(), Variant("then"));
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
  EXPECT_EQ(document->Application()->ActiveWorkbook()->Name(), "quotes.xlsx");
  Begin();
  FinishWell();
  EXPECT_EQ(Saved(), Variant("now")) << "its own save is no other program's";
}

TEST_F(SavingBeside, GoesOnMeanwhile) {
  WriteMuch();
  int ticks = 0;
  std::function<void()> tick = [&] {
    ++ticks;
    Write(ticks, "B1");
    loop.StartTimer(1ms, tick);
  };
  loop.StartTimer(1ms, tick);
  Begin();
  FinishWell();
  EXPECT_GT(ticks, 10);
  EXPECT_TRUE(Saved("quotes.xlsx", "B1").IsEmpty());
}

TEST_F(SavingBeside, TellsLossesBeforeTheFileChanges) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  const std::string old = BytesOf(File());
  bool was_old = false;
  when_told = [&] {
    std::this_thread::sleep_for(50ms);
    was_old = BytesOf(File()) == old;
  };
  Begin();
  FinishWell();
  EXPECT_THAT(told, ElementsAre(HasSubstr("merged cells")));
  EXPECT_TRUE(was_old);
  EXPECT_EQ(Saved(), Variant("new"));
  EXPECT_THAT(document->NewLosses(), IsEmpty());
  Begin();
  FinishWell();
  EXPECT_EQ(told.size(), 1U) << "it is told once";
}

TEST_F(SavingBeside, IsBrokenOffWhereTellingFails) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  const std::string old = BytesOf(File());
  when_told = [] { throw RuntimeError(5, "nobody is told"); };
  Begin();
  EXPECT_EQ(Failure().Description(), "nobody is told");
  EXPECT_EQ(BytesOf(File()), old);
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
}

TEST_F(SavingBeside, TellsALossOnceThoughItsProcessIsKilledBehindThat) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  when_told = [] { ::kill(Copy(), SIGKILL); };
  Begin();
  EXPECT_EQ(Failure().Number(), 1004);
  when_told = nullptr;
  Begin();
  FinishWell();
  EXPECT_THAT(told, ElementsAre(HasSubstr("merged cells")));
  EXPECT_EQ(Saved(), Variant("new"));
}

TEST_F(SavingBeside, LeavesWhatAnotherProgramHasSaved) {
  Begin();
  FinishWell();
  WriteBytes(File(), "theirs");
  Begin();
  Finish();
  ASSERT_TRUE(failure);
  EXPECT_THROW(std::rethrow_exception(failure), host::ChangedMeanwhile);
  EXPECT_EQ(BytesOf(File()), "theirs");
}

TEST_F(SavingBeside, LeavesWhatAnotherProgramSavesMeanwhile) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  when_told = [this] { WriteBytes(File(), "theirs"); };
  Begin();
  Finish();
  ASSERT_TRUE(failure);
  EXPECT_THROW(std::rethrow_exception(failure), host::ChangedMeanwhile);
  EXPECT_EQ(BytesOf(File()), "theirs");
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
}

TEST_F(SavingBeside, TellsWhyTheFileSystemRefuses) {
  Begin(File("none/quotes.xlsx"));
  Finish();
  ASSERT_TRUE(failure);
  try {
    std::rethrow_exception(failure);
  } catch (const host::FileFailure& error) {
    EXPECT_EQ(error.Why(), host::FileFailure::Cause::kNoFolder);
    EXPECT_EQ(error.Number(), 75);
    EXPECT_THAT(error.Description(), StartsWith("Cannot save "));
  }
}

TEST_F(SavingBeside, KeepsTheOldFileWhileTheDiskIsFull) {
  WriteMuch();
  Begin();
  FinishWell();
  const std::string old = BytesOf(File());
  Write("new");
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit full{4096, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
  Begin();
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  EXPECT_EQ(Failure().Number(), kDiskFullNumber);
  EXPECT_EQ(BytesOf(File()), old);
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
  Begin();
  FinishWell();
  EXPECT_EQ(Saved(), Variant("new"));
}

TEST_F(SavingBeside, IsBrokenOffWithItsObject) {
  Write("old");
  Begin();
  FinishWell();
  const std::string old = BytesOf(File());
  WriteMuch();
  const std::size_t descriptors = ProcessUse::Now().descriptors;
  for (const auto moment : {0ms, 2ms, 10ms, 30ms}) {
    Begin();
    std::this_thread::sleep_for(moment);
    saving.reset();
    EXPECT_EQ(BytesOf(File()), old);
    EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
    EXPECT_THAT(ChildrenOf(::getpid()), IsEmpty());
    EXPECT_EQ(ProcessUse::Now().descriptors, descriptors);
  }
}

TEST_F(SavingBeside, LeavesTheOldFileAndNothingElseWhereItsProcessIsKilled) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  const std::string old = BytesOf(File());
  const FileHold hold(File());
  Begin();
  ::kill(Copy(), SIGKILL);
  const RuntimeError error = Failure();
  EXPECT_EQ(error.Number(), 1004);
  EXPECT_EQ(error.Description(),
            "The workbook cannot be written: the process that saves it broke off (signal 9). Memory may be "
            "short.");
  EXPECT_EQ(BytesOf(File()), old);
  EXPECT_THAT(FolderListing(), ElementsAre(".quotes.xlsx.mirelo-lock", "quotes.xlsx"));
  EXPECT_THAT(ChildrenOf(::getpid()), IsEmpty());
  Begin();
  FinishWell();
  EXPECT_EQ(Saved(), Variant("new"));
}

// Killed behind the moment at which the file is put in place, it tells no more of that.
TEST_F(SavingBeside, KnowsItsOwnFileWhereverItsProcessIsKilled) {
  constexpr int kKills = 30;
  const FileHold hold(File());
  int killed = 0;
  for (int i = 0; i < kKills; ++i) {
    Write(i);
    Begin();
    std::this_thread::sleep_for(std::chrono::microseconds(800 * i));
    ::kill(Copy(), SIGKILL);
    Finish();
    killed += failure ? 1 : 0;
    EXPECT_THAT(FolderListing(), ::testing::AnyOf(ElementsAre(".quotes.xlsx.mirelo-lock"),
                                                  ElementsAre(".quotes.xlsx.mirelo-lock", "quotes.xlsx")));
    Begin();
    ASSERT_NO_THROW(FinishWell()) << "after kill " << i;
    EXPECT_EQ(Saved(), Variant(static_cast<double>(i)));
  }
  EXPECT_GT(killed, 0) << "how many depends on the machine";
}

TEST_F(SavingBeside, TakesNoSignalsOfTheTerminal) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  Begin();
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) ::kill(Copy(), number);
  FinishWell();
  EXPECT_EQ(Saved(), Variant("new"));
}

TEST_F(SavingBeside, KeepsOthersFromTheFile) {
  const ChildProcess other([&](const ChildProcess::Test& test) {
    for (std::int32_t number = 0; test.Await(number);) test.Report(NumberOf([&] { FileHold{File()}; }));
  });
  const auto tries = [&] {
    other.Send(0);
    std::int32_t number = -1;
    other.Read(number);
    return number;
  };
  WriteMuch();
  Begin();
  for (const auto end = std::chrono::steady_clock::now() + 10s;
       FolderListing().size() < 2 && std::chrono::steady_clock::now() < end;)
    std::this_thread::yield();  // until it has its lock, and makes the new file
  EXPECT_EQ(tries(), kHeldNumber);
  EXPECT_FALSE(ended);
  FinishWell();
  EXPECT_EQ(tries(), 0);
}

TEST_F(SavingBeside, KeepsTheHoldOfWhoHasIt) {
  const FileHold hold(File());
  const ChildProcess other([&](const ChildProcess::Test& test) {
    // A copy of this process has its hold, too.
    for (const int number : FileHold::Descriptors()) ::close(number);
    for (std::int32_t number = 0; test.Await(number);) {
      const auto lock = std::make_unique<workbook::Descriptor>(
          ::open(File(".quotes.xlsx.mirelo-lock").c_str(), O_RDWR | O_CLOEXEC));
      test.Report(::flock(lock->number(), LOCK_EX | LOCK_NB) == 0 ? 0 : kHeldNumber);
    }
  });
  const auto tries = [&] {
    other.Send(0);
    std::int32_t number = -1;
    other.Read(number);
    return number;
  };
  Begin();
  FinishWell();
  EXPECT_EQ(tries(), kHeldNumber);
  std::filesystem::remove(File(".quotes.xlsx.mirelo-lock"));
  Begin();
  FinishWell();
  EXPECT_EQ(tries(), kHeldNumber) << "the lock was taken again for the whole process";
}

// A connection that this process closes is closed, whatever is being saved.
TEST_F(SavingBeside, HoldsNoConnectionsOpen) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  std::array<int, 2> ends{};
  ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
  const workbook::Descriptor peer(ends[1]);
  Begin();
  std::this_thread::sleep_for(100ms);
  ::close(ends[0]);
  pollfd end{peer.number(), POLLIN, 0};
  ASSERT_EQ(::poll(&end, 1, 10'000), 1);
  char byte = 0;
  EXPECT_EQ(::recv(peer.number(), &byte, 1, MSG_DONTWAIT), 0);
  EXPECT_FALSE(ended);
  FinishWell();
}

TEST_F(SavingBeside, WritesNothingOfThisProcessASecondTime) {
  std::FILE* out = std::fopen(File("out").c_str(), "w");
  ASSERT_NE(out, nullptr);
  std::fputs("once", out);
  Begin();
  FinishWell();
  std::fclose(out);
  EXPECT_EQ(BytesOf(File("out")), "once");
}

TEST_F(SavingBeside, IsDoneInPlaceWhereNoProcessCanBeStarted) {
  if (kIsSanitized) GTEST_SKIP() << "beside other threads no process is started at all";
  for (const int reason : {EAGAIN, ENOMEM}) {
    WithRefusedCalls({SYS_clone, SYS_clone3}, reason, [&] {
      EXPECT_EQ(document->SaveBeside(
                    loop, File(), [](const std::string&) {}, [](const std::exception_ptr&) {}),
                nullptr);
    });
  }
  EXPECT_THAT(FolderListing(), IsEmpty());
}

TEST_F(SavingBeside, LeavesNothingBehindOverManySaves) {
  constexpr int kSaves = kIsSanitized ? 60 : 300;
  const FileHold hold(File());
  for (int i = 0; i < 10; ++i) {
    Begin();
    FinishWell();
  }
  const ProcessUse before = ProcessUse::Now();
  for (int i = 0; i < kSaves; ++i) {
    Write(i);
    Begin();
    ASSERT_NO_THROW(FinishWell()) << i;
  }
  const ProcessUse after = ProcessUse::Now();
  EXPECT_EQ(after.descriptors, before.descriptors);
  EXPECT_LT(after.in_use, before.in_use + (64U << 10));
  EXPECT_THAT(ChildrenOf(::getpid()), IsEmpty());
  EXPECT_EQ(loop.WatchCount(), 0U);
  EXPECT_THAT(FolderListing(), ElementsAre(".quotes.xlsx.mirelo-lock", "quotes.xlsx"));
}

// The program that is killed, with what it was saving.
class KilledSaver : public SavingBeside {
 protected:
  // Begins to save what `prepare` makes, in a process that is then killed after this time.
  void KillASaver(const std::function<void()>& prepare, std::chrono::microseconds moment) {
    ChildProcess saver([&](const ChildProcess::Test& test) {
      const FileHold hold(File());
      prepare();
      Begin();
      test.Report(0);
      std::int32_t number = 0;
      test.Await(number);
    });
    std::int32_t number = -1;
    EXPECT_TRUE(saver.Read(number));
    std::this_thread::sleep_for(moment);
    saver.Kill();
    saver.Finish();
  }
  // Takes the hold as soon as it is to be had.
  std::unique_ptr<FileHold> AwaitHold() const {
    for (const auto end = std::chrono::steady_clock::now() + 20s; std::chrono::steady_clock::now() < end;) {
      try {
        return std::make_unique<FileHold>(File());
      } catch (const RuntimeError&) {
        std::this_thread::sleep_for(1ms);
      }
    }
    return nullptr;
  }
};

TEST_F(KilledSaver, TakesItsSaveWithIt) {
  TakeOneWithALoss();
  const std::string old = BytesOf(File());
  const auto change = [this] {
    document = files.Open(File());
    Write("new");
  };
  KillASaver(change, 50ms);  // it waits for an answer, for ever
  const auto hold = AwaitHold();
  ASSERT_NE(hold, nullptr);
  EXPECT_EQ(BytesOf(File()), old);
  EXPECT_THAT(FolderListing(), ElementsAre(".quotes.xlsx.mirelo-lock", "quotes.xlsx"));
}

TEST_F(KilledSaver, LeavesAWholeFileAndPutsNoneInPlaceOnceOthersHaveTheHold) {
  Write("old");
  Begin();
  FinishWell();
  int new_ones = 0;
  for (int i = 0; i < 12; ++i) {
    KillASaver(
        [this] {
          document = files.Open(File());
          Write("new");
          WriteMuch();
        },
        i * 12ms);
    const auto hold = AwaitHold();
    ASSERT_NE(hold, nullptr);
    const workbook::FileStamp stamp(File());
    EXPECT_THAT(FolderListing(), ElementsAre(".quotes.xlsx.mirelo-lock", "quotes.xlsx"));
    new_ones += Saved() == Variant("new") ? 1 : 0;
    std::this_thread::sleep_for(20ms);
    EXPECT_EQ(workbook::FileStamp(File()), stamp);
  }
  EXPECT_LT(new_ones, 12);
}

}  // namespace
}  // namespace mirelo::testing
