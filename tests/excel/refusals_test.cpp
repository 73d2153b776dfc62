// What our own spreadsheets say where they refuse something: the same sentences, whichever it is. Other
// programs have sentences of their own, so this is none of the suite's files.

#include "spreadsheet/refusals.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>

#include "charts_on_sheet.h"
#include "host/excel/comment.h"
#include "host/excel/display_format.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
namespace Refusals = spreadsheet::Refusals;

struct Refusal {
  RuntimeError error;
  std::function<void()> act;
};

class SaidRefusals : public ChartedSheet {
 protected:
  static void Expect(std::initializer_list<Refusal> refusals) {
    for (const Refusal& refusal : refusals) ExpectRefusal(refusal.error, refusal.act);
  }
};

TEST_P(SaidRefusals, OfCells) {
  const auto other = sheets->Add();
  sheet->Select();
  const auto cells = Range("B2:C3");
  Expect({
      {Refusals::NotADirection(), [&] { cells->End(static_cast<XlDirection>(0)); }},
      {Refusals::NotTheLastCell(), [&] { cells->SpecialCells(static_cast<XlCellType>(2)); }},
      {Refusals::NotACellToSearchFrom(), [&] { cells->Find("x", *Range("A1"), xlByRows, xlNext); }},
      {Refusals::RangesOfOtherSheets(), [&] { sheet->Range(*cells, *other->Range("B2")); }},
      {Refusals::CellsOfASheetBehind(), [&] { other->Range("B2")->Select(); }},
      {Refusals::CellTextTooLong(), [&] { cells->Value(std::string(32'768, 'x')); }},
  });
}

TEST_P(SaidRefusals, OfCellsWhereAChartFillsTheSheetInFront) {
  AddChartSheet();
  Expect({
      {Refusals::NoCellsInFront(), [&] { application->Range("A1"); }},
      {Refusals::NoCellsInFront(), [&] { application->ActiveWindow()->VisibleRange(); }},
      {Refusals::CellsOfASheetBehind(), [&] { Range("A1")->Select(); }},
  });
}

TEST_P(SaidRefusals, OfFormats) {
  const auto cells = Range("B2:C3");
  Expect({
      {Refusals::NotAColumnWidth(), [&] { cells->ColumnWidth(255.5); }},
      {Refusals::NotANumberFormat("0.0q"), [&] { cells->NumberFormat("0.0q"); }},
      {Refusals::NotAnAlignment(), [&] { cells->HorizontalAlignment(0); }},
      {Refusals::NotAFontSize(), [&] { cells->Font()->Size(409.5); }},
      {Refusals::NotAColorIndex(), [&] { cells->Font()->ColorIndex(57); }},
      {Refusals::NotAPattern(), [&] { cells->Interior()->Pattern(9); }},
      {Refusals::NotABorder(), [&] { cells->Borders(static_cast<XlBordersIndex>(99)); }},
      {Refusals::NotALineStyle(), [&] { cells->Borders(xlEdgeTop)->LineStyle(99); }},
      {Refusals::NotALineWeight(), [&] { cells->Borders(xlEdgeTop)->Weight(99); }},
  });
}

TEST_P(SaidRefusals, OfDisplayFormats) {
  const auto font = Range("A1")->DisplayFormat()->Font();
  const auto interior = Range("A1")->DisplayFormat()->Interior();
  Expect({
      {Refusals::DisplayFormatSet(), [&] { font->Bold(true); }},
      {Refusals::DisplayFormatSet(), [&] { font->Size(8); }},
      {Refusals::DisplayFormatSet(), [&] { font->ColorIndex(3); }},
      {Refusals::DisplayFormatSet(), [&] { interior->ColorIndex(3); }},
      {Refusals::DisplayFormatSet(), [&] { interior->PatternColorIndex(3); }},
      {Refusals::DisplayFormatSet(), [&] { interior->Pattern(xlPatternSolid); }},
  });
}

TEST_P(SaidRefusals, OfConditions) {
  const auto conditions = Range("A1")->FormatConditions();
  Expect({
      {Refusals::NotAComparisonOfValues(), [&] { conditions->Add(xlExpression, xlGreater, "0"); }},
      {Refusals::NotOneValueCompared(), [&] { conditions->Add(xlCellValue, xlBetween, "0"); }},
      {Refusals::FontSizeOfACondition(),
       [&] { conditions->Add(xlCellValue, xlGreater, "0")->Font()->Size(8); }},
  });
}

TEST_P(SaidRefusals, OfComments) {
  const auto comment = Range("B2")->AddComment("x");
  const auto shape = comment->Shape();
  Expect({
      {Refusals::HasAComment(), [&] { Range("B2")->AddComment("y"); }},
      {Refusals::CommentTooLong(), [&] { Range("B3")->AddComment(std::string(32'768, 'x')); }},
      {Refusals::CommentBesideItsCell(), [&] { shape->Left(100); }},
      {Refusals::CommentBesideItsCell(), [&] { shape->Top(100); }},
      {Refusals::NotAChart(), [&] { shape->Chart(); }},
  });
  Range("B2")->ClearComments();
  Expect({
      {Refusals::CommentGone(), [&] { shape->Height(); }},
      {Refusals::CommentGone(), [&] { comment->Text(); }},
  });
}

TEST_P(SaidRefusals, OfShapesAndCharts) {
  const auto chart = AddChart();
  const auto series = chart->SeriesCollection(1);
  Expect({
      {Refusals::NoSuchShape(), [&] { Shapes()->Item(2); }},
      {Refusals::NoSuchShape("Chart 9"), [&] { Shapes()->Item("Chart 9"); }},
      {Refusals::ChartNamedByItsShape(), [&] { chart->Name("Chart 9"); }},
      {Refusals::TooManySeries(), [&] { chart->SetSourceData(*Range("A1:IV2"), xlColumns); }},
      {Refusals::NotAMarkerSize(), [&] { series->MarkerSize(73); }},
      {Refusals::NotALineStyle(), [&] { series->Border()->LineStyle(99); }},
      {Refusals::NotALineWeight(), [&] { series->Border()->Weight(99); }},
      {Refusals::NotAColorIndex(), [&] { series->MarkerBackgroundColorIndex(57); }},
      {Refusals::ChartWithoutTitle(), [&] { chart->ChartTitle(); }},
      {Refusals::NoSuchSeries(), [&] { chart->SeriesCollection(2); }},
      {Refusals::NoSecondaryAxes(), [&] { chart->Axes(xlValue, xlSecondary); }},
  });
  chart->HasTitle(true);
  Expect({
      {Refusals::TitleTooLong(), [&] { chart->ChartTitle()->Text(std::string(256, 'x')); }},
      {Refusals::NotAPattern(), [&] { chart->ChartTitle()->Interior()->Pattern(9); }},
  });
  ShapeOf(chart)->Delete();
  Expect({{Refusals::ChartGone(), [&] { chart->ChartType(); }},
          {Refusals::ChartGone(), [&] { chart->Index(); }}});
}

MIRELO_AGAINST_ALL(SaidRefusals);

}  // namespace
}  // namespace mirelo::testing
