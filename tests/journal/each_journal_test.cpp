// What every journal promises, whatever the format of its file.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>

#include "journal/tested_journals.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

class EachJournal : public ::testing::TestWithParam<TestedJournal> {
 protected:
  std::unique_ptr<host::Journal> Open() const { return GetParam().open(file); }
  std::vector<std::string> Rows() const { return GetParam().rows(file); }

  // The text of the refusal to open the file; empty where it is not refused.
  std::string Refusal() const {
    try {
      Open();
    } catch (const host::JournalRefused& refused) {
      return refused.Description();
    }
    return {};
  }

  TempDirectory folder;
  fs::path file = folder / GetParam().file;
};

TEST_P(EachJournal, NumbersRowsInTheirOrder) {
  const auto journal = Open();
  journal->Append(std::vector<DataRow>{TestRow("a"), TestRow("b", 0)});
  journal->Append(std::vector<DataRow>{{std::string("c"), {}, std::int64_t{7}}});
  const auto zero = Rows().at(1);
  EXPECT_THAT(Rows(), ElementsAre("1,a,1.5,", zero, "3,c,,7"));
  EXPECT_TRUE(zero == "2,b,0," || zero == "2,b,0.0,") << zero;
}

TEST_P(EachJournal, GoesOnWhereItEndedBefore) {
  Open()->Append(std::vector<DataRow>{TestRow("a")});
  const auto journal = Open();
  EXPECT_EQ(journal->Mended(), "");
  journal->Append(std::vector<DataRow>{TestRow("b")});
  EXPECT_THAT(Rows(), ElementsAre("1,a,1.5,", "2,b,1.5,"));
}

TEST_P(EachJournal, HasTheModeThatTheUmaskLeaves) {
  const mode_t before = ::umask(027);
  Open();
  ::umask(before);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
}

TEST_P(EachJournal, RefusesAFileOfSomethingElse) {
  std::ofstream(file)
      << "Dear reader,\nthis is a letter, which is longer than any header of a database may be. "
         "It must stay as it is.\n";
  const std::string before = Content(file);
  EXPECT_THAT(Refusal(), HasSubstr("Quotes cannot be appended to " + file.string()));
  EXPECT_EQ(Content(file), before);
}

TEST_P(EachJournal, RefusesWhatIsNoFile) {
  fs::create_directory(file);
  EXPECT_NE(Refusal(), "");
  fs::remove(file);
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_THAT(Refusal(), HasSubstr("it is no regular file"));
  file = folder / "missing" / GetParam().file;
  EXPECT_THAT(Refusal(), HasSubstr("No such file or directory"));
}

TEST_P(EachJournal, IsNoMoreWhatItWasOnceItsFileIsReplaced) {
  const auto journal = Open();
  fs::rename(file, folder / "away");
  std::ofstream(file) << "another one";
  const RuntimeError error = ErrorOf([&] { journal->Append(std::vector<DataRow>{TestRow("a")}); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_EQ(error.Description(), file.string() + " was taken away or replaced while it was in use");
  EXPECT_EQ(Content(file), "another one");
}

TEST_P(EachJournal, CannotBeOpenedWhereItMayNotBeWritten) {
  Open();
  ChildProcess reader([&](const ChildProcess::Test& test) {
    DropRightsOfRoot();
    ::chmod(file.c_str(), 0444);
    try {
      Open();
    } catch (const host::JournalRefused&) {
      test.Report(-1);
    } catch (const RuntimeError& error) {
      test.Report(error.Number());
    }
  });
  std::int32_t number = 0;
  EXPECT_TRUE(reader.Read(number));
  EXPECT_EQ(number, 75) << "which may pass, so it is no refusal";
}

// A limit of file sizes stands for a full disk: a part of a row may be written then.
TEST_P(EachJournal, KeepsWholeRowsAloneWhenTheDiskIsFull) {
  Open()->Append(std::vector<DataRow>{TestRow("before")});
  ChildProcess writer([&](const ChildProcess::Test& test) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit full{150'000, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &full);
    std::int32_t appended = 0;
    try {
      const auto journal = Open();
      for (; appended < 10'000; ++appended) {
        journal->Append(std::vector<DataRow>(10, TestRow(std::string(333, 'x'))));
      }
    } catch (const RuntimeError& error) {
      test.Report(error.Number());
    }
    test.Report(appended);
    const rlimit room{RLIM_INFINITY, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &room);
    Open()->Append(std::vector<DataRow>{TestRow("after")});
  });
  std::int32_t number = 0;
  std::int32_t appended = 0;
  ASSERT_TRUE(writer.Read(number) && writer.Read(appended) && writer.Finish());
  EXPECT_EQ(number, 61);
  const auto rows = Rows();
  ASSERT_EQ(rows.size(), 2 + 10 * static_cast<std::size_t>(appended));
  EXPECT_THAT(rows.back(), HasSubstr(",after,"));
  for (std::size_t i = 1; i + 1 < rows.size(); ++i) EXPECT_THAT(rows[i], ::testing::EndsWith("x,1.5,"));
}

TEST_P(EachJournal, LosesNothingThatWasAppendedWhereverItIsKilled) {
  constexpr int kKills = 25;
  std::mt19937 random(20261122);
  std::uniform_int_distribution<int> pause(1, 12);
  int kept = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    ChildProcess writer([&](const ChildProcess::Test& test) {
      const auto journal = Open();
      for (std::int32_t batch = 1;; ++batch) {
        journal->Append(std::vector<DataRow>(20, TestRow(std::string(50, 'x'))));
        test.Report(batch);
      }
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(pause(random)));
    writer.Kill();
    for (std::int32_t batch = 0; writer.Read(batch);) kept += 20;
    writer.Finish();
    Open();  // which mends what is to be mended
    const auto rows = Rows();
    ASSERT_GE(static_cast<int>(rows.size()), kept);
    ASSERT_EQ(rows.empty() ? "0" : rows.back().substr(0, rows.back().find(',')), std::to_string(rows.size()));
    kept = static_cast<int>(rows.size());
  }
  EXPECT_GT(kept, 0) << "every kill came too early";
  for (const auto& row : Rows()) ASSERT_THAT(row, ::testing::EndsWith("x,1.5,"));
}

INSTANTIATE_TEST_SUITE_P(Journals, EachJournal, ::testing::ValuesIn(TestedJournals()),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace mirelo::testing
