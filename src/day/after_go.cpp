#include "day/after_go.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
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

// Nothing where the workbook has none of this name.
std::shared_ptr<excel::Worksheet> SheetNamed(excel::Application& application, const std::string& name) {
  const auto sheets = application.Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    auto sheet = sheets->Item(i);
    if (EqualText(sheet->Name(), name)) return sheet;
  }
  return nullptr;
}

// Go, too, lets a history be that takes nothing, since it is protected; those who write quotes to it tell of
// that.
void LetTickerOfHistory(excel::Worksheet& sheet, const std::string& ticker) try {
  if (EqualText(TextOf(*sheet.Range(kSetUpCell)), kSetUpMark)) LetTicker(*sheet.Range(kTickerCell), ticker);
} catch (const RuntimeError&) {
}

// A person who ignored what went wrong may have committed without a quote table.
void LetTickers(excel::Application& application, const std::vector<std::string>& tickers,
                const std::string& prefix) {
  const auto table = SheetNamed(application, kQuoteTable);
  if (table == nullptr) return;
  auto row = kFirstTickerRow;
  for (const std::string& ticker : tickers) {
    if (!LetTicker(*table->Cells(row++, 1), ticker)) continue;
    if (const auto history = SheetNamed(application, VerticalSheetName(prefix, ticker)))
      LetTickerOfHistory(*history, ticker);
  }
}

}  // namespace

void FinishGo(const cMirelo& facade) {
  excel::Application& application = *facade.m_ObjExcelApplication();
  LetTickers(application, facade.TickersOfGo(), facade.UserVerticalSheet());
  UncoverFirstBars(application);
}

}  // namespace mirelo::day
