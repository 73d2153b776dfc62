// What of the parts of a file stays when sheets stay that nobody changes, and in which files none can.

#include <gmock/gmock.h>

#include <functional>
#include <string>

#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "workbook/kept_sheets.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using workbook::Spreadsheet;

// A workbook whose sheet "Prices" cannot be kept as a table of cells.
Parts WithMergedCells() {
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\" s=\"2\" t=\"s\"><v>0</v></c></row>");
  InsertBehind(parts[kSheetPart], "</sheetData>", "<mergeCells><mergeCell ref=\"A1:B1\"/></mergeCells>");
  return parts;
}

TEST_F(KeptSheets, GoOnUsingTheFilesTextsAndFormats) {
  auto spreadsheet = Open(WithMergedCells());
  AddTable(spreadsheet);
  spreadsheet.Save(File());
  const auto again = Spreadsheet::Open(File());
  ExpectTable(*SheetNamed(again, kTable));
  const auto kept = SheetNamed(again, "Prices");
  EXPECT_EQ(kept->Range("A1")->Value(), Variant("MSFT"));
  EXPECT_EQ(kept->Range("A1")->Font()->Bold(), Variant(true));
  EXPECT_EQ(kept->Range("A1")->Interior()->ColorIndex(), Variant(6));
  Parts before = WithMergedCells();
  EXPECT_EQ(PartsOf(File())[kSheetPart], before[kSheetPart]);
  EXPECT_EQ(PartsOf(File())["xl/sharedStrings.xml"], before["xl/sharedStrings.xml"]);
}

TEST_F(KeptSheets, MayGiveABuiltInFormatAnotherMeaning) {
  Parts parts = WithMergedCells();
  InsertBehind(parts["xl/styles.xml"], "spreadsheetml/2006/main\">",
               "<numFmts><numFmt numFmtId=\"10\" formatCode=\"0.000\"/></numFmts>");
  auto spreadsheet = Open(parts);
  const auto table = AddTable(spreadsheet);
  table->Range("D3")->NumberFormat("0.00%");
  table->Range("D3")->Value(0.5);
  spreadsheet.Save(File());
  EXPECT_EQ(SheetNamed(Spreadsheet::Open(File()), kTable)->Range("D3")->Text(), "50.00%");
}

TEST_F(KeptSheets, TakeTheirFormatsAloneWhenTheyAreChanged) {
  Parts parts = WithMergedCells();
  // The second fill, that of the cell A1, becomes a gradient.
  ReplaceIn(parts["xl/styles.xml"], "<fill><patternFill patternType=\"solid\">",
            "<fill><gradientFill/><patternFill patternType=\"solid\">");
  InsertBehind(parts["xl/workbook.xml"], "r:id=\"rId1\"/>",
               "<sheet name=\"Plain\" sheetId=\"2\" r:id=\"rId9\"/>");
  InsertBehind(parts["xl/_rels/workbook.xml.rels"], "package/2006/relationships\">",
               "<Relationship Id=\"rId9\" Type=\"http://x/worksheet\" Target=\"worksheets/sheet2.xml\"/>");
  parts["xl/worksheets/sheet2.xml"] = SmallWorkbook()[kSheetPart];
  const auto spreadsheet = Open(parts);
  SheetNamed(spreadsheet, "Plain")->Range("A1")->Value(1.0);
  EXPECT_THAT(spreadsheet.Losses(), IsEmpty()) << "the gradient is that of a cell of the other sheet";
  SheetNamed(spreadsheet, "Prices")->Range("C9")->Value(1.0);
  EXPECT_THAT(spreadsheet.Losses(), Contains("Fills with a gradient are not kept."));
}

TEST_F(KeptSheets, AreNotWhatFilesHaveThatCannotBeTakenApart) {
  const struct {
    const char* what;
    std::function<void(Parts&)> change;
  } cases[] = {
      {"macros, which know sheets by names of their own",
       [](Parts& parts) {
         InsertBehind(parts["xl/_rels/workbook.xml.rels"], "package/2006/relationships\">",
                      "<Relationship Id=\"v\" Type=\"http://x/vbaProject\" Target=\"vbaProject.bin\"/>");
       }},
      {"slicers",
       [](Parts& parts) {
         InsertBehind(parts["xl/_rels/workbook.xml.rels"], "package/2006/relationships\">",
                      "<Relationship Id=\"v\" Type=\"http://x/slicerCache\" Target=\"slicerCache.xml\"/>");
       }},
      {"days that are counted from 1904",
       [](Parts& parts) {
         ReplaceIn(parts["xl/workbook.xml"], "<workbookPr/>", "<workbookPr date1904=\"1\"/>");
       }},
      {"several windows",
       [](Parts& parts) {
         ReplaceIn(parts["xl/workbook.xml"], "<workbookView/>", "<workbookView/><workbookView/>");
       }},
      {"another vocabulary",
       [](Parts& parts) {
         ReplaceIn(parts["xl/workbook.xml"], "http://schemas.openxmlformats.org/spreadsheetml/2006/main",
                   "http://purl.oclc.org/ooxml/spreadsheetml/main");
       }},
      {"a name that no sheet may have",
       [](Parts& parts) { ReplaceIn(parts["xl/workbook.xml"], "name=\"Prices\"", "name=\"a/b\""); }},
  };
  for (const auto& [what, change] : cases) {
    SCOPED_TRACE(what);
    Parts parts = WithMergedCells();
    change(parts);
    auto spreadsheet = Open(parts);
    EXPECT_THAT(spreadsheet.Losses(), Contains(HasSubstr("not kept: merged cells."))) << "from the start";
    AddTable(spreadsheet);
    spreadsheet.Save(File());
    EXPECT_THAT(LookOf(File()), Not(HasSubstr("mergeCell")));
    ExpectTable(*SheetNamed(Spreadsheet::Open(File()), kTable));
  }
}

TEST_F(KeptSheets, LoseTheFilesSignatureWhichHoldsNoLonger) {
  Parts parts = WithMergedCells();
  InsertBehind(parts["_rels/.rels"], "package/2006/relationships\">",
               "<Relationship Id=\"s\" Type=\"http://x/digital-signature/origin\" "
               "Target=\"_xmlsignatures/origin.sigs\"/>");
  parts["_xmlsignatures/origin.sigs"] = "x";
  auto spreadsheet = Open(parts);
  EXPECT_THAT(spreadsheet.Losses(), ElementsAre("Workbook: not kept: the digital signature."));
  spreadsheet.Save(File());
  EXPECT_FALSE(PartsOf(File()).contains("_xmlsignatures/origin.sigs"));
  EXPECT_TRUE(LookOf(File()).find("mergeCell") != std::string::npos);
}

TEST_F(KeptSheets, TakeNoPartOfAFileThatHoldsOnlyTables) {
  auto spreadsheet = Open(SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>"));
  spreadsheet.Save(File());
  Parts parts = PartsOf(File());
  EXPECT_THAT(parts["xl/workbook.xml"], HasSubstr("calcPr calcId=\"124519\"")) << "written anew as a whole";
}

}  // namespace
}  // namespace mirelo::testing
