#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "adapters/csv/csv_journal.h"
#include "journal/tested_journals.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using csv::CsvJournal;
using ::testing::HasSubstr;

constexpr const char* kHeader = "Number,Text,52w Low,Volume\n";

class CsvFile : public ::testing::Test {
 protected:
  void Hold(const std::string& text) const { std::ofstream(file, std::ios::binary) << text; }
  std::string Refusal() const {
    try {
      const CsvJournal journal(file, TestColumns());
    } catch (const host::JournalRefused& refused) {
      return refused.Description();
    }
    return {};
  }

  TempDirectory folder;
  std::filesystem::path file = folder / "quotes.csv";
};

TEST_F(CsvFile, BeginsWithTheNamesOfItsColumnsOnce) {
  for (int day = 0; day < 2; ++day)
    CsvJournal(file, TestColumns()).Append(std::vector<DataRow>{TestRow("=a,b")});
  EXPECT_EQ(Content(file), kHeader + std::string("1,\"'=a,b\",1.5,\n2,\"'=a,b\",1.5,\n"));
}

TEST_F(CsvFile, LosesALineThatWasCutOffAndSaysSo) {
  Hold(kHeader + std::string("1,a,1.5,\n2,b,27."));
  {
    CsvJournal journal(file, TestColumns());
    EXPECT_THAT(journal.Mended(), HasSubstr("ended within a line, which was taken away (7 bytes)"));
    journal.Append(std::vector<DataRow>{TestRow("c")});
  }
  EXPECT_EQ(Content(file), kHeader + std::string("1,a,1.5,\n2,c,1.5,\n"));
}

TEST_F(CsvFile, LosesALongLineThatWasCutOff) {
  Hold(kHeader + std::string("41,a,1.5,\n42,") + std::string(20'000, 'x'));
  CsvJournal(file, TestColumns()).Append(std::vector<DataRow>{TestRow("c")});
  EXPECT_EQ(Content(file), kHeader + std::string("41,a,1.5,\n42,c,1.5,\n"));
}

TEST_F(CsvFile, GetsTheRestOfAHeaderThatWasCutOff) {
  Hold("Number,Te");
  CsvJournal(file, TestColumns()).Append(std::vector<DataRow>{TestRow("a")});
  EXPECT_EQ(Content(file), kHeader + std::string("1,a,1.5,\n"));
}

TEST_F(CsvFile, IsRefusedWithOtherColumns) {
  Hold("Number,Text,Volume\n1,a,\n");
  EXPECT_THAT(Refusal(), HasSubstr("its first line is not the one of quotes that this version keeps"));
  Hold("Number,Text\r\n");
  EXPECT_NE(Refusal(), "");
}

TEST_F(CsvFile, IsRefusedWhereItsLastLineHasNoNumber) {
  Hold(kHeader + std::string("a sum of all\n"));
  EXPECT_THAT(Refusal(), HasSubstr("its last line begins with no number"));
}

TEST_F(CsvFile, IsRefusedWhereItsLastNumberLeavesNoRoomToCountOn) {
  Hold(kHeader + std::string("9223372036854775807,a,1.5,\n"));
  EXPECT_THAT(Refusal(), HasSubstr("its last line has a number that no quote can have"));
  Hold(kHeader + std::string("-7,a,1.5,\n"));
  EXPECT_THAT(Refusal(), HasSubstr("its last line has a number that no quote can have"));
  Hold(kHeader + std::string("1000000000000000,a,1.5,\n"));
  EXPECT_EQ(Refusal(), "");
}

TEST_F(CsvFile, IsOneProcessesAlone) {
  const CsvJournal first(file, TestColumns());
  EXPECT_THAT(Refusal(), HasSubstr("another Mirelo appends to it; a database (.db) takes several at once"));
}

}  // namespace
}  // namespace mirelo::testing
