// Who may save a workbook's file, among processes; and what those that were killed leave beside it.

#include "adapters/workbook/file_hold.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "adapters/workbook/companion_names.h"
#include "adapters/workbook/lock_file.h"
#include "automation/runtime_error.h"
#include "support/child_process.h"
#include "support/current_directory.h"
#include "support/error_number.h"
#include "support/refused_calls.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using workbook::FileHold;
using workbook::Spreadsheet;

constexpr std::int32_t kPermissionDenied = 70;
constexpr uid_t kNobody = 65534;

// Another process, which does something whenever it is told to. It is made before this one holds anything, as
// a copy of a process has its holds too.
class Other {
 public:
  explicit Other(const std::function<void()>& work)
      : process_([&](const ChildProcess::Test& test) {
          for (std::int32_t number = 0; test.Await(number);) test.Report(NumberOf(work));
        }) {}
  // The number of the error that it raises; 0 for none.
  std::int32_t Tries() const {
    process_.Send(0);
    std::int32_t number = -1;
    EXPECT_TRUE(process_.Read(number));
    return number;
  }

 private:
  ChildProcess process_;
};

class Hold : public WorkbookFiles {
 protected:
  static Spreadsheet With(const Variant& value) {
    auto spreadsheet = Spreadsheet::New();
    SheetOf(spreadsheet)->Range("A1")->Value(value);
    return spreadsheet;
  }
  Variant SavedValue(const char* name = "quotes.xlsx") const {
    return SheetOf(Spreadsheet::Open(File(name)))->Range("A1")->Value();
  }
  // Another process, which holds the file until it is killed.
  static std::unique_ptr<ChildProcess> Holder(const std::filesystem::path& file) {
    auto holder = std::make_unique<ChildProcess>([&](const ChildProcess::Test& test) {
      const FileHold hold(file);
      test.Report(::getpid());
      std::int32_t number = 0;
      test.Await(number);
    });
    return holder;
  }
  static std::int32_t ProcessOf(const ChildProcess& holder) {
    std::int32_t process = 0;
    EXPECT_TRUE(holder.Read(process)) << "it does not hold the file";
    return process;
  }
};

TEST_F(Hold, IsRefusedToASecondProcess) {
  const auto holder = Holder(File());
  const std::int32_t process = ProcessOf(*holder);
  const RuntimeError error = ErrorOf([&] { FileHold{File()}; });
  EXPECT_EQ(error.Number(), kPermissionDenied);
  EXPECT_EQ(error.Description(), "Cannot save " + File().string() + ": another Mirelo works on it (process " +
                                     std::to_string(process) + "); end that one first, or take another file");
}

TEST_F(Hold, EndsWithItsProcess) {
  const auto holder = Holder(File());
  ProcessOf(*holder);
  holder->Kill();
  holder->Finish();
  EXPECT_THAT(FolderListing(), Contains(".quotes.xlsx.mirelo-lock")) << "left by the process that was killed";
  EXPECT_NO_THROW(FileHold{File()});
  EXPECT_THAT(FolderListing(), IsEmpty());
}

TEST_F(Hold, IsWantedForSaving) {
  With("old").Save(File());
  const auto holder = Holder(File());
  ProcessOf(*holder);
  auto spreadsheet = With("new");
  EXPECT_EQ(NumberOf([&] { spreadsheet.Save(File()); }), kPermissionDenied);
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable(File()); }), kPermissionDenied);
  EXPECT_EQ(SavedValue(), Variant("old")) << "which reading does not need it for";
  EXPECT_NO_THROW(spreadsheet.Save(File("other.xlsx")));
}

TEST_F(Hold, StaysWhileTheFileIsReplaced) {
  const Other other([&] { With("other").Save(File()); });
  const FileHold hold(File());
  for (const char* value : {"new", "newer"}) {
    With(value).Save(File());
    EXPECT_EQ(other.Tries(), kPermissionDenied);
    EXPECT_EQ(SavedValue(), Variant(value));
  }
}

