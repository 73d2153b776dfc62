#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <thread>

#include "adapters/workbook/atomic_file.h"
#include "automation/runtime_error.h"
#include "host/excel/font.h"
#include "support/child_process.h"
#include "support/current_directory.h"
#include "support/error_number.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using workbook::Spreadsheet;

constexpr uid_t kOtherUser = 65534;

class SaveFile : public WorkbookFiles {
 protected:
  static Spreadsheet With(const Variant& value) {
    auto spreadsheet = Spreadsheet::New();
    SheetOf(spreadsheet)->Range("A1")->Value(value);
    return spreadsheet;
  }
  // A workbook whose file takes some 100 KB, in many writes.
  static Spreadsheet Large(const char* mark) {
    auto spreadsheet = With(mark);
    VariantArray table(1, 2000, 1, 8);
    for (std::int32_t row = 1; row <= 2000; ++row) {
      for (std::int32_t column = 1; column <= 8; ++column) {
        table(row, column) =
            column < 3 ? Variant("text " + std::to_string(row * 31 + column)) : Variant(row * 1.37 / column);
      }
    }
    SheetOf(spreadsheet)->Range("A2")->Resize(2000, 8)->Value(table);
    return spreadsheet;
  }

  Variant SavedValue(const char* name = "quotes.xlsx") {
    return SheetOf(Spreadsheet::Open(File(name)))->Range("A1")->Value();
  }
  static std::int32_t ErrorOfSaving(Spreadsheet& spreadsheet, const std::filesystem::path& file) {
    return NumberOf([&] { spreadsheet.Save(file); });
  }
  // In a process without the rights that root has.
  std::int32_t ErrorOfSavingAsNobody() {
    return ReportOf([&](const ChildProcess::Test& test) {
      if (geteuid() == 0 && setuid(kOtherUser) != 0) return;
      auto spreadsheet = With("new");
      test.Report(ErrorOfSaving(spreadsheet, File()));
    });
  }
  // In a process whose files may not be larger than this.
  std::int32_t ErrorOfSavingWithin(rlim_t size) {
    return ReportOf([&](const ChildProcess::Test& test) {
      std::signal(SIGXFSZ, SIG_IGN);
      auto spreadsheet = Large("new");
      const rlimit limit{size, size};
      if (setrlimit(RLIMIT_FSIZE, &limit) == 0) test.Report(ErrorOfSaving(spreadsheet, File()));
    });
  }
  static std::int32_t ReportOf(const std::function<void(const ChildProcess::Test&)>& body) {
    std::int32_t number = -1;
    ChildProcess child(body);
    EXPECT_TRUE(child.Read(number));
    EXPECT_TRUE(child.Finish());
    return number;
  }
  std::vector<std::string> Only(const char* name) { return {name}; }
};

TEST_F(SaveFile, MakesANewFileAndNothingElse) {
  With("new").Save(File());
  EXPECT_EQ(SavedValue(), Variant("new"));
  EXPECT_EQ(FolderListing(), Only("quotes.xlsx"));
}

TEST_F(SaveFile, ReplacesAnOldFile) {
  With("old").Save(File());
  With("new").Save(File());
  EXPECT_EQ(SavedValue(), Variant("new"));
  EXPECT_EQ(FolderListing(), Only("quotes.xlsx"));
}

TEST_F(SaveFile, ReplacesAFileThatIsNoWorkbook) {
  WriteBytes(File(), "something else");
  With("new").Save(File());
  EXPECT_EQ(SavedValue(), Variant("new"));
}

