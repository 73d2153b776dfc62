#include "person/go_costs.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/sheet_names.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "snapshot/column_vocabulary.h"
#include "worksheet/quote_table.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo {

namespace excel = host::excel;

namespace {

constexpr std::size_t kMostAddresses = 3;

using Sheet = std::shared_ptr<excel::Worksheet>;

Sheet FindSheet(excel::Workbook& workbook, const std::string& name) {
  const auto sheets = workbook.Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    if (auto sheet = sheets->Item(i); EqualText(sheet->Name(), name)) return sheet;
  }
  return nullptr;
}

// The cells of a sheet from A1 to its last one, or of its first rows alone, as texts.
class Cells {
 public:
  explicit Cells(excel::Worksheet& sheet, std::int32_t most_rows = std::numeric_limits<std::int32_t>::max()) {
    const auto last = sheet.Cells(1, 1)->SpecialCells(excel::xlCellTypeLastCell);
    rows_ = std::min(last->Row(), most_rows);
    columns_ = last->Column();
    values_ = sheet.Cells(1, 1)->Resize(rows_, columns_)->Value();
  }
  std::int32_t Rows() const { return rows_; }
  std::int32_t Columns() const { return columns_; }
  bool IsEmpty(std::int32_t row, std::int32_t column) const {
    return row > rows_ || column > columns_ || At(row, column).IsEmpty();
  }
  std::string Text(std::int32_t row, std::int32_t column) const {
    if (IsEmpty(row, column)) return {};
    try {
      return At(row, column).ToText();
    } catch (const RuntimeError&) {
      return "?";  // an error value
    }
  }

 private:
  const Variant& At(std::int32_t row, std::int32_t column) const {
    return values_.IsArray() ? values_.AsArray()(row, column) : values_;
  }

  std::int32_t rows_ = 0;
  std::int32_t columns_ = 0;
  Variant values_;
};

// The quote table that stands on the sheet, as the dialog reads it.
struct OldTable {
  explicit OldTable(const Cells& cells) {
    for (; !cells.IsEmpty(kHeaderRow, columns + 1); ++columns) {
    }
    if (columns == 0) return;
    for (last_row = kHeaderRow; !cells.IsEmpty(last_row + 1, 1); ++last_row) {
    }
    for (std::int32_t column = 1; column <= columns; ++column)
      known += IsColumn(cells.Text(kHeaderRow, column)) ? 1 : 0;
  }
  static bool IsColumn(const std::string& header) { return FindColumn(UCase(header)) != nullptr; }
  bool Holds(const Cells& cells, std::int32_t row, std::int32_t column) const {
    return row <= last_row && column <= columns && IsColumn(cells.Text(kHeaderRow, column));
  }

  std::int32_t columns = 0;
  std::int32_t known = 0;     // of them
  std::int32_t last_row = 0;  // of its tickers
};

bool IsPlanned(const GoPlan& plan, const std::string& ticker) {
  return std::ranges::any_of(plan.tickers, [&](const auto& t) { return EqualText(t.name, ticker); });
}

void AddLongTickers(const GoPlan& plan, std::vector<std::string>& costs) {
  for (const GoPlan::Ticker& ticker : plan.tickers) {
    if (Len(ticker.name) <= kLongestTicker) continue;
    costs.push_back(ticker.name + " will be missing when the dialog opens again: it reads tickers of up to " +
                    std::to_string(kLongestTicker) + " characters.");
  }
}

void AddDroppedTickers(const GoPlan& plan, const Cells& cells, const OldTable& table,
                       std::vector<std::string>& costs) {
  for (std::int32_t row = kFirstTickerRow; row <= table.last_row; ++row) {
    const std::string ticker = cells.Text(row, 1);
    if (Len(ticker) > kLongestTicker && !IsPlanned(plan, ticker))
      costs.push_back(ticker +
                      " goes from the quote table: the dialog has not read it, as it has more than " +
                      std::to_string(kLongestTicker) + " characters.");
  }
}

// Go clears a block as high as the new table, and as wide as the wider one of both. Below, it deletes rows
// down to the next filled cell of the first column.
void AddNotes(excel::Worksheet& sheet, const GoPlan& plan, const Cells& cells, const OldTable& table,
              std::vector<std::string>& costs) {
  const auto last_ticker = kHeaderRow + static_cast<std::int32_t>(plan.tickers.size());
  const std::int32_t width = std::max(table.known, static_cast<std::int32_t>(plan.columns.size()));
  std::int32_t deleted_to = last_ticker + 1;
  while (deleted_to <= cells.Rows() && cells.IsEmpty(deleted_to, 1)) ++deleted_to;
  if (deleted_to > cells.Rows()) deleted_to = last_ticker;

  std::vector<std::string> addresses;
  std::size_t count = 0;
  for (std::int32_t row = kHeaderRow; row <= std::min(deleted_to, cells.Rows()); ++row) {
    const std::int32_t end = row <= last_ticker ? std::min(width, cells.Columns()) : cells.Columns();
    for (std::int32_t column = 1; column <= end; ++column) {
      if (cells.IsEmpty(row, column) || table.Holds(cells, row, column)) continue;
      if (++count <= kMostAddresses) addresses.push_back(sheet.Cells(row, column)->Address(false, false));
    }
  }
  if (count == 0) return;
  costs.push_back("What stands under or beside the quote table is cleared: " + Join(addresses, ", ") +
                  (count > kMostAddresses ? " and " + std::to_string(count - kMostAddresses) + " more" : "") +
                  ".");
}

