#include <cstdint>

#include "host/excel/application.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/shape.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using workbook::Spreadsheet;

class RoundTrip : public WorkbookFiles {};

TEST_F(RoundTrip, KeepsValuesOfEveryKind) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  const struct {
    const char* address;
    Variant value;
  } cells[] = {
      {"A1", 28.35},
      {"A2", -1e-7},
      {"A3", 123456789012345.0},
      {"A4", 1e300},
      {"A5", 0.0},
      {"B1", "MSFT"},
      {"B2", " blanks "},
      {"B3", "<&>\"'"},
      {"B4", "line\nline\r\n\tend"},
      {"B5", "control \x01\x1F"},
      {"B6", "_x0041_ is no escape"},
      {"B7", "_x0041\x01"},
      {"B8", "\xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x93\x88"},
      {"B9", "=SUM(A1:A5)"},
      {"B10", "http://127.0.0.1:16239/"},
      {"B11", std::string(32'767, 'x')},
      {"C1", true},
      {"C2", false},
      {"D1", "#N/A"},
      {"D2", "#DIV/0!"},
      {"D3", "#VALUE!"},
      {"D4", "#REF!"},
      {"D5", "#NAME?"},
      {"D6", "#NUM!"},
      {"D7", "#NULL!"},
      {"E1", Date{40563}},
      {"E2", Date{40563.25}},
      {"E3", Date{60}},
      {"XFD1048576", "corner"},
  };
  for (const auto& [address, value] : cells) sheet->Range(address)->Value(value);

  const auto loaded = SheetOf(Reloaded(spreadsheet));
  for (const auto& [address, value] : cells) {
    SCOPED_TRACE(address);
    const Variant read = loaded->Range(address)->Value();
    EXPECT_EQ(read.TypeName(), value.TypeName());
    EXPECT_EQ(read, value);
  }
}

TEST_F(RoundTrip, KeepsWhatWasTypedAsTextApartFromErrorsAndNumbers) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  sheet->Range("A1:A3")->NumberFormat("@");
  sheet->Range("A1")->Value("#N/A");
  sheet->Range("A2")->Value("12");
  sheet->Range("A3")->Value("TRUE");
  const auto loaded = SheetOf(Reloaded(spreadsheet));
  loaded->Range("A1:A3")->NumberFormat("General");
  EXPECT_EQ(loaded->Range("A1")->Value(), Variant("#N/A"));
  EXPECT_EQ(loaded->Range("A2")->Value().TypeName(), "String");
  EXPECT_EQ(loaded->Range("A3")->Value().TypeName(), "String");
}

TEST_F(RoundTrip, KeepsSixteenDigitsOfANumber) {
  auto spreadsheet = Spreadsheet::New();
  SheetOf(spreadsheet)->Range("A1")->Value(0.1 + 0.2);
  EXPECT_DOUBLE_EQ(SheetOf(Reloaded(spreadsheet))->Range("A1")->Value().ToDouble(), 0.1 + 0.2);
  for (const double price : {28.35, 155.69, 0.0001, 99999.99, 1234.5678}) {
    SheetOf(spreadsheet)->Range("A1")->Value(price);
    EXPECT_EQ(SheetOf(Reloaded(spreadsheet))->Range("A1")->Value().ToDouble(), price)
        << "prices come back exactly";
  }
}

TEST_F(RoundTrip, KeepsFormats) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  sheet->Range("A1")->Value("x");
  for (const char* address : {"A1", "B2:C3"}) {
    const auto range = sheet->Range(address);
    range->NumberFormat("+ 0.00;- 0.00");
    range->HorizontalAlignment(host::excel::xlHAlignCenter);
    range->Font()->Bold(true);
    range->Font()->ColorIndex(1);
    range->Interior()->ColorIndex(36);
  }
  const auto loaded = SheetOf(Reloaded(spreadsheet));
  for (const char* address : {"A1", "B2:C3"}) {
    SCOPED_TRACE(address);
    const auto range = loaded->Range(address);
    EXPECT_EQ(range->NumberFormat(), Variant("+ 0.00;- 0.00"));
    EXPECT_EQ(range->HorizontalAlignment(), Variant(-4108));
    EXPECT_EQ(range->Font()->Bold(), Variant(true));
    EXPECT_EQ(range->Font()->ColorIndex(), Variant(1));
    EXPECT_EQ(range->Interior()->ColorIndex(), Variant(36));
  }
  EXPECT_EQ(loaded->Range("D4")->Font()->Bold(), Variant(false));
  EXPECT_EQ(loaded->Range("D4")->Interior()->ColorIndex(), Variant(-4142));
}

