#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

class LoadFormats : public WorkbookFiles {
 protected:
  static constexpr const char* kStyles = "xl/styles.xml";

  // A1 of a workbook with one more cell format, number 4, of these attributes.
  std::shared_ptr<host::excel::Range> CellOfFormat(Parts parts, const std::string& xf) {
    InsertBehind(parts[kStyles], "<xf numFmtId=\"2\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>",
                 "<xf " + xf + "/>");
    return SheetOf(Open(parts))->Range("A1");
  }
  static Parts OneCell() {
    return SmallWorkbook("<row r=\"1\"><c r=\"A1\" s=\"4\"><v>40563.5</v></c></row>");
  }

  Variant FillOf(const std::string& color_attributes) {
    Parts parts = OneCell();
    InsertBehind(
        parts[kStyles], "<fills>",
        "<fill><patternFill patternType=\"solid\"><fgColor " + color_attributes + "/></patternFill></fill>");
    return CellOfFormat(parts, "fillId=\"0\"")->Interior()->ColorIndex();
  }
};

TEST_F(LoadFormats, GivesCellsTheirFormats) {
  const auto sheet = SheetOf(
      Open(SmallWorkbook("<row r=\"1\"><c r=\"A1\" s=\"2\"/><c r=\"B1\" s=\"3\"><v>1</v></c></row>")));
  EXPECT_EQ(sheet->Range("A1")->Font()->Bold(), Variant(true));
  EXPECT_EQ(sheet->Range("A1")->Interior()->ColorIndex(), Variant(6));
  EXPECT_EQ(sheet->Range("B1")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(sheet->Range("C1")->Font()->Bold(), Variant(false));
}

TEST_F(LoadFormats, LaysRowsOverColumnsAndCellsOverBoth) {
  Parts parts = SmallWorkbook(
      "<row r=\"2\" s=\"3\" customFormat=\"1\"><c r=\"B2\" s=\"2\"/><c r=\"C2\"/></row>"
      "<row r=\"3\" s=\"3\"/>");
  InsertBehind(parts[kSheetPart],
               "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
               "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">",
               "<cols><col min=\"2\" max=\"3\" width=\"20\" style=\"1\"/></cols>");
  const auto sheet = SheetOf(Open(parts));
  EXPECT_EQ(sheet->Range("B1")->NumberFormat(), Variant("m/d/yyyy")) << "column";
  EXPECT_EQ(sheet->Range("C1048576")->NumberFormat(), Variant("m/d/yyyy"));
  EXPECT_EQ(sheet->Range("A1")->NumberFormat(), Variant("General"));
  EXPECT_EQ(sheet->Range("A2")->NumberFormat(), Variant("0.00")) << "row";
  EXPECT_EQ(sheet->Range("XFD2")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(sheet->Range("B2")->NumberFormat(), Variant("General")) << "cell";
  EXPECT_EQ(sheet->Range("B2")->Font()->Bold(), Variant(true));
  EXPECT_EQ(sheet->Range("C2")->NumberFormat(), Variant("General"))
      << "a cell without format has the plain one";
  EXPECT_EQ(sheet->Range("B3")->NumberFormat(), Variant("m/d/yyyy"))
      << "a row's format counts only when it says so";
}

TEST_F(LoadFormats, TellsDatesByTheNumberFormat) {
  const struct {
    const char* code;
    const char* type;
  } cases[] = {
      {"yyyy-mm-dd", "Date"},
      {"[h]:mm:ss", "Date"},
      {"dd.mm.yy;@", "Date"},
      {"[$-409]h:mm AM/PM", "Date"},
      {"mmm", "Date"},
      {"0.00", "Double"},
      {"&quot;day&quot; 0", "Double"},
      {"0;yyyy", "Double"},
      {"[Red]0", "Double"},
      {"\\d0", "Double"},
      {"#,##0 _d", "Double"},
      {"0.00E+00", "Double"},
      {"General", "Double"},
      {"@", "Double"},
  };
  for (const auto& [code, type] : cases) {
    SCOPED_TRACE(code);
    Parts parts = OneCell();
    InsertBehind(parts[kStyles],
                 "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">",
                 std::string("<numFmts><numFmt numFmtId=\"170\" formatCode=\"") + code + "\"/></numFmts>");
    EXPECT_EQ(CellOfFormat(parts, "numFmtId=\"170\"")->Value().TypeName(), type);
  }
}

TEST_F(LoadFormats, KnowsTheNumbersOfStandardFormats) {
  const struct {
    const char* number;
    const char* code;
  } cases[] = {{"0", "General"},   {"2", "0.00"},     {"3", "#,##0"},          {"9", "0%"},
               {"14", "m/d/yyyy"}, {"21", "h:mm:ss"}, {"22", "m/d/yyyy h:mm"}, {"13", "# ?\?/?\?"},
               {"49", "@"}};
  for (const auto& [number, code] : cases) {
    SCOPED_TRACE(number);
    EXPECT_EQ(CellOfFormat(OneCell(), std::string("numFmtId=\"") + number + "\"")->NumberFormat(),
              Variant(code));
  }
}

TEST_F(LoadFormats, ReadsColoursInEveryWay) {
  EXPECT_EQ(FillOf("rgb=\"FFFF0000\""), Variant(3));
  EXPECT_EQ(FillOf("rgb=\"00FF00\""), Variant(4));
  EXPECT_EQ(FillOf("indexed=\"2\""), Variant(3));
  EXPECT_EQ(FillOf("indexed=\"10\""), Variant(3));
  EXPECT_EQ(FillOf("indexed=\"22\""), Variant(15));
  EXPECT_EQ(FillOf("theme=\"0\""), Variant(2)) << "the light background comes first";
  EXPECT_EQ(FillOf("theme=\"4\" tint=\"0.8\""), Variant(34)) << "DCE6F2, nearest to CCFFFF";
  EXPECT_EQ(FillOf("theme=\"0\" tint=\"-0.25\""), Variant(15)) << "BFBFBF, nearest to C0C0C0";
  EXPECT_EQ(FillOf("rgb=\"FFFE0101\""), Variant(3)) << "the nearest colour of the palette";
  EXPECT_EQ(FillOf("indexed=\"64\""), Variant(-4105));
}

TEST_F(LoadFormats, ReadsAPaletteOfTheFilesOwn) {
  Parts parts = OneCell();
  std::string palette = "<colors><indexedColors>";
  for (int i = 0; i < 10; ++i) palette += "<rgbColor rgb=\"FF0000FF\"/>";
  InsertBehind(parts[kStyles], "</cellXfs>", palette + "</indexedColors></colors>");
  InsertBehind(parts[kStyles], "<fills>",
               "<fill><patternFill patternType=\"solid\"><fgColor indexed=\"9\"/></patternFill></fill>");
  EXPECT_EQ(CellOfFormat(parts, "fillId=\"0\"")->Interior()->ColorIndex(), Variant(5));
}

TEST_F(LoadFormats, ReadsFontAndAlignment) {
  Parts parts = OneCell();
  InsertBehind(parts[kStyles], "<fonts>", "<font><b val=\"0\"/><color rgb=\"FFFF0000\"/></font>");
  InsertBehind(parts[kStyles], "<xf numFmtId=\"2\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>",
               "<xf fontId=\"0\"><alignment horizontal=\"center\" vertical=\"top\" wrapText=\"1\"/></xf>");
  const auto cell = SheetOf(Open(parts))->Range("A1");
  EXPECT_EQ(cell->Font()->Bold(), Variant(false));
  EXPECT_EQ(cell->Font()->ColorIndex(), Variant(3));
  EXPECT_EQ(cell->HorizontalAlignment(), Variant(-4108));
}

TEST_F(LoadFormats, TakesTheFirstFormatForThatOfEmptyCells) {
  Parts parts = SmallWorkbook();
  ReplaceIn(parts[kStyles], "<xf numFmtId=\"0\" fontId=\"0\"", "<xf numFmtId=\"0\" fontId=\"1\"");
  EXPECT_EQ(SheetOf(Open(parts))->Range("Z99")->Font()->Bold(), Variant(true));
}

}  // namespace
}  // namespace mirelo::testing
