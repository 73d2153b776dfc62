#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "charts/chart_test.h"
#include "dialog/vertical_grid_test.h"

namespace mirelo::testing {

// The dialog over a workbook with a quote table and the vertical tables of A, B and C, which have a price and
// a volume in every row through row 12.
class BuildTest : public VerticalGridTest {
 protected:
  static constexpr std::int32_t kPrice = 2;
  static constexpr std::int32_t kVolume = 3;

  BuildTest() {
    for (const char* ticker : {"A", "B", "C"}) AddTable(ticker);
  }

  // Opens the dialog with these fields behind "Ticker", and with charts that nobody paints.
  void OpenForCharts(const std::string& fields = "Last,LastVolume") {
    Save("ChartStyle", "None");
    OpenWithSettings(fields);
  }
  // The same with the settings as they are.
  void OpenWithSettings(const std::string& fields = "Last,LastVolume") {
    OpenWithCharts(fields, {"A", "B", "C"});
    sheets->Item("Sheet1")->Name("Dovanta2_Quotes");
  }

  std::shared_ptr<host::excel::Worksheet> AddTable(const std::string& ticker,
                                                   const Texts& headers = {"Ticker", "Last", "LastVolume"}) {
    const auto table = sheets->Add();
    table->Name("Quotes_Vertical(" + ticker + ")");
    std::int32_t column = 0;
    for (const std::string& header : headers) table->Cells(2, ++column)->Value(header);
    for (const std::int32_t filled : {kPrice, kVolume}) {
      FillColumn(*table, filled, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    }
    return table;
  }
  std::shared_ptr<host::excel::Worksheet> Table(const std::string& ticker) {
    return sheets->Item("Quotes_Vertical(" + ticker + ")");
  }

  void Build(const Texts& tickers) { form.Build_Charts(VariantArray::OfTexts(tickers)); }
  Texts Titles(const std::string& ticker) { return TitlesOn(*Table(ticker)); }
  std::vector<std::shared_ptr<host::excel::Chart>> Charts(const std::string& ticker) {
    return ChartsOn(*Table(ticker));
  }

  std::shared_ptr<host::excel::Application> application = spreadsheet.Application();
  std::shared_ptr<host::excel::Workbook> book = application->ActiveWorkbook();
  std::shared_ptr<host::excel::Worksheets> sheets = book->Worksheets();
};

inline const Texts kBoth{"Last", "LastVolume"};

}  // namespace mirelo::testing