TEST_F(SaveFile, GivesANewFileThePermissionsOfTheUmask) {
  const mode_t old = umask(027);
  With("new").Save(File());
  umask(old);
  struct stat status {};
  ASSERT_EQ(stat(File().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(SaveFile, KeepsThePermissionsOfAnOldFile) {
  With("old").Save(File());
  ASSERT_EQ(chmod(File().c_str(), 0604), 0);
  With("new").Save(File());
  struct stat status {};
  ASSERT_EQ(stat(File().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0604u);
}

TEST_F(SaveFile, KeepsASymbolicLinkAndReplacesWhatItPointsAt) {
  With("old").Save(File("real.xlsx"));
  std::filesystem::create_symlink("real.xlsx", File("link.xlsx"));
  With("new").Save(File("link.xlsx"));
  EXPECT_TRUE(std::filesystem::is_symlink(File("link.xlsx")));
  EXPECT_EQ(SavedValue("real.xlsx"), Variant("new"));
}

TEST_F(SaveFile, KeepsASymbolicLinkToAFileThatIsNotThereYetAndMakesThatFile) {
  std::filesystem::create_directory(File("inner"));
  std::filesystem::create_symlink("inner/real.xlsx", File("link.xlsx"));
  std::filesystem::create_symlink(File("link.xlsx"), File("link of link.xlsx"));
  With("new").Save(File("link of link.xlsx"));
  EXPECT_TRUE(std::filesystem::is_symlink(File("link of link.xlsx")));
  EXPECT_TRUE(std::filesystem::is_symlink(File("link.xlsx")));
  EXPECT_FALSE(std::filesystem::is_symlink(File("inner/real.xlsx")));
  EXPECT_EQ(SavedValue("inner/real.xlsx"), Variant("new"));
}

TEST_F(SaveFile, RefusesASymbolicLinkThatLeadsNowhere) {
  std::filesystem::create_symlink("none/real.xlsx", File("link.xlsx"));
  std::filesystem::create_symlink("circle.xlsx", File("circle.xlsx"));
  auto spreadsheet = With("new");
  const RuntimeError error = ErrorOf([&] { spreadsheet.Save(File("link.xlsx")); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_EQ(error.Description(), "Cannot save " + File("link.xlsx").string() + ", a link to " +
                                     File("none/real.xlsx").string() + ": No such file or directory");
  EXPECT_EQ(ErrorOfSaving(spreadsheet, File("circle.xlsx")), 75);
  EXPECT_TRUE(std::filesystem::is_symlink(File("link.xlsx")));
  EXPECT_TRUE(std::filesystem::is_symlink(File("circle.xlsx")));
}

TEST_F(SaveFile, TakesNamesOfEveryKind) {
  for (const char* name : {"with blanks.xlsx", "\xC3\xBC\xE2\x82\xAC.xlsx", "no extension", ".hidden"}) {
    SCOPED_TRACE(name);
    With(name).Save(File(name));
    EXPECT_EQ(SavedValue(name), Variant(name));
  }
}

TEST_F(SaveFile, SavesToANameInTheCurrentFolder) {
  {
    const CurrentDirectory current(folder.path());
    With("here").Save("here.xlsx");
  }
  EXPECT_EQ(SavedValue("here.xlsx"), Variant("here"));
}

TEST_F(SaveFile, RaisesError75WhereNoFileCanBe) {
  auto spreadsheet = With("new");
  EXPECT_EQ(ErrorOfSaving(spreadsheet, folder.path()), 75) << "a folder";
  EXPECT_EQ(ErrorOfSaving(spreadsheet, File() / "below.xlsx"), 75) << "a folder that is not there";
  EXPECT_EQ(ErrorOfSaving(spreadsheet, "/proc/quotes.xlsx"), 75) << "a folder that takes no files";
  EXPECT_EQ(ErrorOfSaving(spreadsheet, "/dev/full"), 75) << "a device";
  EXPECT_EQ(ErrorOfSaving(spreadsheet, File(std::string(300, 'x').c_str())), 75) << "a name too long";
  EXPECT_TRUE(FolderListing().empty());
}

TEST_F(SaveFile, RaisesError75AndKeepsTheOldFileWhereNobodyMayWrite) {
  With("old").Save(File());
  ASSERT_EQ(chmod(File().c_str(), 0644), 0);
  ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
  const std::int32_t in_locked_folder = ErrorOfSavingAsNobody();
  ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
  ASSERT_EQ(chmod(File().c_str(), 0444), 0);
  const std::int32_t over_locked_file = ErrorOfSavingAsNobody();
  EXPECT_EQ(in_locked_folder, 75);
  EXPECT_EQ(over_locked_file, 75)
      << "a file that is read-only stays, though its folder would let it be replaced";
  EXPECT_EQ(SavedValue(), Variant("old"));
  EXPECT_EQ(FolderListing(), Only("quotes.xlsx"));
}

// Beside a file that a spreadsheet program has open stands another one that says so.
TEST_F(SaveFile, RaisesError70AndKeepsTheOldFileThatAnotherProgramHas) {
  With("old").Save(File());
  auto spreadsheet = With("new");
  for (const char* lock : {".~lock.quotes.xlsx#", "~$quotes.xlsx"}) {
    SCOPED_TRACE(lock);
    WriteBytes(File(lock), ",");
    EXPECT_EQ(ErrorOfSaving(spreadsheet, File()), 70);
    std::filesystem::remove(File(lock));
  }
  const int descriptor = open(File().c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(descriptor, LOCK_SH), 0);
  EXPECT_EQ(ErrorOfSaving(spreadsheet, File()), 70);
  close(descriptor);
  EXPECT_EQ(SavedValue(), Variant("old"));
  EXPECT_EQ(FolderListing(), Only("quotes.xlsx"));
  spreadsheet.Save(File());
  EXPECT_EQ(SavedValue(), Variant("new"));
}

// To write takes its time, and so does the disk.
TEST_F(SaveFile, KeepsWhatAnotherProgramHasSavedMeanwhile) {
  With("old").Save(File());
  const workbook::FileStamp known(File());
  const auto replace = [&](const char* theirs, const workbook::FileStamp& stamp) {
    return ErrorOf([&] {
      ReplaceFile(
          File(),
          [&](const std::filesystem::path& fresh) {
            WriteBytes(fresh, "new");
            if (theirs != nullptr) WriteBytes(File(), theirs);
          },
          stamp);
    });
  };
  const RuntimeError error = replace("theirs", known);
  EXPECT_EQ(error.Number(), 70);
  EXPECT_EQ(error.Description(), "Cannot save " + File().string() + ": another program has changed it");
  EXPECT_EQ(BytesOf(File()), "theirs");
  EXPECT_EQ(replace(nullptr, known).Number(), 70) << "changed before";
  EXPECT_EQ(replace("theirs again", workbook::FileStamp()).Number(), 70) << "there was none";
  EXPECT_EQ(BytesOf(File()), "theirs");
  EXPECT_EQ(FolderListing(), Only("quotes.xlsx"));

  std::filesystem::remove(File());
  EXPECT_EQ(replace("theirs", workbook::FileStamp()).Number(), 70) << "it has appeared";
  EXPECT_EQ(BytesOf(File()), "theirs");
}

TEST_F(SaveFile, SavesAgainAndAgainByTheStampOfWhatItSaved) {
  auto spreadsheet = With("new");
  const auto tell = [](const std::string&) {};
  workbook::FileStamp stamp;
  for (int i = 0; i < 3; ++i) stamp = spreadsheet.Save(File(), tell, stamp);
  EXPECT_EQ(stamp, workbook::FileStamp(File()));
  std::filesystem::remove(File());
  EXPECT_NO_THROW(spreadsheet.Save(File(), tell, stamp)) << "one that is gone is made anew";
}

TEST_F(SaveFile, SavesInAFolderThatMayBeWrittenButNotRead) {
  ASSERT_EQ(chmod(folder.path().c_str(), 0333), 0);
  EXPECT_EQ(ErrorOfSavingAsNobody(), 0);
  EXPECT_EQ(ErrorOfSavingAsNobody(), 0) << "again";
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  EXPECT_EQ(SavedValue(), Variant("new"));
  EXPECT_EQ(FolderListing(), Only("quotes.xlsx"));
}

TEST_F(SaveFile, TellsBeforehandWhatCannotBeSaved) {
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable(File()); }), 0) << "a new file";
  With("old").Save(File());
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable(File()); }), 0) << "an old file";
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable(folder.path()); }), 75) << "a folder";
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable(File() / "below.xlsx"); }), 75);
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable("/dev/full"); }), 75) << "a device";
  WriteBytes(File(".~lock.quotes.xlsx#"), ",");
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable(File()); }), 70);
  std::filesystem::remove(File());
  EXPECT_EQ(NumberOf([&] { Spreadsheet::RequireSavable(File()); }), 70) << "not saved there yet";
  EXPECT_EQ(FolderListing(), Only(".~lock.quotes.xlsx#"));
}

