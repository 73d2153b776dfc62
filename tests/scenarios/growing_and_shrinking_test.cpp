// Tickers and columns come and go between two Gos, in a workbook in which the person keeps other things too.

#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/shape.h"
#include "scenarios/go_again.h"
#include "scenarios/sheet_look.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

// A table of three tickers and four columns, A2:D5, and things of the person's own.
class Surroundings : public GoAgain {
 protected:
  static constexpr const char* kRight = "J1:L30";   // beside the table, at any width that it has here
  static constexpr const char* kBelow = "B20:H30";  // with nothing in column A

  Surroundings() {
    Save("ListLeft", "Ask,Date,Time,Tick,Volume,High");
    Save("ListRight", "Ticker,Last,Bid,Change");
    Save("RowsLimit", 6);
    Go([](frmMirelo& form) {
      AddTickers(form, {"MSFT", "IBM", "GE"});
      TickAll(form);
    });
    Edit([this] {
      for (const char* place : {kRight, kBelow}) Decorate(*Table()->Range(place));
      Table()->Range("C1")->Value("mine");  // beside the caption
      Table()->Range("A1")->Font()->Bold(true);
      const auto notes = Book()->Worksheets()->Add();
      notes->Name("Notes");
      Decorate(*notes->Range("A1:F12"));
    });
    right = LookOf(*Table()->Range(kRight));
    below = LookOf(*Table()->Range(kBelow));
    notes = LookOf(*Sheet("Notes"));
  }

  // Something of each kind, different in each cell of a part.
  static void Decorate(host::excel::Range& cells) {
    using namespace host::excel;
    const std::int32_t rows = cells.Rows()->Count();
    for (std::int32_t row = 1; row <= rows; ++row) {
      cells.Cells(row, 1)->Value("note " + std::to_string(row));
      cells.Cells(row, 2)->Value(row * 1.25);
    }
    cells.Cells(2, 2)->Resize(rows - 2, 2)->NumberFormat("0.000");
    cells.Cells(3, 1)->Resize(2, 3)->Interior()->ColorIndex(6);
    cells.Cells(4, 1)->Font()->ColorIndex(3);
    cells.Cells(4, 2)->Font()->Bold(true);
    cells.Cells(5, 3)->HorizontalAlignment(xlHAlignRight);
    cells.Cells(6, 1)->Resize(2, 2)->Borders(xlEdgeBottom)->LineStyle(xlDouble);
    cells.Cells(7, 3)->AddComment("a note of my own")->Shape()->ScaleWidth(1.5, msoFalse);
    cells.Cells(8, 2)
        ->Resize(2, 1)
        ->FormatConditions()
        ->Add(xlCellValue, xlLessEqual, "4")
        ->Font()
        ->ColorIndex(7);
  }

  Texts TableTexts(std::string_view first, std::int32_t rows, std::int32_t columns) {
    Texts texts;
    for (std::int32_t row = 1; row <= rows; ++row) {
      for (std::int32_t column = 1; column <= columns; ++column)
        texts.push_back(Table()->Range(first)->Cells(row, column)->Value().ToText());
    }
    return texts;
  }
  // Nothing of the person's has changed, but that what stood below the table has moved up so far.
  void ExpectUntouched(std::int32_t moved_up = 0) {
    EXPECT_THAT(Differences(notes, LookOf(*Sheet("Notes"))), IsEmpty());
    EXPECT_EQ(Table()->Range("C1")->Value(), Variant("mine"));
    EXPECT_EQ(Table()->Range("A1")->Font()->Bold(), Variant(true));
    const auto place = Table()->Range(kBelow);
    EXPECT_THAT(Differences(below, LookOf(*place->Cells(1 - moved_up, 1)->Resize(11, 7))), IsEmpty());
  }

  SheetLook right, below, notes;
};

TEST_F(Surroundings, StayWhenTickersAndColumnsCome) {
  Go([](frmMirelo& form) {
    AddTickers(form, {"ORCL", "DELL"});
    ShowColumn(form, "Ask");
    ShowColumn(form, "Volume");
  });
  EXPECT_THAT(TableTexts("A2", 1, 7), ElementsAre("Ticker", "Last", "Bid", "Change", "Ask", "Volume", ""));
  EXPECT_THAT(TableTexts("A3", 6, 1), ElementsAre("MSFT", "IBM", "GE", "ORCL", "DELL", ""));
  EXPECT_THAT(Differences(right, LookOf(*Table()->Range(kRight))), IsEmpty());
  ExpectUntouched();
}

