#include "day/after_go.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/text.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "day/chart_labels.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/cell_text.h"
#include "worksheet/quote_table.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo::day {

namespace excel = host::excel;

namespace {

// Whether the cell had held something else. The apostrophe says that what follows is text.
bool LetTicker(excel::Range& cell, const std::string& ticker) {
  const Variant value = cell.Value();
  if (value.IsText() && value.ToText() == ticker) return false;
  cell.Value("'" + ticker);
  return true;
}

void LetTickerOfHistory(excel::Application& application, const std::string& name, const std::string& ticker) {
  const auto sheets = application.Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    const auto sheet = sheets->Item(i);
    if (!EqualText(sheet->Name(), name)) continue;
    if (EqualText(TextOf(*sheet->Range(kSetUpCell)), kSetUpMark))
      LetTicker(*sheet->Range(kTickerCell), ticker);
    return;
  }
}

void LetTickers(excel::Application& application, const std::vector<std::string>& tickers,
                const std::string& prefix) {
  if (tickers.empty()) return;
  const auto table = application.Worksheets()->Item(kQuoteTable);
  auto row = kFirstTickerRow;
  for (const std::string& ticker : tickers) {
    if (LetTicker(*table->Cells(row++, 1), ticker))
      LetTickerOfHistory(application, VerticalSheetName(prefix, ticker), ticker);
  }
}

}  // namespace

void FinishGo(const cMirelo& facade) {
  excel::Application& application = *facade.m_ObjExcelApplication();
  LetTickers(application, facade.TickersOfGo(), facade.UserVerticalSheet());
  UncoverFirstBars(application);
}

}  // namespace mirelo::day
