#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "day/quote_rows.h"

namespace mirelo::host::excel {
class Application;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::day {

class CellBuffer;

// The quote table on its worksheet as Go has built it: the tickers in column A from row 3 on, the columns
// from the left under their headers. This fills it in place of the macros.
class QuoteSheet {
 public:
  // Error 9 when the active workbook has no quote table. `columns` are the table's, the ticker's among them.
  QuoteSheet(host::excel::Application& application, std::vector<std::string> columns);

  // The tickers of column A, from row 3 down to the first cell without one.
  const std::vector<std::string>& Tickers() const { return tickers_; }
  const std::vector<std::string>& Columns() const { return columns_; }

  // The text above the table, which says how it is kept up to date.
  std::string Title() const;

  // Notes that the cells of this ticker, counted from 0, are to be written.
  void Touch(std::size_t row);
  // Writes the rows that were touched, each run of them as one block. Column A stays as it is.
  void Write(const QuoteRows& rows, CellBuffer& buffer);

  // The cells of this ticker, for a person: "Dovanta2_Quotes!B5:H5"; empty where the table has no column but
  // the ticker's.
  std::string CellsOf(std::size_t row) const;

  // Makes the columns as wide as what they hold.
  void Fit();

 private:
  void WriteBlock(const QuoteRows& rows, std::size_t first, std::size_t end, CellBuffer& buffer);

  std::shared_ptr<host::excel::Worksheet> sheet_;
  std::vector<std::string> columns_;
  std::vector<std::string> tickers_;
  std::vector<bool> touched_;
};

}  // namespace mirelo::day