TEST_F(Hold, IsTakenAnewForSavingWhenItsLockWasTidiedAway) {
  const Other other([&] { FileHold{File()}; });
  const FileHold hold(File());
  std::filesystem::remove(File(".quotes.xlsx.mirelo-lock"));
  EXPECT_EQ(other.Tries(), 0);
  const auto holder = Holder(File());
  ProcessOf(*holder);
  EXPECT_EQ(NumberOf([&] { With("new").Save(File()); }), kPermissionDenied);
  EXPECT_THAT(FolderListing(), ElementsAre(".quotes.xlsx.mirelo-lock"));
}

TEST_F(Hold, StaysBehindTheSaveForWhichItWasTakenAnew) {
  const Other other([&] { FileHold{File()}; });
  {
    const FileHold hold(File());
    for (const char* value : {"new", "newer"}) {
      std::filesystem::remove(File(".quotes.xlsx.mirelo-lock"));
      With(value).Save(File());
      EXPECT_EQ(other.Tries(), kPermissionDenied);
      EXPECT_EQ(SavedValue(), Variant(value));
    }
  }
  EXPECT_EQ(other.Tries(), 0);
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
}

TEST_F(Hold, IsOfTheFileBehindAllLinksThatLeadToIt) {
  std::filesystem::create_directory(File("inner"));
  std::filesystem::create_directory_symlink("inner", File("way"));
  std::filesystem::create_symlink("inner/quotes.xlsx", File("link.xlsx"));
  std::filesystem::create_symlink("link.xlsx", File("link of link.xlsx"));
  const auto holder = Holder(File("inner/quotes.xlsx"));
  ProcessOf(*holder);
  const CurrentDirectory current(folder.path());
  for (const char* name :
       {"link.xlsx", "link of link.xlsx", "way/quotes.xlsx", "inner/../inner/quotes.xlsx"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(NumberOf([&] { FileHold{File(name)}; }), kPermissionDenied);
    EXPECT_EQ(NumberOf([&] { FileHold{name}; }), kPermissionDenied) << "from the current folder";
  }
  EXPECT_NO_THROW(FileHold{"quotes.xlsx"}) << "another file of that name";
}

TEST_F(Hold, MayBeTakenSeveralTimesByOneProcess) {
  const Other other([&] { FileHold{File()}; });
  std::optional<FileHold> first(File());
  std::optional<FileHold> second(File());
  first.reset();
  EXPECT_EQ(other.Tries(), kPermissionDenied);
  second.reset();
  EXPECT_EQ(other.Tries(), 0);
  EXPECT_THAT(FolderListing(), IsEmpty());
}

TEST_F(Hold, IsOfOneProcessAtATime) {
  constexpr int kProcesses = 4;
  constexpr int kHolds = 100;
  std::vector<std::unique_ptr<ChildProcess>> processes;
  for (int i = 0; i < kProcesses; ++i) {
    processes.push_back(std::make_unique<ChildProcess>([&](const ChildProcess::Test& test) {
      int collisions = 0;
      for (int held = 0; held < kHolds;) {
        try {
          const FileHold hold(File());
          const int mark = ::open(File("mark").c_str(), O_CREAT | O_EXCL, 0600);
          collisions += mark < 0 ? 1 : 0;
          ::close(mark);
          ::unlink(File("mark").c_str());
          ++held;
        } catch (const RuntimeError&) {  // try again
        }
      }
      test.Report(collisions);
    }));
  }
  for (const auto& process : processes) {
    std::int32_t collisions = -1;
    EXPECT_TRUE(process->Read(collisions));
    EXPECT_EQ(collisions, 0);
  }
  EXPECT_THAT(FolderListing(), IsEmpty());
}

TEST_F(Hold, IsTakenOverFromAnotherUserOnceThatProcessIsDead) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can be two users";
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  const Other nobody([&] {
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) throw RuntimeError(0, "still root");
    const FileHold hold(File());
    With("nobody's").Save(File());
  });
  const auto holder = Holder(File());
  ProcessOf(*holder);
  EXPECT_EQ(nobody.Tries(), kPermissionDenied);
  holder->Kill();
  holder->Finish();
  EXPECT_EQ(nobody.Tries(), 0);
  EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
}