void AddLossesOfWork(const LossesOfSheet& losses, std::vector<std::string>& costs) {
  if (!losses) return;
  std::ranges::move(losses(kQuoteTable), std::back_inserter(costs));
}

// Formats reach further down than what they are for.
std::int32_t HistoryRows(const Cells& cells) {
  std::int32_t rows = 0;
  for (std::int32_t row = kFirstHistoryRow; row <= cells.Rows(); ++row) {
    bool is_empty = true;
    for (std::int32_t column = 1; column <= cells.Columns(); ++column)
      is_empty = is_empty && cells.IsEmpty(row, column);
    rows += is_empty ? 0 : 1;
  }
  return rows;
}

// The headers of a history are compared one by one with the ticked fields, and those behind the last ticked
// one are left. Its rows, which may be many, are looked at only where they are cleared.
void AddHistory(excel::Workbook& workbook, const GoPlan::Ticker& ticker, const std::string& name,
                std::vector<std::string>& costs) {
  const Sheet sheet = FindSheet(workbook, name);
  if (!sheet) return;
  const Cells top(*sheet, kHeaderRow);
  if (!EqualText(top.Text(1, 1), kSetUpMark)) return;
  bool is_same = true;
  std::vector<std::string> headers;
  for (std::int32_t column = 1; !top.IsEmpty(kHeaderRow, column); ++column)
    headers.push_back(top.Text(kHeaderRow, column));
  for (std::size_t i = 0; i < ticker.fields.size(); ++i)
    is_same = is_same && i < headers.size() && EqualText(headers[i], ticker.fields[i]);
  if (is_same) return;
  const std::int32_t rows = HistoryRows(Cells(*sheet));
  if (rows == 0) return;
  costs.push_back("The history on " + name + " is cleared, " + std::to_string(rows) +
                  " rows of it, as its fields change from " + Join(headers, ",") + " to " +
                  Join(ticker.fields, ",") + ".");
}

void AddHistories(excel::Workbook& workbook, const GoPlan& plan, std::vector<std::string>& costs) {
  for (const GoPlan::Ticker& ticker : plan.tickers) {
    if (ticker.fields.empty()) continue;
    const std::string name = VerticalSheetName(plan.vertical_sheet, ticker.name);
    const bool can_be =
        Len(name) <= excel::kLongestSheetName && name.find_first_of(excel::kInNoSheetName) == name.npos;
    if (can_be) {
      AddHistory(workbook, ticker, name, costs);
    } else {
      costs.push_back(ticker.name + " gets no history: no sheet can be named " + name +
                      ". Go leaves an empty sheet in its place.");
    }
  }
}

}  // namespace

GoPlan PlanOf(const frmMirelo& form) {
  GoPlan plan;
  const bool is_vertical = form.chkVerTable.Value() == 1;
  const std::int32_t ticker_column = is_vertical ? 1 : 0;
  for (std::int32_t row = 1; row < form.FG.Rows(); ++row) {
    GoPlan::Ticker& ticker = plan.tickers.emplace_back();
    ticker.name = form.FG.TextMatrix(row, ticker_column);
    for (std::int32_t col = kFirstField; is_vertical && col < form.FG.Cols(); ++col) {
      const std::string& header = form.FG.TextMatrix(0, col);
      if (IsTickText(form.FG.TextMatrix(row, col)) && !EqualText(header, kChartHeader))
        ticker.fields.push_back(header);
    }
  }
  plan.columns = form.ListRight.Items();
  plan.vertical_sheet = Trim(form.txtVerticalSheet.Text());
  return plan;
}

std::vector<std::string> GoCosts(excel::Workbook& workbook, const GoPlan& plan, const LossesOfSheet& losses) {
  std::vector<std::string> costs;
  AddLongTickers(plan, costs);
  if (const Sheet sheet = FindSheet(workbook, kQuoteTable)) {
    const Cells cells(*sheet);
    const OldTable table(cells);
    AddDroppedTickers(plan, cells, table, costs);
    AddNotes(*sheet, plan, cells, table, costs);
    AddLossesOfWork(losses, costs);
  }
  AddHistories(workbook, plan, costs);
  return costs;
}

}  // namespace mirelo