TEST_F(RoundTrip, KeepsTheColorOfASolidGroundApartFromThatOfItsPattern) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  for (std::int32_t row = 1; row <= 2; ++row) {
    sheet->Cells(row, 1)->Interior()->ColorIndex(15);
    sheet->Cells(row, 1)->Font()->Size(8);
  }
  sheet->Range("A2")->Interior()->PatternColorIndex(3);
  sheet->Range("A3")->Interior()->Pattern(host::excel::xlPatternSolid);
  sheet->Range("A3")->Interior()->PatternColorIndex(3);
  const auto loaded = SheetOf(Reloaded(spreadsheet));
  for (std::int32_t row = 1; row <= 2; ++row) {
    SCOPED_TRACE(row);
    EXPECT_EQ(loaded->Cells(row, 1)->Interior()->ColorIndex(), Variant(15));
    EXPECT_EQ(loaded->Cells(row, 1)->Interior()->Pattern(), Variant(1));
    EXPECT_EQ(loaded->Cells(row, 1)->Font()->Size(), Variant(8.0));
  }
  EXPECT_EQ(loaded->Range("A1")->Interior()->PatternColorIndex(), Variant(-4105));
  EXPECT_EQ(loaded->Range("A2")->Interior()->PatternColorIndex(), Variant(3));
  EXPECT_EQ(loaded->Range("A3")->Interior()->ColorIndex(), Variant(-4105)) << "the automatic colour";
}

TEST_F(RoundTrip, KeepsEveryAlignmentAndStandardFormat) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  const std::int32_t alignments[] = {1, 5, 7, -4108, -4117, -4130, -4131, -4152};
  const char* formats[] = {"0", "0.00",       "#,##0",    "m/d/yyyy", "h:mm:ss",
                           "@", "mm/dd/yyyy", "hh:mm:ss", "\"<&>\" 0"};
  std::int32_t row = 1;
  for (const std::int32_t alignment : alignments) sheet->Cells(row++, 1)->HorizontalAlignment(alignment);
  for (const char* format : formats) sheet->Cells(row++, 1)->NumberFormat(format);

  const auto loaded = SheetOf(Reloaded(spreadsheet));
  row = 1;
  for (const std::int32_t alignment : alignments) {
    EXPECT_EQ(loaded->Cells(row++, 1)->HorizontalAlignment(), Variant(alignment)) << alignment;
  }
  for (const char* format : formats)
    EXPECT_EQ(loaded->Cells(row++, 1)->NumberFormat(), Variant(format)) << format;
}