TEST_F(Hold, IsRefusedWhereNothingCanBeSaved) {
  EXPECT_EQ(NumberOf([&] { FileHold{folder.path()}; }), 75) << "a folder";
  EXPECT_EQ(NumberOf([&] { FileHold{"/dev/null"}; }), 75) << "a device";
  EXPECT_EQ(NumberOf([&] { FileHold{File("none/quotes.xlsx")}; }), 75);
  EXPECT_EQ(NumberOf([&] { FileHold{"/proc/quotes.xlsx"}; }), 75);
}

TEST_F(Hold, IsEverybodysWhereTheFileSystemKnowsNoLocks) {
  for (const int reason : {ENOLCK, EOPNOTSUPP, ENOSYS}) {
    SCOPED_TRACE(reason);
    WithRefusedCalls({SYS_flock}, reason, [&] {
      const FileHold hold(File());
      EXPECT_FALSE(hold.IsLocked());
      EXPECT_NO_THROW(With("new").Save(File()));
    });
    EXPECT_EQ(SavedValue(), Variant("new"));
    EXPECT_THAT(FolderListing(), ElementsAre("quotes.xlsx"));
  }
  EXPECT_TRUE(FileHold(File()).IsLocked());
}

TEST_F(Hold, IsRefusedWhereLockingFails) {
  const RuntimeError error = ErrorOf([&] { WithRefusedCalls({SYS_flock}, EIO, [&] { FileHold{File()}; }); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_EQ(error.Description(), "Cannot save " + File().string() + ": Input/output error");
}

// File systems of networks lock only what is open for writing.
TEST_F(Hold, IsTriedWithAFileOpenForWriting) {
  const auto mode_of = [](const proc::Descriptor& descriptor) {
    return ::fcntl(descriptor.number(), F_GETFL) & O_ACCMODE;
  };
  WriteBytes(File(), "mine");
  EXPECT_EQ(mode_of(workbook::OpenToLock(File())), O_RDWR);
  EXPECT_EQ(mode_of(workbook::DeadLock(File())), O_RDWR);
  EXPECT_FALSE(workbook::OpenToLock(File("none")).IsOpen());
  EXPECT_EQ(mode_of(workbook::OpenToLock(folder.path())), O_RDONLY) << "for want of better";
}

TEST_F(Hold, SaysWhichLockOfAnotherUserStandsInItsWay) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can be two users";
  ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
  const std::string lock = File(".quotes.xlsx.mirelo-lock").string();
  WriteBytes(lock, "1");
  ASSERT_EQ(::chmod(lock.c_str(), 0644), 0);
  ChildProcess nobody([&](const ChildProcess::Test& test) {
    if (::setuid(kNobody) != 0) return;
    const RuntimeError error =
        ErrorOf([&] { WithRefusedCalls({SYS_flock}, EBADF, [&] { FileHold{File()}; }); });
    test.Report(error.Number());
    test.Report(error.Description() == "Cannot save " + File().string() + ": its lock " + lock +
                                           " is another user's; if no Mirelo works on it, delete that");
  });
  std::int32_t number = 0;
  EXPECT_TRUE(nobody.Read(number) && number == kPermissionDenied) << number;
  EXPECT_TRUE(nobody.Read(number) && number == 1) << "the text";
  EXPECT_TRUE(nobody.Finish());
}

// As where a file has another number each time that it is looked at.
TEST_F(Hold, IsGivenUpWhereItsLockIsNeverTheOneThatStands) {
  RuntimeError error(0, "");
  WithRefusedCalls({SYS_newfstatat, SYS_fstat, SYS_lstat}, EIO,
                   [&] { error = ErrorOf([&] { const workbook::LockFile lock(File()); }); });
  EXPECT_EQ(error.Number(), kPermissionDenied);
  EXPECT_EQ(error.Description(), "Cannot save " + File().string() + ": its lock " +
                                     File(".quotes.xlsx.mirelo-lock").string() +
                                     " cannot be kept, as it comes and goes");
}

// What is left behind

class Leftovers : public Hold {
 protected:
  // Kills a process that saves without end, at a moment of each save. The result is how many things it left.
  int KillASaving(const char* name, int moment) const {
    ChildProcess child([&](const ChildProcess::Test&) {
      auto spreadsheet = With("killed");
      for (;;) spreadsheet.Save(File(name));
    });
    while (FolderListing().empty()) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::microseconds(700 * moment));
    child.Kill();
    child.Finish();
    std::vector<std::string> names = FolderListing();
    std::erase(names, name);
    return static_cast<int>(names.size());
  }
};

