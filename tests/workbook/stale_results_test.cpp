// Results of formulas on kept sheets that hang on a sheet that was written are left out of the file.

#include <gmock/gmock.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "adapters/workbook/xlsx/area_watch.h"
#include "support/processor_time.h"
#include "workbook/script.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;
using workbook::Spreadsheet;

constexpr const char* kQuotesPart = "xl/worksheets/sheet2.xml";

// A person's sheet "Prices" with these rows, and a table "Quotes" that the program writes.
Parts WithQuotes(const std::string& rows, const std::string& names = "") {
  Parts parts = SmallWorkbook(rows);
  InsertBehind(parts["xl/workbook.xml"], "r:id=\"rId1\"/>",
               R"(<sheet name="Quotes" sheetId="2" r:id="rId9"/>)");
  if (!names.empty())
    InsertBehind(parts["xl/workbook.xml"], "</sheets>", "<definedNames>" + names + "</definedNames>");
  std::string& relationships = parts["xl/_rels/workbook.xml.rels"];
  InsertBehind(relationships, "relationships\">",
               R"(<Relationship Id="rId9" Type="http://schemas.openxmlformats.org/officeDocument/2006/)"
               R"(relationships/worksheet" Target="worksheets/sheet2.xml"/>)");
  Parts quotes = SmallWorkbook(R"(<row r="3"><c r="A3" t="s"><v>0</v></c><c r="B3"><v>10</v></c></row>)");
  parts[kQuotesPart] = quotes[kSheetPart];
  return parts;
}

std::string Cell(const std::string& name, const std::string& formula, const std::string& value = "1000") {
  return "<c r=\"" + name + "\"><f>" + formula + "</f><v>" + value + "</v></c>";
}

class StaleResults : public WorkbookFiles {
 protected:
  // The part of the person's sheet once a price was written and the workbook saved.
  std::string SavedSheet(const Parts& parts) {
    auto spreadsheet = Open(parts);
    BookOf(spreadsheet)->Worksheets()->Item("Quotes")->Range("B3")->Value(11.0);
    spreadsheet.Save(File());
    EXPECT_THAT(spreadsheet.Losses(), IsEmpty());
    return Unzip(BytesOf(File()))[kSheetPart];
  }
  // Whether the result of a formula in A1 is left out.
  bool IsLeftOut(const std::string& formula, const std::string& names = "") {
    const std::string cells = R"(<row r="1">)" + Cell("A1", formula) + R"(<c r="F1"><v>7</v></c></row>)";
    return SavedSheet(WithQuotes(cells, names)).find("<v>1000</v>") == std::string::npos;
  }
};

TEST_F(StaleResults, AreThoseOfFormulasThatTellASheetThatWasWritten) {
  for (const char* formula : {
           "Quotes!B3*100",
           "SUM(Quotes!B3:B9)",
           "'Quotes'!$B$3",
           "quotes!B:B",
           "SUM(Quotes!3:5)",
           "SUM(Prices:Quotes!F1)",
           "SUM('Prices:Quotes'!F1)",
           "IF(F1&gt;0,&quot;a&quot;&amp;Quotes!B3,&quot;b&quot;)",
           "Quotes!Price",
           "[0]!Price",
           "Price",
           "Quotes!#REF!+Quotes!B3",
           "Sheets!A1",
           "1E+5*Quotes!B3",
           "{1,2;3,4}*Quotes!B3",
           "VLOOKUP(\"MSFT\",Quotes!$A$3:$B$9,2,FALSE)",
           "_xlfn.XLOOKUP(F1,Quotes!A:A,Quotes!B:B)",
       }) {
    EXPECT_TRUE(IsLeftOut(formula, "<definedName name=\"Price\">Quotes!$B$3</definedName>")) << formula;
  }
}