TEST_F(RoundTrip, KeepsFormatsOfWholeColumnsAndRows) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  sheet->Range("B:D")->NumberFormat("0.00");
  sheet->Range("5:5")->Font()->Bold(true);
  sheet->Range("C7")->Clear();
  sheet->Range("C8")->Value("plain");
  sheet->Range("C8")->NumberFormat("General");
  const auto loaded = SheetOf(Reloaded(spreadsheet));
  EXPECT_EQ(loaded->Range("B1")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(loaded->Range("D1048576")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(loaded->Range("E1")->NumberFormat(), Variant("General"));
  EXPECT_EQ(loaded->Range("A5")->Font()->Bold(), Variant(true));
  EXPECT_EQ(loaded->Range("XFD5")->Font()->Bold(), Variant(true));
  EXPECT_EQ(loaded->Range("C5")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(loaded->Range("C7")->NumberFormat(), Variant("General"));
  EXPECT_EQ(loaded->Range("C8")->NumberFormat(), Variant("General"));
}

TEST_F(RoundTrip, KeepsSheetsTheirOrderAndTheActiveOne) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheets = BookOf(spreadsheet)->Worksheets();
  sheets->Add()->Name("it's");
  sheets->Add()->Name("<Über> & \"more\"");
  sheets->Item("it's")->Activate();
  const auto loaded = Reloaded(spreadsheet);
  const auto names = BookOf(loaded)->Worksheets();
  ASSERT_EQ(names->Count(), 3);
  EXPECT_EQ(names->Item(1)->Name(), "<Über> & \"more\"");
  EXPECT_EQ(names->Item(2)->Name(), "it's");
  EXPECT_EQ(names->Item(3)->Name(), "Sheet1");
  EXPECT_EQ(SheetOf(loaded)->Name(), "it's");
}

TEST_F(RoundTrip, KeepsTheSelectionOfEverySheet) {
  auto spreadsheet = Spreadsheet::New();
  const auto first = SheetOf(spreadsheet);
  first->Range("C3:D7")->Select();
  BookOf(spreadsheet)->Worksheets()->Add()->Range("5:7")->Select();
  const auto loaded = Reloaded(spreadsheet);
  const auto application = loaded.Application();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2");
  EXPECT_EQ(application->ActiveCell()->Address(), "$A$5");
  application->Worksheets()->Item("Sheet1")->Select();
  EXPECT_EQ(application->ActiveCell()->Address(), "$C$3");
}

TEST_F(RoundTrip, KeepsTheSelectionOfALoadedFile) {
  const struct {
    const char* view;
    const char* active_cell;
    const char* saved;
  } cases[] = {
      {"<selection activeCell=\"D4\" sqref=\"B2:D4\"/>", "$D$4", "activeCell=\"D4\" sqref=\"B2:D4\""},
      {"<selection activeCell=\"B9\" sqref=\"A1 B9:C12\"/>", "$B$9", "activeCell=\"B9\" sqref=\"B9:C12\""},
      {"<pane ySplit=\"2\" activePane=\"bottomLeft\" state=\"frozen\"/><selection pane=\"topRight\" "
       "activeCell=\"B1\" sqref=\"B1\"/><selection pane=\"bottomLeft\" activeCell=\"C5\" sqref=\"C5\"/>",
       "$C$5", "pane=\"bottomLeft\" activeCell=\"C5\" sqref=\"C5\""},
      {"<selection activeCell=\"XFE1\" sqref=\"A1\"/>", "$A$1", "<sheetView"},
      {"<selection activeCell=\"B2\" sqref=\"nonsense\"/>", "$B$2", "activeCell=\"B2\" sqref=\"B2\""},
  };
  for (const auto& [view, active_cell, saved] : cases) {
    SCOPED_TRACE(view);
    Parts parts = SmallWorkbook();
    ReplaceIn(parts[kSheetPart], "<sheetData>",
              "<sheetViews><sheetView>" + std::string(view) + "</sheetView></sheetViews><sheetData>");
    auto loaded = Open(parts);
    EXPECT_EQ(loaded.Application()->ActiveCell()->Address(), active_cell);
    loaded.Save(File("again.xlsx"));
    EXPECT_NE(LookOf(File("again.xlsx")).find(saved), std::string::npos);
  }
}

TEST_F(RoundTrip, KeepsBorders) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = SheetOf(spreadsheet);
  std::int32_t row = 2;
  const std::pair<std::int32_t, std::int32_t> kinds[] = {{1, 1},     {1, 2},     {1, -4138},     {1, 4},
                                                         {-4115, 2}, {-4118, 2}, {-4119, 4},     {4, 2},
                                                         {5, 2},     {4, -4138}, {-4115, -4138}, {13, -4138}};
  for (const auto& [style, weight] : kinds) {
    const auto border = sheet->Cells(row, 2)->Borders(host::excel::xlEdgeRight);
    border->LineStyle(style);
    border->Weight(weight);
    border->ColorIndex(16);
    row += 2;
  }
  sheet->Range("E2:G9")->Borders(host::excel::xlInsideHorizontal)->ColorIndex(15);
  const auto loaded = SheetOf(Reloaded(spreadsheet));
  row = 2;
  for (const auto& [style, weight] : kinds) {
    SCOPED_TRACE(row);
    const auto border = loaded->Cells(row, 2)->Borders(host::excel::xlEdgeRight);
    EXPECT_EQ(border->LineStyle(), Variant(style));
    EXPECT_EQ(border->Weight(), Variant(weight));
    EXPECT_EQ(border->ColorIndex(), Variant(16));
    row += 2;
  }
  EXPECT_EQ(loaded->Range("E2:G9")->Borders(host::excel::xlInsideHorizontal)->ColorIndex(), Variant(15));
  EXPECT_EQ(loaded->Range("E2:G9")->Borders(host::excel::xlEdgeTop)->ColorIndex(), Variant(-4142));
}

