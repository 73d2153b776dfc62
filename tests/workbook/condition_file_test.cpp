#include <gmock/gmock.h>

#include <cstdint>

#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace host::excel;
using workbook::Spreadsheet;

class ConditionFiles : public WorkbookFiles {
 protected:
  // A workbook with these elements behind the cells, and a list of looks: 0 red, 1 bold on yellow.
  Parts With(std::string_view elements) const {
    Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    InsertBehind(parts[kSheetPart], "</sheetData>", elements);
    InsertBehind(
        parts["xl/styles.xml"], "</cellXfs>",
        "<dxfs><dxf><font><color rgb=\"FFFF0000\"/></font></dxf><dxf><font><b/></font><fill><patternFill>"
        "<bgColor rgb=\"FFFFFF00\"/></patternFill></fill></dxf></dxfs>");
    return parts;
  }
  static std::string Rule(std::string_view attributes, std::string_view formulas) {
    return "<conditionalFormatting sqref=\"B2:B9\"><cfRule " + std::string(attributes) + ">" +
           std::string(formulas) + "</cfRule></conditionalFormatting>";
  }
  static std::shared_ptr<FormatConditions> On(const Spreadsheet& spreadsheet, std::string_view address) {
    return SheetOf(spreadsheet)->Range(address)->FormatConditions();
  }
};

TEST_F(ConditionFiles, KeepTheColoursOfRisesAndFalls) {
  auto spreadsheet = Spreadsheet::New();
  for (const char* address : {"G3:G36002", "B3"}) {
    On(spreadsheet, address)->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(10);
    On(spreadsheet, address)->Add(xlCellValue, xlLess, "0")->Font()->ColorIndex(3);
  }
  const auto loaded = Reloaded(spreadsheet);
  for (const char* address : {"G3:G36002", "G36002", "B3"}) {
    SCOPED_TRACE(address);
    ASSERT_EQ(On(loaded, address)->Count(), 2);
    EXPECT_EQ(On(loaded, address)->Item(1)->Font()->ColorIndex(), Variant(10));
    EXPECT_EQ(On(loaded, address)->Item(2)->Font()->ColorIndex(), Variant(3));
  }
  for (const char* address : {"G2", "G36003", "F3", "B4"})
    EXPECT_EQ(On(loaded, address)->Count(), 0) << address;
  EXPECT_THAT(AllLosses(loaded), IsEmpty());
}

TEST_F(ConditionFiles, KeepEveryOperatorAndItsOrder) {
  auto spreadsheet = Spreadsheet::New();
  std::int32_t color = 3;
  for (const auto op : {xlEqual, xlNotEqual, xlGreater, xlLess, xlGreaterEqual, xlLessEqual})
    On(spreadsheet, "A1")->Add(xlCellValue, op, "-1.5")->Font()->ColorIndex(color++);
  spreadsheet.Save(File());
  const std::string look = LookOf(File());
  for (const char* name :
       {"equal", "notEqual", "greaterThan", "lessThan", "greaterThanOrEqual", "lessThanOrEqual"})
    EXPECT_THAT(look, HasSubstr("operator=\"" + std::string(name) + "\"><formula>-1.5</formula>"));
  const auto loaded = Spreadsheet::Open(File());
  ASSERT_EQ(On(loaded, "A1")->Count(), 6);
  for (std::int32_t i = 1; i <= 6; ++i)
    EXPECT_EQ(On(loaded, "A1")->Item(i)->Font()->ColorIndex(), Variant(i + 2)) << i;
}

TEST_F(ConditionFiles, KeepConditionsThatWereCutIntoManyPieces) {
  auto spreadsheet = Spreadsheet::New();
  On(spreadsheet, "B2:F2000")->Add(xlCellValue, xlGreater, "0")->Font()->Bold(true);
  for (std::int32_t row = 3; row < 1000; row += 4) SheetOf(spreadsheet)->Cells(row, 4)->Clear();
  const auto loaded = Reloaded(spreadsheet);
  for (std::int32_t row = 2; row < 1000; ++row) {
    const auto cell = SheetOf(loaded)->Cells(row, 4)->Address();
    ASSERT_EQ(On(loaded, cell)->Count(), row % 4 == 3 ? 0 : 1) << cell;
  }
}

TEST_F(ConditionFiles, KeepTheWholeLookOfALoadedFile) {
  Parts parts = With(Rule("type=\"cellIs\" priority=\"1\" operator=\"between\" dxfId=\"0\" stopIfTrue=\"1\"",
                          "<formula>1</formula><formula>\"x\"</formula>"));
  InsertBehind(parts["xl/styles.xml"], "<dxfs>",
               "<dxf><font><b/><i/><strike/><u/><color rgb=\"FF123456\"/></font><numFmt numFmtId=\"2\" "
               "formatCode=\"0.00\"/><fill><patternFill patternType=\"lightGrid\"><fgColor rgb=\"FF00FF00\"/>"
               "<bgColor rgb=\"FF0000FF\"/></patternFill></fill><border><left style=\"thin\"><color "
               "rgb=\"FFABCDEF\"/></left></border></dxf>");
  auto loaded = Open(parts);
  EXPECT_THAT(AllLosses(loaded), IsEmpty());
  loaded.Save(File("once.xlsx"));
  auto again = Spreadsheet::Open(File("once.xlsx"));
  EXPECT_THAT(AllLosses(again), IsEmpty());
  again.Save(File("twice.xlsx"));
  for (const char* file : {"once.xlsx", "twice.xlsx"}) {
    SCOPED_TRACE(file);
    const std::string look = LookOf(File(file));
    for (const char* expected :
         {"operator=\"between\"", "<formula>1</formula><formula>\"x\"</formula>", "stopIfTrue=\"1\"",
          "<font><b/><i/><strike/><u/><color rgb=\"FF123456\"/></font>", "formatCode=\"0.00\"", "lightGrid",
          "FF00FF00", "FF0000FF", "FFABCDEF"})
      EXPECT_THAT(look, HasSubstr(expected));
  }
}