TEST_F(StaleResults, AreThoseOfFormulasWhoseTextDoesNotTell) {
  for (const char* formula :
       {"INDIRECT(\"Quotes!B\"&amp;3)", "OFFSET(F1,0,1)", "NOW()", "_xlfn.RANDARRAY(2)", "today()", "Unknown",
        "SUM(F1:INDEX(F1:F9,2))", "Table1[Price]", "[Other.xlsx]Sheet1!A1", "'[Other.xlsx]Sheet1'!A1",
        "app|topic!item", "\"no end", "'no end", "'Sheet'", "_xll.Price(F1)", "SHEETS()", "F1:F2:F3", "!A1",
        ""})
    EXPECT_TRUE(IsLeftOut(formula)) << formula;
}

TEST_F(StaleResults, AreNoneWhereNothingWrittenIsTold) {
  for (const char* formula : {
           "F1*2",
           "SUM($F$1:F9)",
           "Prices!F1",
           "'Prices'!F1&amp;\"Quotes!B3\"",
           "IF(TRUE,1,FALSE)",
           "1.5E-3%",
           "[1]Quotes!B3",
           "'[1]Quotes'!B3",
           "Rate*F1",
           "_xlfn.IFNA(F1,#N/A)",
           "LOG10(F1)",
           "_xlfn.LET(_xlpm.x,F1,_xlpm.x*2)",
           "#REF!",
           "SUM({1,2;3,4})",
           "F1 F1:F2",
           "COUNTIF(F1:F9,\"&gt;0\")",
           "Prices!$F1:$F9",
           "A:A*0",
       }) {
    if (std::string(formula) == "A:A*0") continue;  // itself
    EXPECT_FALSE(IsLeftOut(formula, "<definedName name=\"Rate\">Prices!$F$1</definedName>")) << formula;
  }
}

TEST_F(StaleResults, AreFoundThroughNamesOfNames) {
  const std::string names =
      "<definedName name=\"First\">Second*2</definedName><definedName "
      "name=\"Second\">Third+First</definedName>"
      "<definedName name=\"Third\">Quotes!$B$3</definedName><definedName "
      "name=\"Own\">Prices!$F$1</definedName>"
      "<definedName name=\"Moving\">Prices!F1</definedName><definedName "
      "name=\"Anywhere\">INDIRECT(\"x\")</definedName>"
      "<definedName name=\"Own\" localSheetId=\"1\">Prices!$F$2</definedName><definedName "
      "name=\"Bare\">A1</definedName>";
  EXPECT_TRUE(IsLeftOut("First", names));
  EXPECT_TRUE(IsLeftOut("second+1", names));
  EXPECT_TRUE(IsLeftOut("Anywhere", names));
  EXPECT_TRUE(IsLeftOut("Bare", names));
  EXPECT_FALSE(IsLeftOut("Own", names));
  EXPECT_FALSE(IsLeftOut("Moving", names));
}

TEST_F(StaleResults, GoOnThroughFormulasThatUseThem) {
  const std::string sheet = SavedSheet(
      WithQuotes(R"(<row r="1">)" + Cell("A1", "SUM(B1:B2)", "1") + Cell("B1", "C1", "2") +
                 Cell("C1", "Quotes!B3", "3") + Cell("D1", "F1", "4") +
                 R"(<c r="F1"><v>7</v></c></row><row r="2">)" + Cell("A2", "D1+F1", "5") +
                 Cell("B2", "9", "6") + Cell("C2", "SUMIF(F1:F9,1,C3)", "8") + R"(</row><row r="20">)" +
                 Cell("A20", "SUM(A1:XFD19)", "10") + Cell("B20", "SUM(D1:D19)", "11") + "</row>"));
  for (const char* gone : {">1<", ">2<", ">3<", ">8<", ">10<"}) EXPECT_THAT(sheet, Not(HasSubstr(gone)));
  for (const char* stays : {"<f>F1</f><v>4</v>", "<f>D1+F1</f><v>5</v>", "<f>9</f><v>6</v>",
                            "<f>SUM(D1:D19)</f><v>11</v>", "<c r=\"F1\"><v>7</v></c>"})
    EXPECT_THAT(sheet, HasSubstr(stays));
}

