// What becomes of a day's cells when the spreadsheet program refuses them, a cell being edited there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "day/cell_buffer.h"
#include "day/history_sheet.h"
#include "day/quote_sheet.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "late_bound.h"
#include "support/error_number.h"
#include "support/facade_test.h"
#include "worksheet/quote_table.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

class RefusedWrites : public FacadeTest {
 protected:
  // From now on so many blocks are taken, and the next one is refused.
  void RefuseBehind(int blocks) {
    taken_ = blocks;
    is_refusing_ = true;
  }
  void Assigning(std::string_view member) {
    if (!is_refusing_ || member != "Value" || taken_-- > 0) return;
    is_refusing_ = false;
    throw RuntimeError(50290, "a cell is being edited");
  }

  static day::QuoteRow Row(const char* ticker, double last) {
    return {day::QuoteValue::Text(ticker), day::QuoteValue(last)};
  }
  std::vector<double> Column(std::int32_t column, std::int32_t first, std::int32_t last) {
    std::vector<double> values;
    for (std::int32_t row = first; row <= last; ++row) {
      const Variant value = sheet_->Cells(row, column)->Value();
      values.push_back(value.IsEmpty() ? -1 : value.ToDouble());
    }
    return values;
  }

  day::HistorySheet History(std::int32_t limit) {
    sheet_->Range(kSetUpCell)->Value(kSetUpMark);
    sheet_->Range("A2")->Value("Last");
    return std::move(*day::HistorySheet::Find(*program_, sheet_->Name(), kColumns, limit));
  }
  void Append(day::HistorySheet& history, std::initializer_list<double> prices) {
    for (const double price : prices) history.Append(Row("MSFT", price));
  }

  const std::vector<std::string> kColumns{"Ticker", "Last"};
  int taken_ = 0;
  bool is_refusing_ = false;
  std::shared_ptr<host::excel::Application> program_ =
      CalledByNames(workbook::Spreadsheet::New().Application(), [this](auto member) { Assigning(member); });
  std::shared_ptr<host::excel::Worksheet> sheet_ = program_->Worksheets()->Item(1);
  day::CellBuffer buffer_;
};

TEST_F(RefusedWrites, OfTheQuoteTableAreMadeTheNextTime) {
  sheet_->Name(kQuoteTable);
  sheet_->Range("A2")->Value("Ticker");
  sheet_->Range("B2")->Value("Last");
  const char* const tickers[] = {"MSFT", "IBM", "ORCL"};
  for (int i = 0; i < 3; ++i) sheet_->Cells(3 + i, 1)->Value(tickers[i]);
  day::QuoteSheet table(*program_, kColumns);
  const day::QuoteRows rows{Row("MSFT", 1), Row("IBM", 2), Row("ORCL", 3)};
  table.Touch(0);
  table.Touch(2);
  RefuseBehind(1);
  EXPECT_EQ(NumberOf([&] { table.Write(rows, buffer_); }), 50290);
  EXPECT_THAT(Column(2, 3, 5), ElementsAre(1, -1, -1));
  table.Write(rows, buffer_);
  EXPECT_THAT(Column(2, 3, 5), ElementsAre(1, -1, 3));
}

// Texts are handed on without copies where the history keeps none.
TEST_F(RefusedWrites, OfAHistoryAreMadeTheNextTime) {
  auto history = History(0);
  const auto append = [&](const char* text) {
    history.Append({day::QuoteValue::Text("MSFT"), day::QuoteValue::Text(text)});
  };
  append("first");
  append("second");
  RefuseBehind(0);
  EXPECT_EQ(NumberOf([&] { history.Write(buffer_); }), 50290);
  EXPECT_TRUE(history.HasNews());
  append("third");
  EXPECT_TRUE(history.Write(buffer_));
  std::vector<std::string> texts;
  for (std::int32_t row = 3; row <= 6; ++row) texts.push_back(sheet_->Cells(row, 1)->Text());
  EXPECT_THAT(texts, ElementsAre("first", "second", "third", ""));
}

TEST_F(RefusedWrites, OfALimitedHistoryAreMadeTheNextTime) {
  auto history = History(3);
  Append(history, {1, 2, 3});
  history.Write(buffer_);
  Append(history, {4, 5});
  RefuseBehind(0);
  EXPECT_EQ(NumberOf([&] { history.Write(buffer_); }), 50290);
  EXPECT_THAT(Column(1, 3, 6), ElementsAre(1, 2, 3, -1));
  history.Write(buffer_);
  EXPECT_THAT(Column(1, 3, 6), ElementsAre(3, 4, 5, -1));
  Append(history, {6});
  history.Write(buffer_);
  EXPECT_THAT(Column(1, 3, 6), ElementsAre(4, 5, 6, -1));
}

}  // namespace
}  // namespace mirelo::testing
