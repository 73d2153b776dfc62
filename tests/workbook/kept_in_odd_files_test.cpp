// Files that are odd or damaged in places that need not trouble a person's own sheets: these stay as they
// stand all the same.

#include <gmock/gmock.h>

#include <functional>

#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::IsEmpty;
using workbook::Spreadsheet;

constexpr const char* kOddTable = "Dovanta2_Quotes";
constexpr const char* kLinks = "package/2006/relationships\">";
constexpr const char* kWorkbookLinks = "xl/_rels/workbook.xml.rels";

class OddFile : public WorkbookFiles {
 protected:
  // A sheet "Prices" with merged cells, whose cell A1 has the number format of `format`.
  static Parts WithMergedCells(const char* format = "0") {
    Parts parts =
        SmallWorkbook("<row r=\"1\"><c r=\"A1\" s=\"" + std::string(format) + "\"><v>2</v></c></row>");
    InsertBehind(parts[kSheetPart], "</sheetData>", "<mergeCells><mergeCell ref=\"A1:B1\"/></mergeCells>");
    return parts;
  }

  // Saves it with a table more, and sees that the part `kept` is as it was, and nothing had to be told.
  void ExpectKept(const Parts& parts, const std::string& kept = kSheetPart) {
    auto spreadsheet = Open(parts);
    const auto table = BookOf(spreadsheet)->Worksheets()->Add();
    table->Name(kOddTable);
    table->Range("A1")->Value(28.35);
    table->Range("A1")->NumberFormat("+ 0.0000;- 0.0000");
    std::vector<std::string> told;
    spreadsheet.Save(File(), [&](const std::string& sentence) { told.push_back(sentence); });
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(Unzip(BytesOf(File()))[kept], parts.at(kept));

    const auto again = Spreadsheet::Open(File());
    EXPECT_EQ(BookOf(again)->Worksheets()->Item(kOddTable)->Range("A1")->Text(), "+ 28.3500");
  }
};

TEST_F(OddFile, MayHaveLinksThatLeadNowhere) {
  const struct {
    const char* list;
    const char* link;
  } cases[] = {
      {"_rels/.rels", "<Relationship Id=\"x\" Type=\"http://x/thumbnail\"/>"},
      {"_rels/.rels", "<Relationship Id=\"x\" Type=\"http://x/thumbnail\" Target=\"/\"/>"},
      {kWorkbookLinks, "<Relationship Id=\"x\" Type=\"http://x/person\" Target=\"..\"/>"},
      {kWorkbookLinks, "<Relationship Id=\"x\" Type=\"http://x/person\" Target=\"none.xml\"/>"},
  };
  for (const auto& [list, link] : cases) {
    SCOPED_TRACE(link);
    Parts parts = WithMergedCells();
    InsertBehind(parts[list], kLinks, link);
    ExpectKept(parts);
  }
}

TEST_F(OddFile, MayUseNumberFormatsThatItDoesNotTell) {
  Parts parts = WithMergedCells("3");
  ReplaceIn(parts["xl/styles.xml"], "numFmtId=\"2\"", "numFmtId=\"164\"");
  ExpectKept(parts);
  const auto spreadsheet = Spreadsheet::Open(File());
  EXPECT_EQ(BookOf(spreadsheet)->Worksheets()->Item("Prices")->Range("A1")->NumberFormat(),
            Variant("General"));
}

TEST_F(OddFile, MayTellANumberFormatTwice) {
  Parts parts = WithMergedCells("3");
  ReplaceIn(parts["xl/styles.xml"], "numFmtId=\"2\"", "numFmtId=\"164\"");
  InsertBehind(parts["xl/styles.xml"], "spreadsheetml/2006/main\">",
               "<numFmts><numFmt numFmtId=\"164\" formatCode=\"+ 0.0000;- 0.0000\"/>"
               "<numFmt numFmtId=\"164\" formatCode=\"0.000\"/></numFmts>");
  ExpectKept(parts);
  const auto spreadsheet = Spreadsheet::Open(File());
  EXPECT_EQ(BookOf(spreadsheet)->Worksheets()->Item("Prices")->Range("A1")->Text(), "2.000");
}

// Only the letters of ASCII are the same in both cases.
TEST_F(OddFile, MayHavePartsWhoseNamesDifferByTheCaseOfALetter) {
  const std::string upper = "xl/worksheets/\xC3\x84.xml";
  const std::string lower = "xl/worksheets/\xC3\xA4.xml";
  Parts parts = WithMergedCells();
  parts[upper] = parts[kSheetPart];
  parts[lower] = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>3</v></c></row>")[kSheetPart];
  parts.erase(kSheetPart);
  ReplaceIn(parts[kWorkbookLinks], "worksheets/sheet1.xml", "worksheets/\xC3\x84.xml");
  InsertBehind(parts[kWorkbookLinks], kLinks,
               "<Relationship Id=\"y\" Type=\"http://x/worksheet\" Target=\"worksheets/\xC3\xA4.xml\"/>");
  InsertBehind(parts["xl/workbook.xml"], "r:id=\"rId1\"/>",
               "<sheet name=\"Other\" sheetId=\"2\" r:id=\"y\"/>");
  ExpectKept(parts, upper);
  ExpectKept(parts, lower);
}

}  // namespace
}  // namespace mirelo::testing