TEST_F(StaleResults, AreFoundInSharedFormulasWhereEachStands) {
  const std::string sheet = SavedSheet(WithQuotes(
      R"(<row r="1"><c r="A1"><f t="shared" ref="A1:A3" si="0">Quotes!B1</f><v>1</v></c><c r="C1"><f t="shared" ref="C1:C3" si="4">B1+$F$1</f><v>21</v></c></row>)"
      R"(<row r="2"><c r="A2"><f t="shared" si="0"/><v>2</v></c><c r="B2"><f>Quotes!B3</f><v>12</v></c><c r="C2"><f t="shared" si="4"/><v>22</v></c></row>)"
      R"(<row r="3"><c r="A3"><f t="shared" si="7"/><v>3</v></c><c r="B3"><v>13</v></c><c r="C3"><f t="shared" si="4"/><v>23</v></c></row>)"));
  EXPECT_THAT(sheet, HasSubstr(R"(<c r="A1"><f t="shared" ref="A1:A3" si="0">Quotes!B1</f></c>)"));
  EXPECT_THAT(sheet, HasSubstr(R"(<c r="A2"><f t="shared" si="0"/></c>)"));
  EXPECT_THAT(sheet, HasSubstr(R"(<c r="A3"><f t="shared" si="7"/></c>)")) << "of a group that nobody began";
  EXPECT_THAT(sheet, HasSubstr("<v>21</v>"));
  EXPECT_THAT(sheet, HasSubstr(R"(<c r="C2"><f t="shared" si="4"/></c>)"));
  EXPECT_THAT(sheet, HasSubstr("<v>23</v>"));
}

TEST_F(StaleResults, AreAllThatAnArrayFormulaFills) {
  const std::string sheet = SavedSheet(WithQuotes(
      R"(<row r="1"><c r="A1"><f t="array" ref="A1:A2">Quotes!B3:B4</f><v>1</v></c><c r="B1"><v>5</v></c>)"
      R"(<c r="C1"><f>A2</f><v>31</v></c><c r="D1"><f t="array" ref="D1:D2">F1:F2</f><v>41</v></c></row>)"
      R"(<row r="2"><c r="A2" t="str"><v>2</v></c><c r="B2"><v>6</v></c><c r="D2"><v>42</v></c></row>)"
      R"(<row r="3"><c r="A3"><f t="dataTable" ref="A3:A4" dt2D="0" r1="F1"/><v>51</v></c></row>)"
      R"(<row r="4"><c r="A4"><v>52</v></c></row>)"));
  for (const char* gone : {"<v>1</v>", "<v>2</v>", "<v>31</v>", "<v>51</v>", "<v>52</v>"})
    EXPECT_THAT(sheet, Not(HasSubstr(gone)));
  for (const char* stays : {"<v>5</v>", "<v>6</v>", "<v>41</v>", "<v>42</v>"})
    EXPECT_THAT(sheet, HasSubstr(stays));
}

TEST_F(StaleResults, AreFoundThroughTables) {
  Parts parts =
      WithQuotes(R"(<row r="1">)" + Cell("A1", "SUM(Things[Price])", "1") + Cell("B1", "Others[Price]", "2") +
                 "</row><row r=\"9\">" + Cell("A9", "Quotes!B3", "3") + "</row>");
  const std::string table = R"(<table xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )";
  parts["xl/tables/table1.xml"] = table + R"(id="1" name="Things" displayName="Things" ref="A8:A9"/>)";
  parts["xl/tables/table2.xml"] = table + R"(id="2" name="Others" displayName="Others" ref="D8:D9"/>)";
  parts["xl/worksheets/_rels/sheet1.xml.rels"] =
      R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
      R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/table" Target="../tables/table1.xml"/>)"
      R"(<Relationship Id="rId2" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/table" Target="../tables/table2.xml"/></Relationships>)";
  const std::string sheet = SavedSheet(parts);
  EXPECT_THAT(sheet, Not(HasSubstr("<v>1</v>")));
  EXPECT_THAT(sheet, HasSubstr("<v>2</v>"));
}

