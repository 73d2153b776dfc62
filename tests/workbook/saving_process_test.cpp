// The process that saves beside this one: what it has of this one, and what is left where either is killed.

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/types.h>
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
#include <iterator>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "adapters/proc/descriptor.h"
#include "adapters/workbook/file_hold.h"
#include "adapters/workbook/file_stamp.h"
#include "adapters/workbook/process_copy.h"
#include "automation/runtime_error.h"
#include "support/child_process.h"
#include "support/process_use.h"
#include "support/processes.h"
#include "support/refused_calls.h"
#include "support/sanitized.h"
#include "workbook/saving_beside.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using workbook::FileHold;
using workbook::ProcessCopy;

// The process that saves.
pid_t Copy() {
  const std::vector<pid_t> children = ChildrenOf(::getpid());
  EXPECT_EQ(children.size(), 1U);
  return children.empty() ? 0 : children.front();
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

// A connection that this process closes is closed, whatever is being saved.
TEST_F(SavingBeside, HoldsNoConnectionsOpen) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  std::array<int, 2> ends{};
  ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
  const proc::Descriptor peer(ends[1]);
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
  const int saves = kIsSanitized ? 60 : 300;
  const FileHold hold(File());
  for (int i = 0; i < 10; ++i) {
    Begin();
    FinishWell();
  }
  const ProcessUse before = ProcessUse::Now();
  for (int i = 0; i < saves; ++i) {
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

// The first message of a copy; empty when none comes.
std::string FirstOf(ProcessCopy& copy) {
  std::chrono::milliseconds patience = 20s;
  while (copy.Await(patience) && copy.Receive()) {
    if (const auto message = copy.Next()) return message->text;
  }
  return "";
}

// Much memory takes a process a moment to give back when it is killed, and its descriptors stay open for that
// time.
TEST(ProcessCopy, EndsOnlyWithTheCopiesThatItHasMadeOfItself) {
  if (!ProcessCopy::CanBeMade()) GTEST_SKIP() << "beside other threads no process is started at all";
  const auto work_of_inner = [](const ProcessCopy::Line& line) {
    const std::vector<char> much(std::size_t{128} << 20, 'x');
    line.Send(much.back(), std::to_string(::getpid()));
    ::pause();
  };
  std::string inner_process;
  {
    ProcessCopy outer([&](const ProcessCopy::Line& line) {
      ProcessCopy inner(work_of_inner);
      line.Send('x', FirstOf(inner));
      ::pause();
    });
    inner_process = FirstOf(outer);
  }
  ASSERT_FALSE(inner_process.empty());
  std::error_code gone;
  const std::filesystem::directory_iterator open_ones("/proc/" + inner_process + "/fd", gone);
  EXPECT_EQ(std::distance(open_ones, {}), 0);
}

// A process in the midst of a call that cannot be broken off, as of a disk that does not answer: to whoever
// has started it, one that another process watches over looks the same. It ends only when that lets go of it.
class Undying {
 public:
  explicit Undying(pid_t process)
      : watcher_([process](const ChildProcess::Test& test) {
          test.Report(::ptrace(PTRACE_SEIZE, process, nullptr, nullptr) == 0 ? 1 : 0);
          std::int32_t number = 0;
          test.Await(number);
        }) {
    std::int32_t number = 0;
    is_watched_ = watcher_.Read(number) && number == 1;
  }

  bool IsWatched() const { return is_watched_; }
  void LetGo() {
    watcher_.Kill();
    watcher_.Finish();
  }

 private:
  ChildProcess watcher_;
  bool is_watched_ = false;
};

void StandStill(const ProcessCopy::Line& line) {
  line.Send('x', std::to_string(::getpid()));
  ::pause();
}

TEST(ProcessCopy, IsLeftBehindWhereItCannotBeEndedAndForgottenWhenItHasEnded) {
  if (!ProcessCopy::CanBeMade()) GTEST_SKIP() << "beside other threads no process is started at all";
  const auto start = std::chrono::steady_clock::now();
  ProcessCopy copy(StandStill);
  const pid_t process = std::stoi(FirstOf(copy));
  Undying undying(process);
  if (!undying.IsWatched()) GTEST_SKIP() << "no process may watch over another one here";
  EXPECT_FALSE(copy.Kill(100ms));
  EXPECT_LT(std::chrono::steady_clock::now() - start, ProcessCopy::kLongestEnd);
  undying.LetGo();
  EXPECT_THAT(ChildrenOf(::getpid()), ElementsAre(process)) << "it has ended, and nobody has asked for that";
  ProcessCopy(StandStill).Kill();
  EXPECT_THAT(ChildrenOf(::getpid()), IsEmpty());
}

TEST(ProcessCopy, WaitsNoLongerForACopyThatItHasMadeOfItself) {
  if (!ProcessCopy::CanBeMade()) GTEST_SKIP() << "beside other threads no process is started at all";
  ProcessCopy outer([](const ProcessCopy::Line& line) {
    if (::fork() == 0) StandStill(line);  // not one that ends with it
    ::pause();
  });
  const pid_t inner = std::stoi(FirstOf(outer));
  EXPECT_FALSE(outer.Kill(100ms));
  EXPECT_THAT(ChildrenOf(::getpid()), IsEmpty());
  ::kill(inner, SIGKILL);
}

TEST_F(SavingBeside, IsLeftBehindWhereItsProcessCannotBeEndedWhichIsTold) {
  TakeOneWithALoss();
  document = files.Open(File());
  Write("new");
  Begin();
  Undying undying(Copy());
  if (!undying.IsWatched()) GTEST_SKIP() << "no process may watch over another one here";
  saving.reset();
  EXPECT_THAT(told, ElementsAre(HasSubstr("cannot be ended, as where a disk does not answer")));
  undying.LetGo();
  Begin();
  FinishWell();
  EXPECT_EQ(Saved(), Variant("new"));
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