// A limit of the size of files stands for a disk that is full: it strikes wherever that size is reached
// first, in the helper files of the writer or in the file itself.
TEST_F(SaveFile, KeepsTheOldFileWholeWhenTheDiskIsFull) {
  With("old").Save(File());
  const std::string old = BytesOf(File());
  int refused = 0;
  int saved = 0;
  for (const rlim_t size : std::initializer_list<rlim_t>{0, 1000, 4096, 10'000, 30'000, 60'000, 100'000,
                                                         200'000, 400'000, 4'000'000}) {
    SCOPED_TRACE(size);
    const std::int32_t error = ErrorOfSavingWithin(size);
    EXPECT_EQ(FolderListing(), Only("quotes.xlsx"));
    if (error == 0) {
      ++saved;
      EXPECT_EQ(SavedValue(), Variant("new"));
      WriteBytes(File(), old);
    } else {
      ++refused;
      EXPECT_EQ(error, 61);
      EXPECT_EQ(BytesOf(File()), old);
    }
  }
  EXPECT_GE(refused, 6);
  EXPECT_GE(saved, 1) << "the largest limit is none";
}

TEST_F(SaveFile, LeavesNoHalfFileWhenItIsKilled) {
  int interrupted = 0;
  for (int round = 0; round < 8; ++round) {
    With("old").Save(File());
    ChildProcess child([&](const ChildProcess::Test&) {
      auto spreadsheet = Large("new");
      for (;;) spreadsheet.Save(File());
    });
    while (FolderListing().size() < 3) std::this_thread::yield();  // until a new file is being written
    std::this_thread::sleep_for(std::chrono::milliseconds(round * round));
    child.Kill();
    EXPECT_FALSE(child.Finish());
    const Variant value = SavedValue();
    EXPECT_TRUE(value == Variant("old") || value == Variant("new")) << value.ToText();
    if (FolderListing().size() > 2) ++interrupted;
    for (const std::string& name : FolderListing()) std::filesystem::remove_all(File(name.c_str()));
  }
  EXPECT_GT(interrupted, 0) << "no save was cut off, so nothing was tried";
}

TEST_F(SaveFile, RefusesMoreFormattedBlanksThanAFileCanHold) {
  auto spreadsheet = With("x");
  SheetOf(spreadsheet)->Range("A1:XFC500000")->Font()->Bold(true);
  EXPECT_EQ(ErrorOfSaving(spreadsheet, File()), 1004);
  EXPECT_TRUE(FolderListing().empty());
}

}  // namespace
}  // namespace mirelo::testing
