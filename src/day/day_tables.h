#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "day/cell_buffer.h"
#include "day/day_charts.h"
#include "day/history_sheet.h"
#include "day/quote_board.h"
#include "day/quote_rows.h"
#include "day/quote_sheet.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo {
class cMirelo;
class cQTData;
}  // namespace mirelo
namespace mirelo::host::excel {
class Application;
}

namespace mirelo::day {

class QuoteTrail;

// The tables of a working day, as Go has left them in the workbook: the quote table, and the vertical tables
// of those tickers that have one. Quotes are taken one by one and written together.
class DayTables {
 public:
  // Error 9 when the active workbook has no quote table. Both must outlive this.
  DayTables(host::excel::Application& application, cMirelo& facade);
  // Quotes that were taken and not written by then never will be.
  ~DayTables();
  DayTables(const DayTables&) = delete;
  DayTables& operator=(const DayTables&) = delete;

  const std::vector<std::string>& Tickers() const { return table_.Tickers(); }
  const std::vector<std::string>& Columns() const { return table_.Columns(); }
  // What stands above the quote table.
  std::string Title() const { return table_.Title(); }
  // What is known of each ticker; the cells hold it as of the last Write.
  const QuoteRows& Rows() const { return board_.Rows(); }
  // The names of the vertical tables, in the order of their tickers.
  std::vector<std::string> HistorySheets() const;

  // Whether the table has a column for anything that a streamed quote brings.
  bool ShowsStreamed() const { return board_.ShowsQuotes(); }

  // Notes there what becomes of quotes. It must outlive this.
  void Follow(const QuoteTrail& trail);

  // A streamed quote. History gets a row. It goes to the first row of its ticker alone. False for a
  // ticker that the table does not have, which is passed over.
  bool Take(const cQTData& quote);
  // A quote that was asked for, of the ticker with this number, counted from 0. False where it is the one
  // before once more, of which history gets no row. Texts that are too long for cells are cut.
  bool Take(std::size_t ticker, QuoteRow row);

  // Somebody else has changed the workbook, or may have: the next Write looks where the tables stand now.
  // Changes that come of a Write are none of these.
  void LookAgain() { looks_again_ = looks_again_ || !is_writing_; }

  // Whether quotes were taken that are not written, to the quote table or to a history.
  bool HasNews() const { return unwritten_ > 0 || !touched_.empty(); }
  // Writes what was taken. The result is how many quotes that were. Error 9 where the quote table is gone.
  // When that takes longer than `at_most` of the processor's time, histories with their charts wait for the
  // next call, all but one at least; the quote table never does.
  std::int64_t Write(std::optional<std::chrono::milliseconds> at_most = std::nullopt);
  // Fits the widths of the quote table's columns to what they hold.
  void Fit() { table_.Fit(); }

  // What does not reach the cells as it came, since the last call: a sentence for each ticker and column that
  // was cut, once, and one for a row that is gone.
  std::vector<std::string> TellLosses() { return std::exchange(untold_, {}); }
  // Whether any history has charts, and what has become of those (DayCharts::TellNews).
  bool HasCharts() const { return !charts_.IsEmpty(); }
  std::vector<std::string> TellOfCharts() { return charts_.TellNews(); }
  // How many sheets have no room for more history.
  int FullSheets() const { return full_sheets_; }

 private:
  void Cut(std::size_t ticker, QuoteRow& row);
  void Note(std::size_t ticker);
  void FindTables();
  void WriteCells(std::optional<std::chrono::milliseconds> at_most);
  bool IsTouched(std::size_t ticker) const;
  bool IsNew(const QuoteRow& row, const QuoteRow& before) const;

  host::excel::Application& application_;
  QuoteSheet table_;
  QuoteBoard board_;
  std::vector<MakesRow> makes_row_;                     // by the columns
  std::vector<std::optional<HistorySheet>> histories_;  // by the ticker's number
  CellBuffer buffer_;
  DayCharts charts_;
  std::deque<std::size_t> touched_;  // of them, those with rows to write, from the one that waits longest
  std::int64_t unwritten_ = 0;
  std::set<std::pair<std::size_t, std::size_t>> cuts_;  // numbers of ticker and column
  std::vector<std::string> untold_;
  bool looks_again_ = false;
  bool is_writing_ = false;
  int full_sheets_ = 0;

  // A ticker on the trail: what came of it since the last Write.
  struct Followed {
    std::int64_t quotes = 0;        // those that are new
    bool is_written_again = false;  // by one that is not
    std::string later_rows;         // where the ticker stands again, for a person
  };
  void NoteWritten(std::size_t ticker, const Followed& followed) const;
  void NoteUnwritten(const std::string& why);
  std::string FateInHistory(std::size_t ticker, const Followed& followed) const;
  std::string RowsBehind(std::size_t ticker) const;

  const QuoteTrail* trail_ = nullptr;
  std::map<std::size_t, Followed> followed_;
};

}  // namespace mirelo::day
