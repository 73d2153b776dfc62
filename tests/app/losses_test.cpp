// What becomes of a person's own sheets when the program works on their workbook.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "app/program.h"
#include "quotetracker/server.h"
#include "support/temp_directory.h"
#include "workbook/package_builder.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kMine = "mine.xlsx";

class OwnSheets : public ::testing::Test {
 protected:
  // Lays a workbook with one sheet of a person, which has merged cells.
  void Lay(
      const std::string& name, void (*change)(Parts&) = [](Parts&) {}) {
    Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><f>1+1</f><v>2</v></c></row>");
    InsertBehind(parts[kSheetPart], "</sheetData>", "<mergeCells><mergeCell ref=\"A1:B1\"/></mergeCells>");
    ReplaceIn(parts["xl/workbook.xml"], "name=\"Prices\"", "name=\"" + name + "\"");
    change(parts);
    sheet = parts[kSheetPart];
    const std::vector<char> bytes = Zip(parts);
    std::ofstream(folder / kMine, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  ProgramResult Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--http-port", std::to_string(server.HttpPort()), "--workbook", kMine,
                                       "--tickers", "MSFT,IBM"});
    return RunMirelo(folder.path(), arguments);
  }
  // The part of the person's sheet as it stands in the file now.
  std::string SheetNow() {
    std::ifstream in(folder / kMine, std::ios::binary);
    return Unzip(std::string(std::istreambuf_iterator<char>(in), {}))[kSheetPart];
  }

  TempDirectory folder;
  quotetracker::Server server;
  std::string sheet;
};

TEST_F(OwnSheets, StayAsTheyAreWhenGoIsPressed) {
  Lay("Mine");
  const auto result = Run({"go"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.err, Not(HasSubstr("warning")));
  EXPECT_EQ(SheetNow(), sheet);
}

TEST_F(OwnSheets, StayAsTheyAreThroughoutADay) {
  Lay("Mine");
  const auto result = Run({"run", "--set", "Seconds=1", "--for", "2s"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.err, Not(HasSubstr("warning")));
  EXPECT_EQ(SheetNow(), sheet);
  EXPECT_THAT(RunMirelo(folder.path(), {"show", kMine, "Dovanta2_Quotes"}).out, HasSubstr("MSFT"));
}

TEST_F(OwnSheets, AreWarnedOfBeforeTheyLoseSomething) {
  Lay("Dovanta2_Quotes");
  const auto refused = Run({"go"});
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_THAT(refused.err,
              AllOf(HasSubstr("not kept: formulas (cells: 1), which become the last value computed.\n"),
                    HasSubstr("not kept: merged cells.\n")));
  EXPECT_THAT(SheetNow(), HasSubstr("mergeCell"));
  const auto result = Run({"go", "--yes"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  const std::string warning = "warning: mine.xlsx: Sheet \"Dovanta2_Quotes\": not kept: merged cells.\n";
  EXPECT_THAT(result.err, HasSubstr(warning));
  EXPECT_LT(result.err.find(warning), result.err.find("Saved in"));
  EXPECT_THAT(SheetNow(), Not(HasSubstr("mergeCell")));
  EXPECT_THAT(Run({"go"}).err, Not(HasSubstr("warning"))) << "there is nothing left to lose";
}

// The file has no room for the formats of tables.
TEST_F(OwnSheets, AreWarnedOfBeforeAllIsWrittenAnewThatCannotStay) {
  const std::string unfit = "warning: mine.xlsx: Workbook: its sheets cannot stay as they stand in the file";
  const std::string merged = "warning: mine.xlsx: Sheet \"Mine\": not kept: merged cells.\n";
  const std::vector<std::vector<std::string>> ways{{"go"}, {"run", "--set", "Seconds=1", "--for", "2s"}};
  for (const auto& words : ways) {
    SCOPED_TRACE(words.front());
    Lay("Mine", FillFormats);
    const auto result = Run(words);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_LT(result.err.find(unfit), result.err.find(merged));
    EXPECT_NE(result.err.find(merged), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find(unfit), result.err.rfind(unfit)) << "once";
    EXPECT_EQ(result.err.find(merged), result.err.rfind(merged)) << "once";
    EXPECT_THAT(result.err, Not(HasSubstr("saved: ")));
    EXPECT_THAT(RunMirelo(folder.path(), {"show", kMine, "Dovanta2_Quotes"}).out, HasSubstr("MSFT"));
    EXPECT_THAT(RunMirelo(folder.path(), {"show", kMine, "Mine"}).out, HasSubstr("2"));
    EXPECT_THAT(Run(words).err, Not(HasSubstr("warning"))) << "there is nothing left to lose";
  }
}

}  // namespace
}  // namespace mirelo::testing
