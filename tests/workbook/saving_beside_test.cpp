// Saving beside the program, which goes on: what the file holds then, and what is told.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "adapters/proc/descriptor.h"
#include "adapters/workbook/file_hold.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/processes.h"
#include "workbook/saving_beside.h"

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

// What another process meets with when it tries to get the file.
std::int32_t AnswerOf(const ChildProcess& other) {
  other.Send(0);
  std::int32_t number = -1;
  other.Read(number);
  return number;
}

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

TEST_F(SavingBeside, KeepsOthersFromTheFile) {
  const ChildProcess other([&](const ChildProcess::Test& test) {
    for (std::int32_t number = 0; test.Await(number);) test.Report(NumberOf([&] { FileHold{File()}; }));
  });
  WriteMuch();
  const std::vector<pid_t> before = ChildrenOf(::getpid());
  Begin();
  for (const auto end = std::chrono::steady_clock::now() + 10s;
       FolderListing().size() < 2 && std::chrono::steady_clock::now() < end;)
    std::this_thread::yield();  // until it has its lock, and makes the new file
  // It stands still while the other one asks: what is quick would be done by then.
  for (const pid_t saver : ChildrenOf(::getpid()))
    if (std::ranges::find(before, saver) == before.end()) ::kill(saver, SIGSTOP);
  EXPECT_EQ(AnswerOf(other), kHeldNumber);
  EXPECT_FALSE(ended);
  for (const pid_t saver : ChildrenOf(::getpid())) ::kill(saver, SIGCONT);
  FinishWell();
  EXPECT_EQ(AnswerOf(other), 0);
}

TEST_F(SavingBeside, KeepsTheHoldOfWhoHasIt) {
  const FileHold hold(File());
  const ChildProcess other([&](const ChildProcess::Test& test) {
    // A copy of this process has its hold, too.
    for (const int number : FileHold::Descriptors()) ::close(number);
    for (std::int32_t number = 0; test.Await(number);) {
      const auto lock = std::make_unique<proc::Descriptor>(
          ::open(File(".quotes.xlsx.mirelo-lock").c_str(), O_RDWR | O_CLOEXEC));
      test.Report(::flock(lock->number(), LOCK_EX | LOCK_NB) == 0 ? 0 : kHeldNumber);
    }
  });
  Begin();
  FinishWell();
  EXPECT_EQ(AnswerOf(other), kHeldNumber);
  std::filesystem::remove(File(".quotes.xlsx.mirelo-lock"));
  Begin();
  FinishWell();
  EXPECT_EQ(AnswerOf(other), kHeldNumber) << "the lock was taken again for the whole process";
}

}  // namespace
}  // namespace mirelo::testing