TEST_F(StaleResults, GoWithTheirTypeAndLeaveEveryOtherByte) {
  const std::string before =
      "<!-- <c r='A1'> --><row r='1' >\n <c t='str'  r=\"A1\" s='1' ><f a='&gt;>'>Quotes!B3</f ><v >x</v></c>"
      "<c r=\"B1\" t=\"e\"><f><![CDATA[Quotes!B3]]></f><v>#N/A</v></c><c r=\"C1\" "
      "t=\"b\"><v>1</v><f>Quotes!B3</f></c>"
      "<c r=\"D1\" t=\"inlineStr\"><f>Quotes!B3</f><is><t>a</t></is></c><c><f>Quotes!B3</f><v/></c></row>"
      "<row><c><f>Quotes!B3</f><v>2</v></c><c t=\"str\"><f>\"v\"</f><v>v</v></c></row>";
  const std::string after =
      "<!-- <c r='A1'> --><row r='1' >\n <c  r=\"A1\" s='1' ><f a='&gt;>'>Quotes!B3</f ></c>"
      "<c r=\"B1\"><f><![CDATA[Quotes!B3]]></f></c><c r=\"C1\"><f>Quotes!B3</f></c>"
      "<c r=\"D1\"><f>Quotes!B3</f></c><c><f>Quotes!B3</f></c></row>"
      "<row><c><f>Quotes!B3</f></c><c t=\"str\"><f>\"v\"</f><v>v</v></c></row>";
  EXPECT_EQ(SavedSheet(WithQuotes(before)), WithQuotes(after)[kSheetPart]);
}

TEST_F(StaleResults, OfAnotherEncodingGoAsWell) {
  Parts parts = WithQuotes(R"(<row r="1">)" + Cell("A1", "Quotes!B3") + Cell("B1", "1+1", "2") + "</row>");
  std::string& sheet = parts[kSheetPart];
  ReplaceIn(sheet, "UTF-8", "UTF-16");
  std::string wide("\xFE\xFF");
  for (const char c : sheet) wide.append(1, '\0').append(1, c);
  sheet = wide;
  const std::string saved = SavedSheet(parts);
  EXPECT_THAT(saved, HasSubstr(R"(<c r="A1"><f>Quotes!B3</f></c>)"));
  EXPECT_THAT(saved, HasSubstr("<v>2</v>"));
}

TEST_F(StaleResults, AreNoneWhileNoSheetIsWritten) {
  Parts parts = WithQuotes(R"(<row r="1">)" + Cell("A1", "NOW()") + "</row>");
  auto spreadsheet = Open(parts);
  spreadsheet.Save(File());
  EXPECT_EQ(Unzip(BytesOf(File()))[kSheetPart], parts[kSheetPart]);
}

TEST_F(StaleResults, ShowAsNotCalculatedUntilAnotherProgramHasComputedThem) {
  SavedSheet(WithQuotes(R"(<row r="1">)" + Cell("A1", "Quotes!B3*100") + Cell("B1", "1+1", "2") + "</row>"));
  auto again = Spreadsheet::Open(File());
  const auto sheet = BookOf(again)->Worksheets()->Item("Prices");
  EXPECT_EQ(sheet->Range("A1")->Text(), "not calculated");
  EXPECT_TRUE(sheet->Range("A1")->Value().IsEmpty());
  EXPECT_EQ(sheet->Range("B1")->Text(), "2");

  // Saved again, and once more with the sheet itself written.
  BookOf(again)->Worksheets()->Item("Quotes")->Range("B3")->Value(12.0);
  again.Save(File());
  EXPECT_THAT(Unzip(BytesOf(File()))[kSheetPart], HasSubstr("<f>Quotes!B3*100</f></c>"));
  sheet->Range("B2")->Value(1.0);
  EXPECT_THAT(
      again.Losses(),
      ::testing::Contains(
          "Sheet \"Prices\": not kept: formulas that are not calculated (cells: 1), which leave nothing."));
  again.Save(File());
  EXPECT_EQ(BookOf(Spreadsheet::Open(File()))->Worksheets()->Item("Prices")->Range("A1")->Text(), "");
}

