#include <cstdint>
#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "automation_server/server_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

// A client of a workbook with two sheets, which writes as macros do.
class ExcelCalls : public ServerTest {
 protected:
  Door RangeAt(const char* address) { return DoorOf(Get(sheet, "Range", {address})); }
  static std::string AddressOf(const Variant& range) { return Get(DoorOf(range), "Address").ToText(); }
  static std::vector<std::string> Addresses(const Door& ranges) {
    std::vector<std::string> addresses;
    const auto walk = ranges->NewEnum();
    while (const auto range = walk->Next()) addresses.push_back(AddressOf(*range));
    return addresses;
  }

  Door application = DoorOf(workbook::Spreadsheet::New().Application());
  Door sheets = DoorOf(Get(application, "Worksheets"));
  Door sheet = DoorOf(Call(sheets, "Add"));
};

TEST_F(ExcelCalls, FindClassesByWhatTheObjectsAre) {
  EXPECT_EQ(application->table().name(), "Application");
  EXPECT_EQ(sheet->table().name(), "Worksheet");
  EXPECT_EQ(DoorOf(Get(application, "Selection"))->table().name(), "Range");
  EXPECT_EQ(&DoorOf(Get(application, "ActiveSheet"))->table(), &sheet->table());
  EXPECT_NE(&DoorOf(Get(application, "Charts"))->table(), &sheets->table()) << "though they are named alike";
}

TEST_F(ExcelCalls, CannotMakeASpreadsheet) {
  EXPECT_EQ(NumberOf([] { New("Application"); }), 429);
}

TEST_F(ExcelCalls, GiveSheetsByNumberAndByName) {
  EXPECT_EQ(Get(DoorOf(Get(application, "Worksheets", {1})), "Name").ToText(), "Sheet2");
  EXPECT_EQ(Get(DoorOf(Get(application, "Worksheets", {"sheet1"})), "Index").ToInt32(), 2);
  EXPECT_EQ(NumberOf([&] { Get(application, "Worksheets", {3}); }), 9);
  EXPECT_EQ(NumberOf([&] { Get(application, "Worksheets", {"absent"}); }), 9);
  EXPECT_EQ(NumberOf([&] { Get(application, "Worksheets", {Nothing()}); }), 13);
}

TEST_F(ExcelCalls, WalkSheetsAndWhatComesMeanwhile) {
  const auto walk = sheets->NewEnum();
  EXPECT_EQ(Get(DoorOf(*walk->Next()), "Name").ToText(), "Sheet2");
  const auto copy = walk->Clone();
  EXPECT_EQ(Get(DoorOf(*walk->Next()), "Name").ToText(), "Sheet1");
  EXPECT_EQ(walk->Next(), std::nullopt);
  EXPECT_EQ(Get(DoorOf(*copy->Next()), "Name").ToText(), "Sheet1");
}

TEST_F(ExcelCalls, WriteAndReadValues) {
  Let(RangeAt("B2"), "Value", "1,234");
  EXPECT_EQ(Get(RangeAt("B2"), "Value").ToDouble(), 1234);
  EXPECT_EQ(Get(RangeAt("B2"), "Text").ToText(), "1,234");
  VariantArray block(5, 6, -1, 0);
  block(6, 0) = "last";
  Let(RangeAt("C3:D4"), "Value", block);
  const Variant read = Get(RangeAt("C3:D4"), "Value");
  EXPECT_EQ(read.AsArray().LBound(2), 1);
  EXPECT_EQ(read.AsArray()(2, 2).ToText(), "last");
  EXPECT_EQ(Get(RangeAt("C3:D4"), "Value", {2, 2}).ToText(), "last");
}