// The parts of a style that clients of the object model cannot ask for yet are seen in a second file.
TEST_F(RoundTrip, KeepsTheWholeLookOfALoadedFile) {
  Parts parts = SmallWorkbook(
      "<row r=\"1\" ht=\"33\" customHeight=\"1\"><c r=\"A1\" s=\"4\"><v>1</v></c></row><row r=\"2\" "
      "hidden=\"1\"/>");
  std::string& styles = parts["xl/styles.xml"];
  InsertBehind(styles, "<fonts>",
               "<font><i/><strike/><u val=\"double\"/><sz val=\"14\"/><color rgb=\"FF123456\"/><name "
               "val=\"Arial\"/></font>");
  InsertBehind(styles, "<fills>",
               "<fill><patternFill patternType=\"lightGrid\"><fgColor rgb=\"FF00FF00\"/><bgColor "
               "rgb=\"FF0000FF\"/></patternFill></fill>");
  InsertBehind(styles, "<borders>",
               "<border diagonalUp=\"1\"><left style=\"thin\"><color rgb=\"FFFF0000\"/></left><bottom "
               "style=\"slantDashDot\"/>"
               "<diagonal style=\"hair\"><color rgb=\"FF00FF00\"/></diagonal></border>");
  InsertBehind(styles, "<xf numFmtId=\"2\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>",
               "<xf fontId=\"0\" fillId=\"0\" borderId=\"0\"><alignment horizontal=\"left\" "
               "vertical=\"center\" indent=\"2\" "
               "textRotation=\"120\" wrapText=\"1\"/></xf>");
  ReplaceIn(
      parts[kSheetPart], "<sheetData>",
      "<sheetViews><sheetView><pane xSplit=\"1\" ySplit=\"2\" state=\"frozen\"/></sheetView></sheetViews>"
      "<cols><col min=\"1\" max=\"2\" width=\"20.7109375\" customWidth=\"1\"/><col min=\"4\" max=\"4\" "
      "width=\"5\" "
      "hidden=\"1\"/></cols><sheetData>");
  parts["docProps/core.xml"] =
      "<coreProperties><title>Quotes &amp; more</title><creator>A. Person</creator></coreProperties>";
  InsertBehind(parts["_rels/.rels"], "relationships\">",
               "<Relationship Id=\"c\" Type=\"http://x/core-properties\" Target=\"docProps/core.xml\"/>");

  auto loaded = Open(parts);
  loaded.Save(File("once.xlsx"));
  auto again = Spreadsheet::Open(File("once.xlsx"));
  again.Save(File("twice.xlsx"));
  for (const char* file : {"once.xlsx", "twice.xlsx"}) {
    SCOPED_TRACE(file);
    const std::string look = LookOf(File(file));
    for (const char* expected : {"<i/>",
                                 "<strike/>",
                                 "<u val=\"double\"/>",
                                 "<sz val=\"14\"/>",
                                 "FF123456",
                                 "Arial",
                                 "lightGrid",
                                 "FF00FF00",
                                 "FF0000FF",
                                 "<left style=\"thin\"><color rgb=\"FFFF0000\"/>",
                                 "slantDashDot",
                                 "diagonalUp=\"1\"",
                                 "style=\"hair\"",
                                 "horizontal=\"left\"",
                                 "vertical=\"center\"",
                                 "indent=\"2\"",
                                 "textRotation=\"120\"",
                                 "wrapText=\"1\"",
                                 "xSplit=\"1\"",
                                 "ySplit=\"2\"",
                                 "state=\"frozen\"",
                                 "width=\"20.7109375\"",
                                 "hidden=\"1\"",
                                 "ht=\"33\"",
                                 "Quotes &amp; more",
                                 "A. Person"}) {
      EXPECT_NE(look.find(expected), std::string::npos) << expected;
    }
  }
}

