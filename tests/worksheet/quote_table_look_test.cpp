// Formats and colours of the quote table.

#include "host/excel/border.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "worksheet/conditions_of.h"
#include "worksheet/go_test.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::IsEmpty;

const Variant kGeneral{"General"};
const Variant kNoFill{std::int32_t{xlColorIndexNone}};
const Variant kAtTheMiddle{std::int32_t{xlHAlignCenter}};
const Variant kByContent{std::int32_t{xlHAlignGeneral}};

class QuoteTableLook : public GoTest {
 protected:
  static Variant Index(std::int32_t value) { return value; }
};

TEST_F(QuoteTableLook, HasAFormatForEachColumn) {
  struct Format {
    const char* column;
    const char* number_format;
    Variant alignment;
  };
  const std::vector<Format> formats{
      {"Ticker", "General", kByContent},
      {"Tick", "General", kByContent},
      {"High", "0.000", kByContent},
      {"Low", "0.000", kByContent},
      {"Open", "0.000", kByContent},
      {"52w Low", "0.000", kByContent},
      {"52w High", "0.000", kByContent},
      {"Last", "0.000", kByContent},
      {"Bid", "0.000", kByContent},
      {"Ask", "0.000", kByContent},
      {"Volume", "#,##0", kByContent},
      {"BidSize", "#,##0", kByContent},
      {"AskSize", "#,##0", kByContent},
      {"LastVolume", "#,##0", kByContent},
      {"AvgTrade", "#,##0", kByContent},
      {"NumTrades", "#,##0", kByContent},
      {"Date", "mm/dd/yyyy", kAtTheMiddle},
      {"Time", "hh:mm:ss", kAtTheMiddle},
      {"Change", "+ 0.000;- 0.000", kAtTheMiddle},
  };
  std::string columns;
  for (const Format& format : formats) columns += (columns.empty() ? "" : ",") + std::string(format.column);
  Columns(columns);
  Save("ListLeft", "");
  Save("txtDecimalPlaces", 3);
  Go({"A", "B"});
  for (std::size_t i = 0; i < formats.size(); ++i) {
    SCOPED_TRACE(formats[i].column);
    const auto cell = [&](std::int32_t row) {
      return Cell("A1")->Cells(row, static_cast<std::int32_t>(i) + 1);
    };
    for (const std::int32_t row : {3, 4}) {
      EXPECT_EQ(cell(row)->NumberFormat(), Variant(formats[i].number_format));
      EXPECT_EQ(cell(row)->HorizontalAlignment(), formats[i].alignment);
      EXPECT_EQ(ConditionsOf(*cell(row)),
                formats[i].column == std::string("Change") ? kRisesAndFalls : Texts());
    }
    EXPECT_EQ(cell(2)->NumberFormat(), kGeneral);
    EXPECT_EQ(cell(5)->NumberFormat(), kGeneral);
  }
}

TEST_F(QuoteTableLook, TellsColumnsByTheirExactNames) {
  Columns("Ticker,LAST,change");
  Go({"A"});
  EXPECT_EQ(Cell("B3")->NumberFormat(), kGeneral);
  EXPECT_EQ(Cell("C3")->NumberFormat(), kGeneral);
  EXPECT_THAT(ConditionsOf(*Cell("C3")), IsEmpty());
}

TEST_F(QuoteTableLook, ColoursRisesAndFallsHoweverOftenItIsBuilt) {
  Columns("Ticker,Change,Last");
  for (int i = 0; i < 3; ++i) Go({"A", "B"});
  EXPECT_EQ(ConditionsOf(*Cell("B3:B4")), kRisesAndFalls);
  for (const char* beside : {"A3", "C3", "B2", "B5"}) EXPECT_THAT(ConditionsOf(*Cell(beside)), IsEmpty());
}

TEST_F(QuoteTableLook, HasNoConditionsWithoutChanges) {
  Columns("Ticker,Last,Tick");
  Go({"A", "B"});
  EXPECT_THAT(ConditionsOf(*Cell("A1:Z50")), IsEmpty());
}