TEST_F(ExcelCalls, WriteAndReadCellsWithoutNamingTheirValue) {
  Let(sheet, "Range", 5, {"A1"});
  EXPECT_EQ(RangeAt("A1")->Value().ToDouble(), 5);
  Let(sheet, "Cells", 6, {2, 3});
  EXPECT_EQ(Get(RangeAt("C2"), "Value").ToDouble(), 6);
  EXPECT_EQ(AddressOf(Get(sheet, "Cells", {2, 3})), "$C$2");
  EXPECT_EQ(AddressOf(RangeAt("B2:C3")->Value({2, 2})), "$C$3");
  EXPECT_EQ(AddressOf(Call(RangeAt("B2:C3"), "Item", {3})), "$B$3");
  EXPECT_EQ(NumberOf([&] { Get(sheet, "Cells", {0, 0}); }), 1004);
  EXPECT_EQ(NumberOf([&] { Get(sheet, "Cells", {INT32_MAX, 1}); }), 1004);
  EXPECT_EQ(NumberOf([&] { Let(RangeAt("A1"), "Font", 5); }), 438);
}

TEST_F(ExcelCalls, GiveRangesByAddressesAndCorners) {
  EXPECT_EQ(AddressOf(Get(sheet, "Range", {"A1", "B2"})), "$A$1:$B$2");
  EXPECT_EQ(AddressOf(Get(sheet, "Range", {ObjectOf(RangeAt("C3")), ObjectOf(RangeAt("B2"))})), "$B$2:$C$3");
  EXPECT_EQ(AddressOf(Get(sheet, "Range", {ObjectOf(RangeAt("C3"))})), "$C$3");
  EXPECT_EQ(AddressOf(Get(sheet, "Rows", {"5:7"})), "$5:$7");
  EXPECT_EQ(AddressOf(Get(sheet, "Rows", {5})), "$5:$5");
  EXPECT_EQ(AddressOf(Get(sheet, "Columns", {"B:D"})), "$B:$D");
  EXPECT_EQ(AddressOf(Get(sheet, "Columns", {2})), "$B:$B");
  EXPECT_EQ(NumberOf([&] { Get(sheet, "Range", {"nowhere!"}); }), 1004);
  EXPECT_EQ(NumberOf([&] { Get(sheet, "Range", {Nothing(), "A1"}); }), 91);
  EXPECT_EQ(NumberOf([&] { Get(sheet, "Range", {ObjectOf(sheet)}); }), 13);
}

TEST_F(ExcelCalls, LeaveOutWhatMayBeLeftOut) {
  const Door range = RangeAt("A2:C4");
  EXPECT_EQ(Get(range, "Address").ToText(), "$A$2:$C$4");
  EXPECT_EQ(Get(range, "Address", {LeftOut(), false}).ToText(), "A$2:C$4");
  Let(RangeAt("A1"), "Value", 1);
  Let(RangeAt("A2"), "Value", 2);
  Call(RangeAt("A1"), "Delete");
  EXPECT_EQ(Get(RangeAt("A1"), "Value").ToDouble(), 2);
}

TEST_F(ExcelCalls, FindTextsByTheArgumentsThatClientsKnow) {
  Let(RangeAt("B3"), "Value", "needle");
  const Door cells = DoorOf(Get(sheet, "Cells"));
  const Variant after = ObjectOf(RangeAt("A1"));
  EXPECT_EQ(AddressOf(Call(cells, "Find", {"n*", after, -4163, 2, 1, 2})), "$B$3");
  EXPECT_EQ(Call(cells, "Find", {"hay", after}).TypeName(), "Nothing");
  EXPECT_EQ(NumberOf([&] { Call(cells, "Find", {"n", after, -4163, 1}); }), 1004) << "whole cells";
  EXPECT_EQ(NumberOf([&] { Call(cells, "Find", {"n", Nothing()}); }), 91);
  EXPECT_EQ(NumberOf([&] { Call(cells, "Find", {"n"}); }), 449);
}

TEST_F(ExcelCalls, WalkCellsRowsAndColumns) {
  EXPECT_THAT(Addresses(RangeAt("A1:B2")), ElementsAre("$A$1", "$B$1", "$A$2", "$B$2"));
  EXPECT_THAT(Addresses(DoorOf(Get(RangeAt("A1:B2"), "Rows"))), ElementsAre("$A$1:$B$1", "$A$2:$B$2"));
}