TEST_F(Leftovers, AreGoneWithTheNextStart) {
  constexpr int kKills = 40;
  int left = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    left += KillASaving("quotes.xlsx", kill);
    { const FileHold next(File()); }
    const auto names = FolderListing();
    EXPECT_TRUE(names.empty() || names == std::vector<std::string>{"quotes.xlsx"})
        << ::testing::PrintToString(names);
  }
  EXPECT_GE(left, kKills) << "of nearly each a lock, and what was being made";
}

TEST_F(Leftovers, OfOtherFilesInTheFolderAreGoneAsWell) {
  int left = 0;
  for (int kill = 0; kill < 5; ++kill) left += KillASaving("quotes-1.xlsx", 10);
  EXPECT_GT(left, 0);
  // The copy that wrote the file ends with the process that was killed, but a moment after it.
  const auto is_clean = [this] {
    const auto names = FolderListing();
    return names.empty() || names == std::vector<std::string>{"quotes-1.xlsx"};
  };
  for (int start = 0; start < 100 && !is_clean(); ++start) {
    const FileHold next(File());
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_TRUE(is_clean()) << ::testing::PrintToString(FolderListing());
}

TEST_F(Leftovers, AreNotWhatALivingProcessHas) {
  const ChildProcess living([&](const ChildProcess::Test& test) {
    const FileHold hold(File("other.xlsx"));
    std::filesystem::create_directory(File(".other.xlsx-12.tmp"));
    std::filesystem::create_directory(File(".other.xlsx12.tmp"));
    test.Report(::getpid());
    std::int32_t number = 0;
    test.Await(number);
  });
  ProcessOf(living);
  With("mine").Save(File());
  EXPECT_THAT(FolderListing(), UnorderedElementsAre("quotes.xlsx", ".other.xlsx.mirelo-lock",
                                                    ".other.xlsx-12.tmp", ".other.xlsx12.tmp"));
}

// The name of one may end with the digits that stand behind another's.
TEST_F(Leftovers, AreNotWhatALivingProcessHasOfAFileWhoseNameGoesOnWithDigits) {
  const ChildProcess living([&](const ChildProcess::Test& test) {
    const FileHold hold(File("day1"));
    std::filesystem::create_directory(File(workbook::WorkshopNameOf("day1", 777).c_str()));
    std::filesystem::create_directory(File(".day1777.tmp"));  // by a former version
    test.Report(::getpid());
    std::int32_t number = 0;
    test.Await(number);
  });
  ProcessOf(living);
  { const FileHold hold(File("day")); }
  EXPECT_THAT(FolderListing(), UnorderedElementsAre(".day1.mirelo-lock", ".day1-777.tmp", ".day1777.tmp"));
}

TEST_F(Leftovers, OfFormerVersionsAreGoneAsWellWhereTheyAreNobodyElses) {
  std::filesystem::create_directory(File(".day1777.tmp"));
  std::filesystem::create_directory(File(".day-1777.tmp"));
  { const FileHold hold(File("day")); }
  EXPECT_THAT(FolderListing(), IsEmpty());
}

TEST_F(Leftovers, AreNothingOfOtherMakers) {
  const std::vector<std::string> names{".quotes.xlsx.lock", ".quotes.xlsx.tmp",     ".quotes.xlsx1a.tmp",
                                       ".quotes.xlsx12",    "quotes.xlsx12.tmp",    ".other.xlsx12.tmp",
                                       ".quotes.xlsx-.tmp", ".quotes.xlsx-1-2.tmp", ".tmp",
                                       ".12.tmp",           ".mirelo-lock",         ".quotes.xls12.tmp"};
  for (const std::string& name : names) WriteBytes(File(name.c_str()), "mine");
  { const FileHold hold(File()); }
  EXPECT_THAT(FolderListing(), ::testing::UnorderedElementsAreArray(names));
}

}  // namespace
}  // namespace mirelo::testing
