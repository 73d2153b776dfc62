#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using workbook::LoadLimits;

class Limits : public WorkbookFiles {
 protected:
  void ExpectRefusal(const Parts& parts, const LoadLimits& limits, std::string_view what) {
    const std::string refusal = Refusal(parts, limits);
    EXPECT_NE(refusal.find(what), std::string::npos) << refusal;
    EXPECT_EQ(Refusal(parts), "") << "the usual limits let it pass";
  }

  static std::string Rows(int count) {
    std::string rows;
    for (int i = 0; i < count; ++i) rows += "<row><c><v>1</v></c></row>";
    return rows;
  }
};

TEST_F(Limits, HoldForTheFile) {
  LoadLimits limits;
  limits.file_bytes = 100;
  ExpectRefusal(SmallWorkbook(), limits, "larger than is safe");
}

TEST_F(Limits, HoldForAPartAndForAllParts) {
  LoadLimits part;
  part.part_bytes = 2000;
  ExpectRefusal(SmallWorkbook(Rows(100)), part, "xl/worksheets/sheet1.xml: it unpacks to more than is safe");
  LoadLimits total;
  total.total_bytes = 5000;
  ExpectRefusal(SmallWorkbook(Rows(100)), total, "it unpacks to more than is safe");
}

TEST_F(Limits, HoldForTheRatioOfUnpacking) {
  Parts bomb = SmallWorkbook(std::string(32 << 20, ' '));
  const std::string refusal = Refusal(bomb);
  EXPECT_NE(refusal.find("xl/worksheets/sheet1.xml: it unpacks to more than is safe"), std::string::npos)
      << refusal;
}

TEST_F(Limits, HoldForTheNumberOfParts) {
  Parts parts = SmallWorkbook();
  for (int i = 0; i < 50; ++i) parts["more/" + std::to_string(i)] = "x";
  LoadLimits limits;
  limits.parts = 20;
  ExpectRefusal(parts, limits, "too many parts");
}

TEST_F(Limits, HoldForCellsSheetsStylesAndTexts) {
  LoadLimits cells;
  cells.cells = 99;
  ExpectRefusal(SmallWorkbook(Rows(100)), cells, "too many cells");

  Parts two_sheets = SmallWorkbook();
  InsertBehind(two_sheets["xl/workbook.xml"], "<sheets>",
               "<sheet name=\"Other\" sheetId=\"2\" r:id=\"rId1\"/>");
  LoadLimits sheets;
  sheets.sheets = 1;
  ExpectRefusal(two_sheets, sheets, "too many sheets");

  LoadLimits styles;
  styles.styles = 3;
  ExpectRefusal(SmallWorkbook(), styles, "too many formats");

  LoadLimits texts;
  texts.text_bytes = 7;
  ExpectRefusal(SmallWorkbook("<row><c t=\"s\"><v>0</v></c><c t=\"s\"><v>0</v></c></row>"), texts,
                "too much text");
}

TEST_F(Limits, HoldForCellsThatAreFormattedButEmpty) {
  std::string cells;
  for (int i = 0; i < 100; ++i) cells += "<c s=\"2\"/>";
  LoadLimits limits;
  limits.blank_cells = 99;
  ExpectRefusal(SmallWorkbook("<row>" + cells + "<c><v>1</v></c></row>"), limits, "too many formatted cells");
}

TEST_F(Limits, HoldForTheElementsAndAttributesOfAPart) {
  LoadLimits limits;
  limits.nodes = 300;
  ExpectRefusal(SmallWorkbook(Rows(100)), limits, "xl/worksheets/sheet1.xml: too many elements");
  std::string attributes;
  for (int i = 0; i < 300; ++i) attributes += " a" + std::to_string(i) + "=\"\"";
  ExpectRefusal(SmallWorkbook("<row" + attributes + "/>"), limits,
                "xl/worksheets/sheet1.xml: too many elements");
}

TEST_F(Limits, HoldForFormatsOfRowsTimesColumns) {
  std::string rows;
  for (int i = 0; i < 100; ++i) rows += "<row s=\"" + std::to_string(i % 2) + "\" customFormat=\"1\"/>";
  rows += "<row>";
  for (int i = 0; i < 100; ++i) rows += "<c s=\"2\"/>";
  LoadLimits limits;
  limits.cells = 5000;  // the runs would be some 100 times 100
  ExpectRefusal(SmallWorkbook(rows + "</row>"), limits, "too many formats");
}

TEST_F(Limits, HoldForNestedElements) {
  const auto nested = [](int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<x>";
    for (int i = 0; i < depth; ++i) text += "</x>";
    return SmallWorkbook("<row><c>" + text + "</c></row>");
  };
  EXPECT_EQ(Refusal(nested(40)), "");
  EXPECT_NE(Refusal(nested(100)).find("nest too deep"), std::string::npos);
  EXPECT_NE(Refusal(nested(100'000)).find("nest too deep"), std::string::npos);
}

TEST_F(Limits, HoldForTheLengthOfAText) {
  const std::string longest(32'767, 'x');
  const auto cell = [](const std::string& text) {
    return SmallWorkbook("<row><c t=\"inlineStr\"><is><t>" + text + "</t></is></c></row>");
  };
  EXPECT_EQ(Refusal(cell(longest)), "");
  EXPECT_NE(Refusal(cell(longest + "x")).find("cell A1: its text is longer"), std::string::npos);
}

TEST_F(Limits, DoNotExpandEntities) {
  Parts parts = SmallWorkbook("<row><c t=\"inlineStr\"><is><t>&lol;</t></is></c></row>");
  parts[kSheetPart].insert(parts[kSheetPart].find("<worksheet"),
                           "<!DOCTYPE x [<!ENTITY lol \"lollollol\">]>");
  EXPECT_EQ(SheetOf(Open(parts))->Range("A1")->Value(), Variant("&lol;"));
}

}  // namespace
}  // namespace mirelo::testing
