#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "day/caption_row.h"
#include "day/quote_rows.h"

namespace mirelo::host::excel {
class Application;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::day {

class CellBuffer;

// The quote table on its worksheet. Go builds it with the tickers in column A from row 3 on and the columns
// from the left under their captions. This fills it in place of the macros, wherever a person has moved its
// parts: captions and tickers say which cells are a quote's.
class QuoteSheet {
 public:
  // Error 9 when the active workbook has no quote table. `columns` are the table's, the ticker's among them.
  QuoteSheet(host::excel::Application& application, std::vector<std::string> columns);

  // The tickers of column A, from row 3 down to the first cell without one.
  const std::vector<std::string>& Tickers() const { return tickers_; }
  const std::vector<std::string>& Columns() const { return columns_; }

  // The text above the table, which says how it is kept up to date; empty where that row is gone.
  std::string Title() const;

  // Finds captions and tickers again, after changes that somebody else has made on the sheet. What has lost
  // its caption or its ticker gets no quotes until that is back. Error 9 where the table itself is gone.
  void LookAgain();
  // Whether the ticker, counted from 0, has a row.
  bool HasRow(std::size_t ticker) const { return rows_[ticker] != 0; }

  // Notes that the cells of this ticker, counted from 0, are to be written.
  void Touch(std::size_t row);
  // Writes the rows that were touched, each run of them as one block. Column A stays as it is.
  void Write(const QuoteRows& rows, CellBuffer& buffer);

  // The cells of this ticker, for a person: "Dovanta2_Quotes!B5:H5"; empty where the table has no column but
  // the ticker's, or not the ticker.
  std::string CellsOf(std::size_t row) const;

  // Makes the columns as wide as what they hold.
  void Fit();

 private:
  void StandAt(CaptionRow captions);
  std::int32_t FindTickers(std::int32_t most_rows);
  void WriteBlock(const QuoteRows& rows, std::size_t first, std::size_t end, const CaptionRow::Run& columns,
                  CellBuffer& buffer);

  std::shared_ptr<host::excel::Worksheet> sheet_;
  std::vector<std::string> columns_;
  std::vector<std::string> tickers_;
  CaptionRow captions_;
  std::vector<CaptionRow::Run> values_;  // the columns but the ticker's
  std::vector<std::int32_t> rows_;       // on the sheet, by the ticker; 0 for one that is gone
  std::vector<bool> touched_;
};

}  // namespace mirelo::day