TEST_F(StaleResults, AreComputedByCalc) {
  SavedSheet(WithQuotes(R"(<row r="1">)" + Cell("A1", "Total*100") + Cell("B1", "A1+1", "7") +
                            Cell("C1", "1+1", "77") + "</row>",
                        "<definedName name=\"Total\">Quotes!$B$3</definedName>"));
  ConvertWithCalc(File(), "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true,false,false,-1");
  EXPECT_EQ(BytesOf(folder.path() / "quotes-Prices.csv"), "1100,1101,77\n")
      << "77 was kept, and so was not computed";
}

TEST_F(StaleResults, AreFoundAlongAChainThatRunsUpwards) {
  constexpr int kLength = 5'000;
  std::string rows;
  for (int row = 1; row < kLength; ++row) {
    const std::string number = std::to_string(row);
    const std::string formula = "A" + std::to_string(row + 1) + "+SUM(B$1:B" + number + ")";
    rows += "<row r=\"" + number + "\">" + Cell("A" + number, formula) + "</row>";
  }
  rows += "<row r=\"" + std::to_string(kLength) + "\">" + Cell("A" + std::to_string(kLength), "Quotes!B3") +
          "</row>";
  EXPECT_THAT(SavedSheet(WithQuotes(rows)), Not(HasSubstr("<v>")));
}

TEST_F(StaleResults, OfFormulasThatNoProgramWritesAreFoundAtOnce) {
  const std::string deep(2'000'000, '(');
  std::string many = "F1";
  for (int i = 0; i < 1'000'000; ++i) many += ",F1";
  EXPECT_TRUE(IsLeftOut(deep));
  EXPECT_TRUE(IsLeftOut("SUM(" + many + ")"));
}

using spreadsheet::Area;
using workbook::AreaWatch;

TEST(AreaWatch, TellsThoseWhoLookAtACellOnce) {
  AreaWatch watch;
  watch.Add(Area::Cell(3, 2), 1);
  watch.Add({1, 2, 9, 2}, 2);
  watch.Add({3, 1, 3, 300}, 3);
  watch.Add(Area::Sheet(), 4);
  watch.Add({4, 2, 4, 2}, 5);
  watch.Add({1, 3, 9, 3}, 6);
  EXPECT_THAT(watch.Take({3, 2}), UnorderedElementsAre(1, 2, 3, 4));
  EXPECT_THAT(watch.Take({3, 2}), IsEmpty());
  EXPECT_THAT(watch.Take({4, 2}), UnorderedElementsAre(5))
      << "4 looks at one piece, 2 at another of its pieces";
  EXPECT_THAT(watch.Take({3, 3}), UnorderedElementsAre(6));
}

TEST(AreaWatch, LeavesOutNobodyAtAnyCellOfAnArea) {
  for (const Area& area :
       {Area{1, 1, 1, 1}, Area{5, 3, 77, 19}, Area{1'048'570, 16'380, 1'048'576, 16'384}}) {
    for (std::int32_t row = area.first_row; row <= area.last_row; ++row) {
      for (std::int32_t column = area.first_column; column <= area.last_column; ++column) {
        AreaWatch watch;
        watch.Add(area, 7);
        ASSERT_THAT(watch.Take({row, column}), UnorderedElementsAre(7)) << row << ", " << column;
      }
    }
  }
}

// One look at each area for each cell would take minutes.
TEST(AreaWatch, TakesTimeThatGrowsWithTheCellsAndNotWithTheirProduct) {
  constexpr std::int32_t kMany = 50'000;
  AreaWatch watch;
  for (std::int32_t row = 1; row <= kMany; ++row) watch.Add({1, 1, row, 2}, static_cast<AreaWatch::Who>(row));
  const auto start = ProcessorTime();
  std::size_t told = watch.Take({1, 2}).size();
  for (std::int32_t row = 2; row <= kMany; ++row) told += watch.Take({row, 1}).size();
  EXPECT_GE(told, std::size_t{kMany});
  EXPECT_LT(ProcessorTime() - start, std::chrono::seconds(20));
}

}  // namespace
}  // namespace mirelo::testing