TEST_F(QuoteTableLook, HasTheColoursOfItsStyle) {
  const struct {
    const char* style;
    std::int32_t header;
    std::int32_t odd;
  } styles[] = {{"Blue", 47, 24}, {"Green", 50, 35}, {"Yellow", 16, 36}};
  Columns("Ticker,Last");
  for (const auto& c : styles) {
    SCOPED_TRACE(c.style);
    Go({"A", "B", "C"}, [&](frmMirelo& form) { form.ComStyle.Text(c.style); });
    for (const char* header : {"A2", "B2"}) {
      EXPECT_EQ(Cell(header)->Font()->ColorIndex(), Index(2));
      EXPECT_EQ(Cell(header)->Interior()->ColorIndex(), Index(c.header));
      EXPECT_EQ(Cell(header)->Font()->Bold(), Variant(true));
      EXPECT_EQ(Cell(header)->HorizontalAlignment(), kAtTheMiddle);
    }
    EXPECT_EQ(Cell("A3:B3")->Interior()->ColorIndex(), Index(c.odd));
    EXPECT_EQ(Cell("A4:B4")->Interior()->ColorIndex(), Index(2));
    EXPECT_EQ(Cell("A5:B5")->Interior()->ColorIndex(), Index(c.odd));
    EXPECT_EQ(Cell("C2:C5")->Interior()->ColorIndex(), kNoFill);
    EXPECT_EQ(Cell("A6:B6")->Interior()->ColorIndex(), kNoFill);
    EXPECT_EQ(Cell("A3:B5")->Font()->Bold(), Variant(false));
  }
}

TEST_F(QuoteTableLook, HasAFrameAndThinLinesInside) {
  Columns("Ticker,Last,Bid");
  Go({"A", "B"});
  const auto expect = [&](const char* cell, XlBordersIndex edge, XlBorderWeight weight, std::int32_t color) {
    SCOPED_TRACE(std::string(cell) + " " + std::to_string(edge));
    const auto border = Cell(cell)->Borders(edge);
    EXPECT_EQ(border->LineStyle(), Index(xlContinuous));
    EXPECT_EQ(border->Weight(), Index(weight));
    EXPECT_EQ(border->ColorIndex(), Index(color));
  };
  for (const char* cell : {"A2", "B2", "C2"}) expect(cell, xlEdgeTop, xlMedium, 16);
  for (const char* cell : {"A4", "B4", "C4"}) expect(cell, xlEdgeBottom, xlMedium, 16);
  for (const char* cell : {"A2", "A3", "A4"}) expect(cell, xlEdgeLeft, xlMedium, 16);
  for (const char* cell : {"C2", "C3", "C4"}) expect(cell, xlEdgeRight, xlMedium, 16);
  for (const char* cell : {"A2", "B3"}) expect(cell, xlEdgeRight, xlThin, 15);
  for (const char* cell : {"A2", "B3", "C3"}) expect(cell, xlEdgeBottom, xlThin, 15);
}

TEST_F(QuoteTableLook, IsPlainWithoutAStyleButForItsFormats) {
  Columns("Ticker,Last,Change");
  Go({"A", "B"}, [](frmMirelo& form) { form.ComStyle.Text("None"); });
  EXPECT_EQ(Cell("A2:C4")->Interior()->ColorIndex(), kNoFill);
  EXPECT_EQ(Cell("A2:C4")->Font()->Bold(), Variant(false));
  EXPECT_EQ(Cell("A2:C4")->Font()->ColorIndex(), Index(xlColorIndexAutomatic));
  EXPECT_EQ(Cell("A2")->HorizontalAlignment(), kByContent);
  for (const auto edge : {xlEdgeLeft, xlEdgeTop, xlEdgeBottom, xlEdgeRight}) {
    EXPECT_EQ(Cell("A2:C4")->Borders(edge)->LineStyle(), Index(xlLineStyleNone));
  }
  EXPECT_EQ(Cell("B3")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(ConditionsOf(*Cell("C3")), kRisesAndFalls);
}

TEST_F(QuoteTableLook, OfAnEarlierStyleIsGoneWithoutOne) {
  Columns("Ticker,Last");
  Go({"A", "B"});
  Go({"A", "B"}, [](frmMirelo& form) { form.ComStyle.Text("None"); });
  EXPECT_EQ(Cell("A2:B4")->Interior()->ColorIndex(), kNoFill);
  EXPECT_EQ(Cell("A2:B4")->Font()->Bold(), Variant(false));
  EXPECT_EQ(Cell("A2:B4")->Borders(xlEdgeTop)->LineStyle(), Index(xlLineStyleNone));
}

}  // namespace
}  // namespace mirelo::testing
