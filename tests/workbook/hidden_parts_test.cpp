#include <gtest/gtest.h>

#include "adapters/workbook/objects/application_object.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/comment.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/window.h"
#include "host/excel/worksheets.h"
#include "spreadsheet/refusals.h"
#include "support/error_number.h"

namespace mirelo::workbook {
namespace {

namespace excel = host::excel;
using ::mirelo::testing::ExpectRefusal;

// Sheets, rows and columns that are hidden: clients cannot hide any, files can.
class HiddenParts : public ::testing::Test {
 protected:
  std::shared_ptr<excel::Range> Range(std::string_view address) { return application->Range(address); }
  Sheet& First() { return *book->sheets.front(); }
  std::shared_ptr<excel::Worksheet> Worksheet() { return application->Worksheets()->Item("Sheet1"); }

  std::shared_ptr<Book> book = Book::New();
  std::shared_ptr<ApplicationObject> application = std::make_shared<ApplicationObject>(book);
};

TEST_F(HiddenParts, HaveNoSize) {
  First().widths.Set(2, 3, {64, true});
  First().heights.Set(2, 5, {0, true});
  EXPECT_EQ(Range("B2:C5")->Width(), 0);
  EXPECT_EQ(Range("B2:C5")->Height(), 0);
  EXPECT_EQ(Range("D6")->Left(), Range("B1")->Left());
  EXPECT_EQ(Range("D6")->Top(), Range("A2")->Top());
}

TEST_F(HiddenParts, LetMoreOfTheSheetBeSeen) {
  First().widths.Set(2, 3, {64, true});
  First().heights.Set(2, 5, {0, true});
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Address(false, false), "A1:V31");
}

TEST_F(HiddenParts, LetTheWholeSheetBeSeenWhenLittleIsLeft) {
  First().widths.Set(1, kColumns, {64, true});
  First().heights.Set(11, kRows, {0, true});
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Address(), Worksheet()->Cells()->Address());
}

TEST_F(HiddenParts, HaveTheirOwnSizesBesideOtherOnes) {
  First().widths.Set(2, 2, {128, false});
  First().heights.Set(3, 4, {30, false});
  EXPECT_EQ(Range("B1")->Width(), 96);
  EXPECT_EQ(Range("C1")->Left(), 144);
  EXPECT_EQ(Range("A3:A4")->Height(), 60);
  EXPECT_EQ(Range("A5")->Top(), 90);
  EXPECT_EQ(application->ActiveWindow()->VisibleRange()->Address(false, false), "A1:S25");
}

TEST_F(HiddenParts, CannotBeSelectedNorCanTheirChartsAndComments) {
  application->Charts()->Add()->Location(excel::xlLocationAsObject, "Sheet1");
  Range("B2")->AddComment("x");
  const auto worksheet = Worksheet();
  application->Worksheets()->Add();
  book->FindSheet("Sheet1")->hidden = true;
  const auto shapes = worksheet->Shapes();
  ExpectRefusal(Refusals::HiddenSheetBroughtToFront(), [&] { worksheet->Select(); });
  ExpectRefusal(Refusals::ChartOnAHiddenSheet(), [&] { shapes->Item(1)->Select(); });
  ExpectRefusal(Refusals::ChartOnAHiddenSheet(), [&] { shapes->Item(1)->Chart()->Select(); });
  ExpectRefusal(Refusals::CommentOnAHiddenSheet(), [&] { shapes->Item(2)->Select(); });
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2");
}

TEST_F(HiddenParts, TakeNoChartsUp) {
  const auto chart = application->Charts()->Add();
  application->Worksheets()->Add();
  book->FindSheet("Sheet1")->hidden = true;
  ExpectRefusal(Refusals::ChartToAHiddenSheet(),
                [&] { chart->Location(excel::xlLocationAsObject, "Sheet1"); });
  EXPECT_EQ(application->Charts()->Count(), 1);
  EXPECT_EQ(chart->Name(), "Chart1");
}

}  // namespace
}  // namespace mirelo::workbook
