#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

class LoadValues : public WorkbookFiles {
 protected:
  // The sheet of a workbook whose only row holds these cells.
  SheetPtr Row(const std::string& cells) {
    return SheetOf(Open(SmallWorkbook("<row r=\"1\">" + cells + "</row>")));
  }
  Variant Cell(const std::string& cell) { return Row(cell)->Range("A1")->Value(); }
};

TEST_F(LoadValues, ReadsEveryKindOfCell) {
  const struct {
    const char* cell;
    Variant value;
    const char* type;
  } cases[] = {
      {R"(<c r="A1"><v>12.5</v></c>)", 12.5, "Double"},
      {R"(<c r="A1" t="n"><v>-1E-3</v></c>)", -0.001, "Double"},
      {R"(<c r="A1" s="1"><v>40563</v></c>)", Date{40563}, "Date"},
      {R"(<c r="A1" t="s"><v>0</v></c>)", "MSFT", "String"},
      {R"(<c r="A1" t="s"><v>1</v></c>)", " two words ", "String"},
      {R"(<c r="A1" t="str"><v>computed</v></c>)", "computed", "String"},
      {R"(<c r="A1" t="inlineStr"><is><t>inline</t></is></c>)", "inline", "String"},
      {R"(<c r="A1" t="inlineStr"><is><t> </t></is></c>)", " ", "String"},
      {R"(<c r="A1" t="inlineStr"><is><r><t>two </t></r><r><t>runs</t></r></is></c>)", "two runs", "String"},
      {R"(<c r="A1" t="inlineStr"><is><t><![CDATA[a<b]]> &amp; c</t></is></c>)", "a<b & c", "String"},
      {R"(<c r="A1" t="inlineStr"><is><t>x</t><rPh sb="0" eb="1"><t>reading</t></rPh></is></c>)", "x",
       "String"},
      {R"(<c r="A1" t="inlineStr"><is><t>line_x000D_end</t></is></c>)", "line\rend", "String"},
      {R"(<c r="A1" t="b"><v>1</v></c>)", true, "Boolean"},
      {R"(<c r="A1" t="b"><v>0</v></c>)", false, "Boolean"},
      {R"(<c r="A1" t="e"><v>#DIV/0!</v></c>)", "#DIV/0!", "String"},
      {R"(<c r="A1" t="d"><v>2011-01-20</v></c>)", 40563.0, "Double"},
      {R"(<c r="A1" s="1" t="d"><v>2011-01-20T06:00:00Z</v></c>)", Date{40563.25}, "Date"},
      {R"(<c r="A1" t="d"><v>06:00:00.000</v></c>)", 0.25, "Double"},
      {R"(<c r="A1"><f>1+1</f><v>2</v></c>)", 2.0, "Double"},
      {R"(<c r="A1" t="str"><f>A2</f><v>text of a formula</v></c>)", "text of a formula", "String"},
  };
  for (const auto& [cell, value, type] : cases) {
    SCOPED_TRACE(cell);
    const Variant read = Cell(cell);
    EXPECT_EQ(read.TypeName(), type);
    EXPECT_EQ(read, value);
  }
}

TEST_F(LoadValues, TakesCellsWithoutContentForEmpty) {
  for (const char* cell : {R"(<c r="A1"/>)", R"(<c r="A1" s="2"/>)", R"(<c r="A1"><v/></c>)",
                           R"(<c r="A1" t="s"><v></v></c>)", R"(<c r="A1" t="str"><v></v></c>)",
                           R"(<c r="A1" t="inlineStr"><is><t/></is></c>)", R"(<c r="A1"><f>A2</f></c>)"}) {
    SCOPED_TRACE(cell);
    EXPECT_TRUE(Cell(cell).IsEmpty());
  }
}

TEST_F(LoadValues, CountsCellsAndRowsThatHaveNoAddress) {
  const auto sheet =
      SheetOf(Open(SmallWorkbook("<row><c><v>1</v></c><c r=\"D1\"><v>4</v></c><c><v>5</v></c></row>"
                                 "<row r=\"7\"><c><v>7</v></c></row><row><c><v>8</v></c></row>")));
  EXPECT_EQ(sheet->Range("A1")->Value(), Variant(1.0));
  EXPECT_EQ(sheet->Range("D1")->Value(), Variant(4.0));
  EXPECT_EQ(sheet->Range("E1")->Value(), Variant(5.0));
  EXPECT_EQ(sheet->Range("A7")->Value(), Variant(7.0));
  EXPECT_EQ(sheet->Range("A8")->Value(), Variant(8.0));
}

