#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/variant.h"
#include "day/caption_row.h"
#include "day/quote_rows.h"

namespace mirelo::host::excel {
class Application;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::day {

class CellBuffer;

// The vertical table of one ticker as Go has set it up. In place of the macros this appends a row of history
// for each quote: newest at the foot, in the order of the fields in row 2.
class HistorySheet {
 public:
  // The vertical table on the sheet of that name; nothing when there is no such sheet, or none that is set
  // up. `columns` are those of the rows to come. With a limit of 0 the history grows to the foot of the
  // sheet.
  static std::optional<HistorySheet> Find(host::excel::Application& application, const std::string& name,
                                          const std::vector<std::string>& columns, std::int32_t limit);

  const std::shared_ptr<host::excel::Worksheet>& Sheet() const { return sheet_; }

  // Somebody else has changed the workbook: the next Write looks where captions and rows stand. A field that
  // has lost its caption gets nothing until that is back.
  void LookAgain() { looks_again_ = true; }
  // Whether the captions stand where Go has put them.
  bool IsAsBuilt() const { return captions_ == CaptionsFromTheLeft(kFieldRow, fields_.size()); }

  // Notes a row that is to be written.
  void Append(const QuoteRow& row);
  bool HasNews() const { return waiting_ > 0; }
  // Writes what was appended, as one block, and widens columns that have got something wider than ever
  // before; none becomes narrower. Rows above the limit go, the oldest first. False when the sheet has no
  // room left for some of the rows. When the spreadsheet refuses the cells, the next Write has them again.
  bool Write(CellBuffer& buffer);
  // The cells that the last Write has filled, for a person: "Quotes_Vertical(MSFT)!A3:F22"; empty when it had
  // nothing to write or no room.
  std::string CellsWritten() const;
  // Of the rows that the last Write was to write, how many never reached the sheet: the oldest of them where
  // there were more than the limit, the newest where the sheet had no more room.
  std::size_t RowsLost() const { return rows_lost_; }
  bool IsLimited() const { return limit_ > 0; }

 private:
  static constexpr std::int32_t kFieldRow = 2;

  HistorySheet(std::shared_ptr<host::excel::Worksheet> sheet, const std::vector<std::string>& columns,
               std::int32_t limit);
  void ReadHistory();
  std::deque<Variant> ReadRows(std::int32_t row, std::int32_t height) const;
  void FindHistory();
  bool EndsWhereItDid() const;
  template <class Visit>
  void ForEachBlock(std::int32_t row, std::int32_t height, Visit&& visit) const;
  std::int32_t FirstRow() const { return captions_.row + 1; }
  std::size_t KeptRows() const { return cells_.size() / fields_.size(); }
  void DropRows(std::size_t first, std::size_t count);
  void WriteFrom(std::int32_t row, std::size_t first, std::size_t end, CellBuffer& buffer);
  void NoteLength(std::size_t field, const QuoteValue& value);
  void Widen(std::int32_t row, std::int32_t height);
  void FitToRows(std::int32_t row, std::int32_t height);

  std::shared_ptr<host::excel::Worksheet> sheet_;
  std::vector<std::string> fields_;
  CaptionRow captions_;                // of the fields
  std::vector<CaptionRow::Run> runs_;  // all that stand there
  bool looks_again_ = false;
  std::vector<std::size_t> sources_;  // the column that a field is taken from; past the last for none
  std::int32_t limit_;
  std::int32_t sheet_rows_;
  std::int32_t row_count_ = 0;  // of history on the sheet
  // Row after row, each with a cell for each field. With a limit all rows, of which the last `waiting_` are
  // not on the sheet yet; without one those alone.
  std::deque<Variant> cells_;
  std::size_t waiting_ = 0;
  std::size_t dropped_ = 0;          // rows that were appended and are beyond the limit, since the last Write
  std::size_t rows_lost_ = 0;        // at the last Write
  std::int32_t written_row_ = 0;     // where the last block written begins
  std::int32_t written_height_ = 0;  // of how many rows; 0 for none
  std::vector<std::int32_t> longest_;  // of each field, in characters of a value without its format
  bool is_too_narrow_ = true;          // as long as nothing has been written
  bool is_header_fitted_ = false;
};

}  // namespace mirelo::day