TEST_F(ExcelCalls, SetFormats) {
  Let(DoorOf(Get(RangeAt("A1"), "Font")), "Bold", true);
  EXPECT_TRUE(Get(DoorOf(Get(RangeAt("A1"), "Font")), "Bold").ToBoolean());
  EXPECT_TRUE(Get(DoorOf(Get(RangeAt("A1:A2"), "Font")), "Bold").IsEmpty()) << "they differ";
  const Door bottom = DoorOf(Get(RangeAt("A1"), "Borders", {9}));
  Let(bottom, "LineStyle", 1);
  EXPECT_EQ(Get(bottom, "Weight").ToInt32(), 2);
  EXPECT_EQ(NumberOf([&] { Get(RangeAt("A1"), "Borders", {999}); }), 1004);

  const Door conditions = DoorOf(Get(RangeAt("A1"), "FormatConditions"));
  Call(conditions, "Add", {1, 5, "0"});
  EXPECT_EQ(Get(DoorOf(conditions->Value({1})), "Operator").ToInt32(), 5);
  EXPECT_EQ(NumberOf([&] { conditions->Value({2}); }), 9);
}

TEST_F(ExcelCalls, MakeAndPaintCharts) {
  for (int row = 1; row <= 3; ++row) Let(sheet, "Cells", 10 * row, {row, 1});
  const Door chart = DoorOf(Call(DoorOf(Get(application, "Charts")), "Add"));
  Call(chart, "SetSourceData", {ObjectOf(RangeAt("A1:A3")), 2});
  EXPECT_TRUE(Get(chart, "HasAxis", {1}).ToBoolean());
  Let(chart, "HasAxis", false, {1, 1});
  EXPECT_FALSE(Get(chart, "HasAxis", {1, LeftOut()}).ToBoolean());
  EXPECT_EQ(NumberOf([&] { Let(chart, "HasAxis", false); }), 449);
  EXPECT_EQ(NumberOf([&] { Get(chart, "HasAxis", {1, 1, 1}); }), 450);

  const Door series = DoorOf(Call(chart, "SeriesCollection", {1}));
  EXPECT_EQ(Get(series, "Values", {3}).ToDouble(), 30);
  Let(DoorOf(Call(series, "Points", {2})), "MarkerBackgroundColorIndex", 3);
  EXPECT_EQ(Get(DoorOf(Call(series, "Points", {2})), "MarkerBackgroundColorIndex").ToInt32(), 3);

  const Door placed = DoorOf(Call(chart, "Location", {2, Get(sheet, "Name")}));
  EXPECT_EQ(Get(placed, "Name").ToText(), "Sheet2 Chart 1");
  EXPECT_EQ(NumberOf([&] { Get(chart, "HasLegend"); }), 1004) << "it moved away";
  EXPECT_EQ(NumberOf([&] { Call(placed, "SetSourceData", {Nothing(), 2}); }), 91);
}

TEST_F(ExcelCalls, OfTheFacadePaintTheChartsThatClientsHandIn) {
  const Door facade = New("cMirelo");
  Set(facade, "ExcelApplication", ObjectOf(application));
  EXPECT_EQ(DoorOf(Get(facade, "m_ObjExcelApplication")), application);
  Let(RangeAt("A1"), "Value", 1);
  Let(RangeAt("A2"), "Value", 2);
  const Door chart = DoorOf(Call(DoorOf(Get(application, "Charts")), "Add"));
  Call(chart, "SetSourceData", {ObjectOf(RangeAt("A1:A2")), 2});
  Let(chart, "HasTitle", true);
  Call(facade, "Change_Colors", {ObjectOf(chart), 1, 1, "Blue"});
  const Door title = DoorOf(Get(chart, "ChartTitle"));
  EXPECT_EQ(Get(DoorOf(Get(title, "Interior")), "ColorIndex").ToInt32(), 10);
}

}  // namespace
}  // namespace mirelo::testing
