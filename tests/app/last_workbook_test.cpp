// Which workbook was used last.

#include "app/workbook/last_workbook.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>
#include <optional>
#include <string>

#include "automation/runtime_error.h"
#include "support/environment_variable.h"
#include "support/error_number.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;

class LastWorkbookFile : public ::testing::Test {
 protected:
  void Write(const std::string& text) { std::ofstream(folder / "last", std::ios::binary) << text; }

  TempDirectory folder;
  app::LastWorkbook last{folder / "last"};
};

TEST_F(LastWorkbookFile, HoldsNoneAtFirst) { EXPECT_EQ(last.Recall(), std::nullopt); }

TEST_F(LastWorkbookFile, GivesBackWhatWasUsedLastWhateverItsLetters) {
  for (const char* name : {"/home/you/quotes.xlsx", "/a b/Котировки.xlsx", "/line\nfeed.xlsx", "/feed\n",
                           "/no utf8 \xFF.xlsx"}) {
    SCOPED_TRACE(name);
    last.Remember(name);
    EXPECT_EQ(last.Recall(), fs::path(name));
  }
}

TEST_F(LastWorkbookFile, HoldsWholePathsSinceTheNextRunBeginsElsewhere) {
  last.Remember("quotes.xlsx");
  EXPECT_EQ(last.Recall(), fs::current_path() / "quotes.xlsx");
}

TEST_F(LastWorkbookFile, IsNoneWhereItIsDamaged) {
  for (const std::string& text :
       {std::string(), std::string("\n"), std::string("quotes.xlsx\n"), std::string("/cut off"),
        std::string("/a\0b\n", 5), "/" + std::string(9000, 'x') + "\n"}) {
    SCOPED_TRACE(text.substr(0, 20));
    Write(text);
    EXPECT_EQ(last.Recall(), std::nullopt);
  }
}

TEST_F(LastWorkbookFile, IsNotWaitedForWhereItIsAPipe) {
  Write("");
  fs::remove(folder / "last");
  ASSERT_EQ(::mkfifo((folder / "last").c_str(), 0600), 0);
  EXPECT_EQ(last.Recall(), std::nullopt);
}

TEST_F(LastWorkbookFile, SaysWhyItCannotBeKept) {
  Write("no folder");
  const app::LastWorkbook in_a_file(folder / "last" / "x");
  EXPECT_EQ(NumberOf([&] { in_a_file.Remember("/q.xlsx"); }), 75);
  const EnvironmentVariable state("XDG_STATE_HOME", nullptr), home("HOME", nullptr);
  const app::LastWorkbook nowhere;
  EXPECT_EQ(nowhere.Recall(), std::nullopt);
  EXPECT_EQ(NumberOf([&] { nowhere.Remember("/q.xlsx"); }), 75);
}

TEST_F(LastWorkbookFile, LiesInTheStateFolder) {
  const EnvironmentVariable state("XDG_STATE_HOME", (folder / "state").c_str());
  app::LastWorkbook().Remember("/q.xlsx");
  EXPECT_TRUE(fs::exists(folder / "state/mirelo/last-workbook"));
  const EnvironmentVariable relative("XDG_STATE_HOME", "state"), home("HOME", folder.path().c_str());
  app::LastWorkbook().Remember("/q.xlsx");
  EXPECT_TRUE(fs::exists(folder / ".local/state/mirelo/last-workbook"));
}

}  // namespace
}  // namespace mirelo::testing