TEST_F(RoundTrip, KeepsRowsOfEveryKindSideBySide) {
  Parts parts = SmallWorkbook(
      "<row r=\"1\" ht=\"33\" customHeight=\"1\"/><row r=\"2\" s=\"2\" customFormat=\"1\"><c r=\"B2\" "
      "s=\"2\"><v>1</v></c></row><row r=\"4\" hidden=\"1\"><c r=\"A4\" t=\"str\"><v>x</v></c></row>"
      "<row r=\"2000\" ht=\"50\" customHeight=\"1\"/>");
  auto loaded = Open(parts);
  SheetOf(loaded)->Range("C1500")->AddComment("far down");
  SheetOf(loaded)->Range("A1")->AddComment("on a high row");
  auto again = Reloaded(loaded);
  again.Save(File("twice.xlsx"));
  const std::string look = LookOf(File("twice.xlsx"));
  for (const char* expected : {"ht=\"33\"", "hidden=\"1\"", "ht=\"50\"", "far down", "on a high row"})
    EXPECT_NE(look.find(expected), std::string::npos) << expected;
  const auto sheet = SheetOf(again);
  EXPECT_EQ(sheet->Range("XFD2")->Font()->Bold(), Variant(true));
  EXPECT_EQ(sheet->Range("B2")->Value(), Variant(1.0));
  EXPECT_EQ(sheet->Range("A4")->Value(), Variant("x"));
  EXPECT_EQ(sheet->Range("A1")->Comment()->Shape()->Height(), 55.5);
}

TEST_F(RoundTrip, KeepsHundredsOfSheets) {
  auto spreadsheet = Spreadsheet::New();
  for (int i = 0; i < 300; ++i) BookOf(spreadsheet)->Worksheets()->Add()->Range("B2")->Value(i);
  const auto sheets = BookOf(Reloaded(spreadsheet))->Worksheets();
  ASSERT_EQ(sheets->Count(), 301);
  for (int i = 0; i < 300; ++i) ASSERT_EQ(sheets->Item(300 - i)->Range("B2")->Value(), Variant(i)) << i;
}

TEST_F(RoundTrip, KeepsTextsThatPackVeryTightly) {
  auto spreadsheet = Spreadsheet::New();
  SheetOf(spreadsheet)->Range("A1:A100")->Value(std::string(30'000, 'x'));
  EXPECT_EQ(SheetOf(Reloaded(spreadsheet))->Range("A100")->Value(), Variant(std::string(30'000, 'x')));
}

TEST_F(RoundTrip, SavesOverTheFileItCameFrom) {
  auto spreadsheet = Spreadsheet::New();
  SheetOf(spreadsheet)->Range("A1")->Value(1.0);
  spreadsheet.Save(File());
  auto loaded = Spreadsheet::Open(File());
  SheetOf(loaded)->Range("A1")->Value(2.0);
  loaded.Save(File());
  EXPECT_EQ(SheetOf(Spreadsheet::Open(File()))->Range("A1")->Value(), Variant(2.0));
  EXPECT_EQ(BookOf(loaded)->Name(), "quotes.xlsx");
}

TEST_F(RoundTrip, KeepsATableOfManyRows) {
  constexpr std::int32_t kCount = 5000;
  VariantArray table(1, kCount, 1, 4);
  for (std::int32_t row = 1; row <= kCount; ++row) {
    table(row, 1) = "T" + std::to_string(row);
    table(row, 2) = row * 0.25;
    table(row, 3) = row;
    table(row, 4) = Date{40000.0 + row};
  }
  auto spreadsheet = Spreadsheet::New();
  SheetOf(spreadsheet)->Range("A3")->Resize(kCount, 4)->Value(table);
  const auto loaded = SheetOf(Reloaded(spreadsheet));
  const Variant value = loaded->Range("A3")->Resize(kCount, 4)->Value();
  for (std::int32_t row = 1; row <= kCount; ++row) {
    for (std::int32_t column = 1; column <= 4; ++column) {
      ASSERT_EQ(value.AsArray()(row, column), table(row, column)) << row << ", " << column;
    }
  }
  EXPECT_EQ(loaded->Range("A3")->End(host::excel::xlDown)->Row(), kCount + 2);
}

}  // namespace
}  // namespace mirelo::testing