TEST_F(LoadValues, ReadsNamesWithAPrefix) {
  Parts parts = SmallWorkbook();
  parts[kSheetPart] =
      "<x:worksheet xmlns:x=\"m\"><x:sheetData><x:row r=\"1\"><x:c r=\"A1\"><x:v>3</x:v></x:c></x:row>"
      "</x:sheetData></x:worksheet>";
  EXPECT_EQ(SheetOf(Open(parts))->Range("A1")->Value(), Variant(3.0));
}

TEST_F(LoadValues, ReadsTextInUtf16) {
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>3</v></c></row>");
  std::string wide = "\xFF\xFE";
  const std::string narrow = parts[kSheetPart].substr(parts[kSheetPart].find("<worksheet"));
  for (const char c : narrow) wide += std::string{c, '\0'};
  parts[kSheetPart] = wide;
  EXPECT_EQ(SheetOf(Open(parts))->Range("A1")->Value(), Variant(3.0));
}

TEST_F(LoadValues, CountsDaysFrom1904WhereTheFileDoes) {
  Parts parts =
      SmallWorkbook("<row r=\"1\"><c r=\"A1\" s=\"1\"><v>39101</v></c><c r=\"B1\"><v>39101</v></c></row>");
  ReplaceIn(parts["xl/workbook.xml"], "<workbookPr/>", "<workbookPr date1904=\"1\"/>");
  const auto sheet = SheetOf(Open(parts));
  EXPECT_EQ(sheet->Range("A1")->Text(), "1/20/2011");
  EXPECT_EQ(sheet->Range("B1")->Value(), Variant(39101.0)) << "a plain number stays";
}

TEST_F(LoadValues, FindsPartsWhereTheWorkbookSaysTheyAre) {
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c></row>");
  parts["data/first.xml"] = parts.extract(kSheetPart).mapped();
  parts["texts.xml"] = parts.extract("xl/sharedStrings.xml").mapped();
  ReplaceIn(parts["xl/_rels/workbook.xml.rels"], "worksheets/sheet1.xml", "/data/./first.xml");
  ReplaceIn(parts["xl/_rels/workbook.xml.rels"], "sharedStrings.xml", "../texts.xml");
  EXPECT_EQ(SheetOf(Open(parts))->Range("A1")->Value(), Variant("MSFT"));
}

TEST_F(LoadValues, DoesWithoutStylesTextsAndTheme) {
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>3</v></c></row>");
  for (const char* part : {"xl/styles.xml", "xl/sharedStrings.xml", "xl/theme/theme1.xml"}) parts.erase(part);
  std::string& relationships = parts["xl/_rels/workbook.xml.rels"];
  const std::size_t second = relationships.find("<Relationship Id=\"rId2\"");
  relationships.erase(second, relationships.find("</Relationships>") - second);
  EXPECT_EQ(SheetOf(Open(parts))->Range("A1")->Value(), Variant(3.0));
}

TEST_F(LoadValues, KeepsTheOrderOfSheetsAndTheActiveOne) {
  Parts parts = SmallWorkbook();
  ReplaceIn(parts["xl/workbook.xml"], "<workbookView/>", "<workbookView activeTab=\"2\"/>");
  InsertBehind(parts["xl/workbook.xml"], "<sheets>",
               "<sheet name=\"First\" sheetId=\"2\" r:id=\"rId1\"/><sheet name=\"Second\" sheetId=\"3\" "
               "r:id=\"rId1\"/>");
  const auto spreadsheet = Open(parts);
  const auto sheets = BookOf(spreadsheet)->Worksheets();
  EXPECT_EQ(sheets->Count(), 3);
  EXPECT_EQ(sheets->Item(1)->Name(), "First");
  EXPECT_EQ(sheets->Item(2)->Name(), "Second");
  EXPECT_EQ(SheetOf(spreadsheet)->Name(), "Prices");
}

TEST_F(LoadValues, ActivatesASheetThatCanBeSeen) {
  Parts parts = SmallWorkbook();
  ReplaceIn(parts["xl/workbook.xml"], "sheetId=\"1\"", "sheetId=\"1\" state=\"hidden\"");
  InsertBehind(parts["xl/workbook.xml"], "r:id=\"rId1\"/>",
               "<sheet name=\"Seen\" sheetId=\"2\" r:id=\"rId1\"/>");
  EXPECT_EQ(SheetOf(Open(parts))->Name(), "Seen");
}

}  // namespace
}  // namespace mirelo::testing
