// What clients can call of the spreadsheet, held against a list of its own and against the port.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "automation/text.h"
#include "automation_server/class.h"
#include "automation_server/classes.h"
#include "automation_server/member.h"
#include "automation_server/told_members.h"

namespace mirelo::testing {
namespace {

using automation_server::Class;
using automation_server::Classes;
using ::testing::ElementsAre;
using Lines = ToldMembers::Lines;

Lines MembersOfExcel(std::string_view name) { return ToldMembers::MembersOf(name); }

TEST(ExcelMembers, OfTheProgramAndItsWorkbook) {
  EXPECT_THAT(MembersOfExcel("Application"),
              ElementsAre("ActiveWorkbook: get object", "ActiveSheet: get object", "ActiveCell: get object",
                          "Selection: get object", "ActiveWindow: get object", "Worksheets: get object",
                          "Charts: get object", "Range(Cell1 text): get object", "Cells: get object",
                          "ScreenUpdating: get let boolean"));
  EXPECT_THAT(MembersOfExcel("Window"), ElementsAre("VisibleRange: get object"));
  EXPECT_THAT(MembersOfExcel("Workbook"),
              ElementsAre("Name: get text", "Worksheets: get object", "Charts: get object",
                          "Sheets(Index text): get object", "ActiveSheet: get object"));
}

TEST(ExcelMembers, OfBothCollectionsOfSheets) {
  int found = 0;
  for (const Class& known : Classes()) {
    if (known.name() != "Sheets") continue;
    ++found;
    EXPECT_THAT(ToldMembers::MembersOf(known),
                ElementsAre("Count: get long", "Item(Index variant): get object, default", "Add() object",
                            "_NewEnum() object, enumerates"));
  }
  EXPECT_EQ(found, 2) << "worksheets and chart sheets";
}

TEST(ExcelMembers, OfAWorksheet) {
  EXPECT_THAT(MembersOfExcel("Worksheet"),
              ElementsAre("Name: get let text", "Type: get long", "Select()", "Index: get long", "Activate()",
                          "Range(Cell1 variant, Cell2 variant = ): get object", "Cells: get object",
                          "Shapes: get object", "Rows(Index variant = ): get object",
                          "Columns(Index variant = ): get object"));
}

TEST(ExcelMembers, OfARange) {
  EXPECT_THAT(MembersOfExcel("Range"),
              ::testing::ElementsAreArray(
                  {"_Default(RowIndex variant = , ColumnIndex variant = ): get let variant, default",
                   "Value: get let variant",
                   "Text: get text",
                   "Cells: get object",
                   "Item(RowIndex variant, ColumnIndex variant = ): get object",
                   "Resize(RowSize long, ColumnSize long): get object",
                   "Row: get long",
                   "Column: get long",
                   "Rows: get object",
                   "Columns: get object",
                   "Count: get long",
                   "Address(RowAbsolute boolean = True, ColumnAbsolute boolean = True): get text",
                   "Worksheet: get object",
                   "End(Direction long): get object",
                   "SpecialCells(Type long) object",
                   "Find(What text, After object, LookIn variant = , LookAt long = 2, SearchOrder long = 1, "
                   "SearchDirection long = 1) object",
                   "Select()",
                   "Left: get double",
                   "Top: get double",
                   "Width: get double",
                   "Height: get double",
                   "EntireColumn: get object",
                   "EntireRow: get object",
                   "ColumnWidth: get let variant",
                   "AutoFit()",
                   "Clear()",
                   "ClearContents()",
                   "Delete(Shift long = -4162)",
                   "Comment: get object",
                   "AddComment(Text text) object",
                   "ClearComments()",
                   "NumberFormat: get let variant",
                   "HorizontalAlignment: get let variant",
                   "Font: get object",
                   "Interior: get object",
                   "Borders(Index long): get object",
                   "FormatConditions: get object",
                   "DisplayFormat: get object",
                   "_NewEnum() object, enumerates"}));
}

TEST(ExcelMembers, OfFormats) {
  EXPECT_THAT(MembersOfExcel("Font"), ElementsAre("Bold: get let variant", "Size: get let variant",
                                                  "ColorIndex: get let variant", "Color: get variant"));
  EXPECT_THAT(MembersOfExcel("Interior"),
              ElementsAre("ColorIndex: get let variant", "Color: get variant",
                          "PatternColorIndex: get let variant", "Pattern: get let variant"));
  EXPECT_THAT(MembersOfExcel("Border"), ElementsAre("LineStyle: get let variant", "Weight: get let variant",
                                                    "ColorIndex: get let variant"));
  EXPECT_THAT(MembersOfExcel("FormatCondition"),
              ElementsAre("Operator: get long", "Formula1: get text", "Font: get object"));
  EXPECT_THAT(MembersOfExcel("FormatConditions"),
              ElementsAre("Count: get long", "Item(Index long) object, default",
                          "Add(Type long, Operator long, Formula1 text) object", "Delete()",
                          "_NewEnum() object, enumerates"));
  EXPECT_THAT(MembersOfExcel("DisplayFormat"), ElementsAre("Font: get object", "Interior: get object"));
}

TEST(ExcelMembers, OfShapes) {
  EXPECT_THAT(MembersOfExcel("Comment"), ElementsAre("Text() text", "Shape: get object"));
  EXPECT_THAT(MembersOfExcel("Shapes"), ElementsAre("Count: get long", "Item(Index variant) object, default",
                                                    "_NewEnum() object, enumerates"));
  EXPECT_THAT(MembersOfExcel("Shape"),
              ElementsAre("Type: get long", "Name: get text", "Chart: get object", "ZOrderPosition: get long",
                          "Select()", "Delete()", "Left: get let double", "Top: get let double",
                          "Height: get let double", "Width: get let double",
                          "ScaleHeight(Factor double, RelativeToOriginalSize long)",
                          "ScaleWidth(Factor double, RelativeToOriginalSize long)"));
}

TEST(ExcelMembers, OfCharts) {
  EXPECT_THAT(
      MembersOfExcel("Chart"),
      ElementsAre("Name: get let text", "Type: get long", "Select()", "Parent: get object", "Index: get long",
                  "ChartType: get let long", "SetSourceData(Source object, PlotBy long)",
                  "Location(Where long, Name text) object",
                  "HasAxis(Index1 long, Index2 long = 1): get let boolean",
                  "Axes(Type long, AxisGroup long = 1) object", "HasLegend: get let boolean",
                  "HasTitle: get let boolean", "ChartTitle: get object", "ChartArea: get object",
                  "PlotArea: get object", "SeriesCollection(Index long) object"));
  EXPECT_THAT(MembersOfExcel("ChartObject"), ElementsAre("Parent: get object"));
  EXPECT_THAT(MembersOfExcel("Series"),
              ElementsAre("Values: get let variant", "Border: get object", "MarkerStyle: get let long",
                          "MarkerSize: get let long", "MarkerBackgroundColorIndex: get let long",
                          "MarkerForegroundColorIndex: get let long", "Smooth: get let boolean",
                          "Shadow: get let boolean", "Points(Index long) object"));
  EXPECT_THAT(MembersOfExcel("Point"),
              ElementsAre("Border: get object", "MarkerBackgroundColorIndex: get let long",
                          "MarkerForegroundColorIndex: get let long"));
}

TEST(ExcelMembers, OfPartsOfCharts) {
  EXPECT_THAT(MembersOfExcel("Axis"),
              ElementsAre("TickLabels: get object", "HasMajorGridlines: get let boolean",
                          "MajorGridlines: get object"));
  EXPECT_THAT(MembersOfExcel("TickLabels"),
              ElementsAre("Font: get object", "AutoScaleFont: get let boolean"));
  EXPECT_THAT(MembersOfExcel("Gridlines"), ElementsAre("Border: get object"));
  EXPECT_THAT(MembersOfExcel("Characters"), ElementsAre("Text: get let text"));
  EXPECT_THAT(MembersOfExcel("ChartTitle"),
              ElementsAre("Text: get let text", "Characters: get object", "Font: get object",
                          "AutoScaleFont: get let boolean", "Left: get let double", "Top: get let double",
                          "Shadow: get let boolean", "Border: get object", "Interior: get object"));
  EXPECT_THAT(MembersOfExcel("ChartArea"), ElementsAre("Fill: get object"));
  EXPECT_THAT(MembersOfExcel("PlotArea"),
              ElementsAre("Left: get let double", "Top: get let double", "Width: get let double",
                          "Height: get let double", "Border: get object", "Fill: get object"));
  EXPECT_THAT(MembersOfExcel("ChartFillFormat"),
              ElementsAre("TwoColorGradient(Style long, Variant long)", "Visible: get let long",
                          "ForeColor: get object", "BackColor: get object"));
  EXPECT_THAT(MembersOfExcel("ChartColorFormat"), ElementsAre("SchemeColor: get let long"));
}

// The members that the port declares: by the name that clients know of its class, "Worksheet" -> "Range" ...
std::map<std::string, std::set<std::string>> MembersOfThePort() {
  const std::regex head(R"(^class (\w+) : public (\w+) \{)");
  const std::regex type_name(R"re(TypeName\(\) const override \{ return "(\w+)")re");
  const std::regex member(R"(^  virtual .*\b(\w+)\()");
  std::map<std::string, std::set<std::string>> members;
  const std::filesystem::path port = std::filesystem::path(MIRELO_SOURCE_DIR) / "src/host/excel";
  for (const auto& header : std::filesystem::directory_iterator(port)) {
    std::ifstream lines(header.path());
    std::string shown;
    std::smatch found;
    for (std::string line; std::getline(lines, line);) {
      if (std::regex_search(line, found, head)) shown.clear();
      if (std::regex_search(line, found, type_name)) shown = found[1];
      if (!shown.empty() && std::regex_search(line, found, member)) members[shown].insert(found[1]);
    }
  }
  return members;
}

TEST(ExcelMembers, AreAllThatThePortHas) {
  const auto port = MembersOfThePort();
  ASSERT_EQ(port.size(), 28U) << "two collections are named alike";
  for (const auto& [name, members] : port) {
    for (const std::string& member : members) {
      EXPECT_TRUE(automation_server::ClassNamed(name)->Find(member)) << name << "." << member;
    }
  }
}

}  // namespace
}  // namespace mirelo::testing