TEST_F(ConditionFiles, KeepAFillHoweverItIsTold) {
  for (const char* fill : {"<patternFill><bgColor rgb=\"FF112233\"/></patternFill>",
                           "<patternFill patternType=\"solid\"><bgColor rgb=\"FF112233\"/></patternFill>",
                           "<patternFill patternType=\"solid\"><fgColor rgb=\"FF112233\"/></patternFill>"}) {
    SCOPED_TRACE(fill);
    Parts parts = With(Rule("type=\"cellIs\" operator=\"equal\" dxfId=\"0\"", "<formula>1</formula>"));
    InsertBehind(parts["xl/styles.xml"], "<dxfs>", "<dxf><fill>" + std::string(fill) + "</fill></dxf>");
    auto loaded = Open(parts);
    loaded.Save(File("again.xlsx"));
    EXPECT_THAT(LookOf(File("again.xlsx")), HasSubstr("<bgColor rgb=\"FF112233\"/>"));
  }
}

TEST_F(ConditionFiles, AreTakenInTheOrderOfTheirPriorities) {
  const auto spreadsheet = Open(
      With(Rule("type=\"cellIs\" operator=\"equal\" dxfId=\"1\" priority=\"7\"", "<formula>1</formula>") +
           Rule("type=\"cellIs\" operator=\"equal\" dxfId=\"0\" priority=\"2\"", "<formula>1</formula>")));
  ASSERT_EQ(On(spreadsheet, "B2")->Count(), 2);
  EXPECT_EQ(On(spreadsheet, "B2")->Item(1)->Font()->ColorIndex(), Variant(3));
  EXPECT_EQ(On(spreadsheet, "B2")->Item(2)->Font()->Bold(), Variant(true));
}

TEST_F(ConditionFiles, ReachEveryAreaOfTheirList) {
  const auto spreadsheet =
      Open(With("<conditionalFormatting sqref=\"A1  C3:D4 F:F\"><cfRule type=\"cellIs\" operator=\"equal\">"
                "<formula>1</formula></cfRule></conditionalFormatting>"));
  for (const char* address : {"A1", "D4", "F1048576"})
    EXPECT_EQ(On(spreadsheet, address)->Count(), 1) << address;
  for (const char* address : {"B1", "E4", "A2"}) EXPECT_EQ(On(spreadsheet, address)->Count(), 0) << address;
}

TEST_F(ConditionFiles, SayWhichKindsAreLost) {
  const struct {
    const char* attributes;
    const char* formulas;
  } cases[] = {{"type=\"expression\"", "<formula>$A1&gt;0</formula>"},
               {"type=\"cellIs\" operator=\"greaterThan\"", "<formula>$A$1</formula>"},
               {"type=\"cellIs\" operator=\"between\"", "<formula>1</formula>"},
               {"type=\"cellIs\" operator=\"equal\"", "<formula>\"a\"&amp;\"b\"</formula>"},
               {"type=\"cellIs\"", "<formula>1</formula>"},
               {"type=\"colorScale\"", "<colorScale/>"},
               {"type=\"top10\" rank=\"10\"", ""}};
  for (const auto& [attributes, formulas] : cases) {
    SCOPED_TRACE(attributes);
    const auto spreadsheet = Open(With(Rule(attributes, formulas)));
    EXPECT_EQ(On(spreadsheet, "B2")->Count(), 0);
    EXPECT_THAT(
        AllLosses(spreadsheet),
        ElementsAre("Sheet \"Prices\": not kept: conditional formats other than comparisons with a value "
                    "(rules: 1)."));
  }
}

TEST_F(ConditionFiles, KeepTextsAndBooleansToCompareWith) {
  for (const char* formula : {"\"x\"", "\"say \"\"x\"\"\"", "\"\"", "TRUE", "FALSE", "1E-3"}) {
    SCOPED_TRACE(formula);
    const auto spreadsheet = Open(
        With(Rule("type=\"cellIs\" operator=\"equal\"", "<formula>" + std::string(formula) + "</formula>")));
    EXPECT_EQ(On(spreadsheet, "B2")->Count(), 1);
    EXPECT_THAT(AllLosses(spreadsheet), IsEmpty());
  }
}

TEST_F(ConditionFiles, ThatAreDamagedAreRefusedByWhatIsWrong) {
  EXPECT_THAT(Refusal(With("<conditionalFormatting sqref=\"B2:B9 XFE1\"/>")),
              HasSubstr("xl/worksheets/sheet1.xml: \"XFE1\" is no area of cells"));
  EXPECT_THAT(Refusal(With(Rule("type=\"cellIs\" operator=\"equal\" dxfId=\"2\"", "<formula>1</formula>"))),
              HasSubstr("xl/worksheets/sheet1.xml: format \"2\" of a conditional format does not exist"));
  EXPECT_THAT(Refusal(With(Rule("type=\"cellIs\" operator=\"equal\" dxfId=\"-1\"", "<formula>1</formula>"))),
              HasSubstr("format \"-1\" of a conditional format does not exist"));
}

TEST_F(ConditionFiles, CountAgainstTheLimits) {
  std::string rules;
  for (int i = 0; i < 30; ++i)
    rules += Rule("type=\"cellIs\" operator=\"equal\"", "<formula>" + std::to_string(i) + "</formula>");
  workbook::LoadLimits limits;
  limits.styles = 20;
  EXPECT_THAT(Refusal(With(rules), limits), HasSubstr("too many conditional formats"));
}

}  // namespace
}  // namespace mirelo::testing