TEST_F(Surroundings, StayWhenColumnsGo) {
  Edit([this] { Table()->Range("D4")->Value(0.25); });
  Go([](frmMirelo& form) {
    HideColumn(form, "Bid");
    HideColumn(form, "Change");
  });
  EXPECT_THAT(TableTexts("A2", 1, 4), ElementsAre("Ticker", "Last", "", ""));
  EXPECT_THAT(LookOf(*Table()->Range("D2:E5")), IsEmpty());  // C has the frame's line on its left
  EXPECT_THAT(Differences(right, LookOf(*Table()->Range(kRight))), IsEmpty());
  ExpectUntouched();
}

// Of the old rows one goes as a whole, with what the person had beside it; what is below moves up with it.
TEST_F(Surroundings, LoseTheRowThatWasTheTablesAndMoveUp) {
  Go([](frmMirelo& form) { RemoveTicker(form, 2); });
  EXPECT_THAT(TableTexts("A3", 3, 1), ElementsAre("MSFT", "GE", ""));
  ExpectUntouched(1);
  const auto beside = [&](std::int32_t row, std::int32_t rows) {
    return LookOf(*Table()->Range(kRight)->Cells(row, 1)->Resize(rows, 3));
  };
  SheetLook above;
  SheetLook behind;
  for (const auto& [address, look] : right) {
    const std::int32_t row = Variant(address.substr(4, address.find(' ', 4) - 4)).ToInt32();
    const std::string column = address.substr(address.find(" column"));
    if (row < 5) above[address] = look;
    if (row > 5) behind["row " + std::to_string(row - 5) + column] = look;
  }
  EXPECT_THAT(Differences(above, beside(1, 4)), IsEmpty());
  EXPECT_THAT(Differences(behind, beside(5, 25)), IsEmpty());
}

TEST_F(Surroundings, StayThroughManyDays) {
  Go([](frmMirelo& form) {
    AddTickers(form, {"ORCL"});
    ShowColumn(form, "Ask");
  });
  Go([](frmMirelo& form) {
    RemoveTicker(form, 4);
    HideColumn(form, "Ask");
  });
  EXPECT_THAT(TableTexts("A2", 5, 5), ElementsAreArray({"Ticker", "Last", "Bid", "Change", "",  //
                                                        "MSFT",   "",     "",    "",       "", "IBM", "", "",
                                                        "",       "",     "GE",  "",       "", "",    "",  //
                                                        "",       "",     "",    "",       ""}));
  ExpectUntouched(1);
}

// Vertical sheets

TEST_F(Surroundings, OfVerticalSheetsStayWhenOtherTickersCome) {
  Edit([this] {
    Vertical("IBM")->Range("A3")->Value(26.5);
    Decorate(*Vertical("IBM")->Range("F1:I12"));
  });
  const SheetLook ibm = LookOf(*Vertical("IBM"));
  Go([](frmMirelo& form) {
    AddTickers(form, {"ORCL"});
    Tick(form, 4, "Bid");
  });
  EXPECT_THAT(Differences(ibm, LookOf(*Vertical("IBM"))), IsEmpty());
  EXPECT_EQ(Vertical("ORCL")->Range("A2")->Value(), Variant("Bid"));
}

TEST_F(Surroundings, OfVerticalSheetsLoseTheirHistoryAloneWhenFieldsChange) {
  Edit([this] {
    Vertical("IBM")->Range("A3")->Value(26.5);
    Vertical("IBM")->Range("D3")->Value("mine");
    Decorate(*Vertical("IBM")->Range("F1:I12"));
  });
  const SheetLook own = LookOf(*Vertical("IBM")->Range("D1:I12"));
  Go([](frmMirelo& form) { HideColumn(form, "Last"); });
  EXPECT_EQ(Vertical("IBM")->Range("A2")->Value(), Variant("Bid"));
  EXPECT_TRUE(Vertical("IBM")->Range("A3")->Value().IsEmpty());
  EXPECT_THAT(Differences(own, LookOf(*Vertical("IBM")->Range("D1:I12"))), IsEmpty());
}

TEST_F(Surroundings, OfATickerThatGoesStayAndAreThereWhenItComesBack) {
  Edit([this] { Vertical("IBM")->Range("A3")->Value(26.5); });
  const SheetLook ibm = LookOf(*Vertical("IBM"));
  Go([](frmMirelo& form) { RemoveTicker(form, 2); });
  EXPECT_THAT(Differences(ibm, LookOf(*Vertical("IBM"))), IsEmpty());
  Go([](frmMirelo& form) { AddTickers(form, {"IBM"}); });
  Go([](frmMirelo& form) {
    ASSERT_EQ(form.FG.TextMatrix(3, 1), "IBM");
    for (const std::int32_t col : {2, 3, 4}) EXPECT_EQ(form.FG.TextMatrix(3, col), "-1");
  });
  EXPECT_THAT(Differences(ibm, LookOf(*Vertical("IBM"))), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
