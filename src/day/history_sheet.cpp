#include "day/history_sheet.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "automation/text.h"
#include "day/cell_buffer.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/cell_text.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo::day {

namespace excel = host::excel;

namespace {

constexpr std::int32_t kRowsAtOnce = 1000;
constexpr std::int32_t kMostDigits = std::numeric_limits<double>::max_exponent10 + 1;

std::shared_ptr<excel::Worksheet> FindSheet(excel::Application& application, const std::string& name) {
  const auto sheets = application.Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    if (auto sheet = sheets->Item(i); EqualText(sheet->Name(), name)) return sheet;
  }
  return nullptr;
}

std::size_t IndexOf(const std::vector<std::string>& columns, const std::string& field) {
  const auto found =
      std::ranges::find_if(columns, [&](const auto& column) { return EqualText(column, field); });
  return static_cast<std::size_t>(found - columns.begin());
}

// Those in front of the decimal separator, at least one. Asked for each number of a day, most of which have
// few.
std::int32_t WholeDigits(double number) {
  std::int32_t digits = 1;
  for (double left = std::fabs(number); left >= 10 && digits < kMostDigits; left /= 10) ++digits;
  return digits;
}

}  // namespace

std::optional<HistorySheet> HistorySheet::Find(excel::Application& application, const std::string& name,
                                               const std::vector<std::string>& columns, std::int32_t limit) {
  auto sheet = FindSheet(application, name);
  if (!sheet || !EqualText(TextOf(*sheet->Range(kSetUpCell)), kSetUpMark)) return std::nullopt;
  HistorySheet history(std::move(sheet), columns, limit);
  if (history.fields_.empty()) return std::nullopt;
  return history;
}

HistorySheet::HistorySheet(std::shared_ptr<excel::Worksheet> sheet, const std::vector<std::string>& columns,
                           std::int32_t limit)
    : sheet_(std::move(sheet)), limit_(std::max(limit, 0)), sheet_rows_(sheet_->Rows()->Count()) {
  for (std::int32_t column = 1;; ++column) {
    const std::string field = TextOf(*sheet_->Cells(kFieldRow, column));
    if (field.empty()) break;
    fields_.push_back(field);
    sources_.push_back(IndexOf(columns, field));
  }
  captions_ = CaptionsFromTheLeft(kFieldRow, fields_.size());
  runs_ = captions_.Runs(0);
  if (!fields_.empty()) ReadHistory();
}

// For the cells of those fields that stand on the sheet, in blocks from the left.
template <class Visit>
void HistorySheet::ForEachBlock(std::int32_t row, std::int32_t height, Visit&& visit) const {
  for (const CaptionRow::Run& run : runs_)
    visit(*sheet_->Cells(row, run.column)->Resize(height, static_cast<std::int32_t>(run.count)), run);
}

// What was written before goes on. Its last row is that of the last cell in use, as far as all fields are
// empty below it.
void HistorySheet::ReadHistory() {
  row_count_ = 0;
  const auto width = static_cast<std::ptrdiff_t>(fields_.size());
  const auto is_filled = [](const Variant& cell) { return !cell.IsEmpty(); };
  std::int32_t last = sheet_->Cells(1, 1)->SpecialCells(excel::xlCellTypeLastCell)->Row();
  while (last >= FirstRow() && row_count_ == 0) {
    const std::int32_t first = std::max(FirstRow(), last - kRowsAtOnce + 1);
    const std::deque<Variant> cells = ReadRows(first, last - first + 1);
    if (const auto filled = std::find_if(cells.rbegin(), cells.rend(), is_filled); filled != cells.rend())
      row_count_ = first - FirstRow() + 1 + static_cast<std::int32_t>((cells.rend() - filled - 1) / width);
    last = first - 1;
  }
  if (limit_ > 0 && row_count_ > 0) cells_ = ReadRows(FirstRow(), row_count_);
}

// Row after row. Texts as they go back unchanged.
std::deque<Variant> HistorySheet::ReadRows(std::int32_t row, std::int32_t height) const {
  std::deque<Variant> cells(static_cast<std::size_t>(height) * fields_.size());
  ForEachBlock(row, height, [&](excel::Range& range, const CaptionRow::Run& run) {
    const Variant block = range.Value();
    for (std::size_t r = 0; r < static_cast<std::size_t>(height); ++r) {
      for (std::size_t c = 0; c < run.count; ++c) {
        const Variant& value = block.IsArray() ? block.AsArray()(static_cast<std::int32_t>(r) + 1,
                                                                 static_cast<std::int32_t>(c) + 1)
                                               : block;
        cells[r * fields_.size() + run.first + c] =
            value.IsText() ? Variant(std::string("'").append(value.ToText())) : value;
      }
    }
  });
  return cells;
}

// Most of what people do is done elsewhere, so the whole history is read only where its foot has moved.
void HistorySheet::FindHistory() {
  looks_again_ = false;
  CaptionRow found = FindCaptions(*sheet_, fields_, captions_);
  if (found == captions_ && EndsWhereItDid()) return;
  captions_ = std::move(found);
  runs_ = captions_.Runs(0);
  DropRows(0, KeptRows() - waiting_);
  const std::deque<Variant> waiting = std::exchange(cells_, {});
  if (captions_.row > 0) ReadHistory();
  cells_.insert(cells_.end(), waiting.begin(), waiting.end());
}

bool HistorySheet::EndsWhereItDid() const {
  const auto is_empty = [](const Variant& cell) { return cell.IsEmpty(); };
  const std::int32_t behind = FirstRow() + row_count_;
  if (behind <= sheet_rows_ && !std::ranges::all_of(ReadRows(behind, 1), is_empty)) return false;
  return row_count_ == 0 || !std::ranges::all_of(ReadRows(behind - 1, 1), is_empty);
}

void HistorySheet::Append(const QuoteRow& row) {
  for (std::size_t field = 0; field < fields_.size(); ++field) {
    const std::size_t source = sources_[field];
    cells_.push_back(source < row.size() ? row[source].ToCell() : Variant());
    if (source < row.size()) NoteLength(field, row[source]);
  }
  ++waiting_;
  if (limit_ > 0 && waiting_ > static_cast<std::size_t>(limit_)) {  // it would be gone before it was seen
    DropRows(KeptRows() - waiting_, 1);
    --waiting_;
    ++dropped_;
  }
}

std::string HistorySheet::CellsWritten() const {
  if (written_height_ == 0) return {};
  std::vector<std::string> blocks;
  ForEachBlock(written_row_, written_height_, [&](excel::Range& block, const CaptionRow::Run&) {
    blocks.push_back(sheet_->Name() + "!" + block.Address(false, false));
  });
  return Join(blocks, ", ");
}

void HistorySheet::DropRows(std::size_t first, std::size_t count) {
  const auto from = cells_.begin() + static_cast<std::ptrdiff_t>(first * fields_.size());
  cells_.erase(from, from + static_cast<std::ptrdiff_t>(count * fields_.size()));
}

bool HistorySheet::Write(CellBuffer& buffer) {
  written_height_ = 0;
  rows_lost_ = std::exchange(dropped_, 0);
  if (waiting_ == 0) return true;
  if (looks_again_) FindHistory();
  if (runs_.empty()) {
    const std::size_t lost = std::exchange(waiting_, 0);
    DropRows(KeptRows() - lost, lost);
    rows_lost_ += lost;
    return true;
  }
  // What is kept changes only once it stands in the sheet, which may refuse it.
  bool fits = true;
  if (limit_ == 0) {
    const auto room = static_cast<std::size_t>(sheet_rows_ - FirstRow() + 1 - row_count_);
    const std::size_t written = std::min(waiting_, room);
    fits = waiting_ <= room;
    if (!fits) rows_lost_ = waiting_ - room;
    WriteFrom(FirstRow() + row_count_, 0, written, buffer);
    row_count_ += static_cast<std::int32_t>(written);
    cells_.clear();
  } else if (KeptRows() <= static_cast<std::size_t>(limit_)) {
    WriteFrom(FirstRow() + row_count_, KeptRows() - waiting_, KeptRows(), buffer);
    row_count_ = static_cast<std::int32_t>(KeptRows());
  } else {
    // The formats stay where they are, so the values move up past them.
    const std::size_t above = KeptRows() - static_cast<std::size_t>(limit_);
    WriteFrom(FirstRow(), above, KeptRows(), buffer);
    if (row_count_ > limit_) {
      ForEachBlock(FirstRow() + limit_, row_count_ - limit_,
                   [](excel::Range& rows, const CaptionRow::Run&) { rows.ClearContents(); });
    }
    DropRows(0, above);
    row_count_ = limit_;
  }
  waiting_ = 0;
  return fits;
}

void HistorySheet::WriteFrom(std::int32_t row, std::size_t first, std::size_t end, CellBuffer& buffer) {
  if (first >= end) return;
  const auto height = static_cast<std::int32_t>(end - first);
  const auto exchange = [&](VariantArray& block, const CaptionRow::Run& run, auto&& how) {
    auto begin = cells_.begin() + static_cast<std::ptrdiff_t>(first * fields_.size() + run.first);
    for (std::int32_t r = 1; r <= height; ++r) {
      for (std::int32_t c = 1; c <= static_cast<std::int32_t>(run.count); ++c) how(block(r, c), begin[c - 1]);
      if (r < height) begin += static_cast<std::ptrdiff_t>(fields_.size());
    }
  };
  const auto move = [](Variant& from, Variant& to) { to = std::move(from); };
  ForEachBlock(row, height, [&](excel::Range& range, const CaptionRow::Run& run) {
    VariantArray& block = buffer.Renew(height, static_cast<std::int32_t>(run.count));
    if (limit_ > 0 || runs_.size() > 1) {
      exchange(block, run, [](Variant& in_block, Variant& kept) { in_block = kept; });
      range.Value(buffer.Block());
      return;
    }
    exchange(block, run, [&](Variant& in_block, Variant& kept) { move(kept, in_block); });  // it is not kept
    try {
      range.Value(buffer.Block());
    } catch (...) {
      exchange(block, run, [&](Variant& in_block, Variant& kept) { move(in_block, kept); });
      throw;
    }
  });
  written_row_ = row;
  written_height_ = height;
  if (std::exchange(is_too_narrow_, false)) Widen(row, height);
}

// How long a number is shown hangs on its whole digits, that of a moment on its format alone.
void HistorySheet::NoteLength(std::size_t field, const QuoteValue& value) {
  longest_.resize(fields_.size());
  std::int32_t length = 0;
  if (value.kind() == QuoteValue::Kind::Number) {
    const double number = value.ToNumber();
    length = WholeDigits(number) + (number < 0 ? 1 : 0);
  } else {
    length = Len(value.text());
  }
  if (length <= longest_[field]) return;
  longest_[field] = length;
  is_too_narrow_ = true;
}

void HistorySheet::Widen(std::int32_t row, std::int32_t height) {
  if (!std::exchange(is_header_fitted_, true)) FitToRows(captions_.row, 1);
  FitToRows(row, height);
}

// Columns that are wide enough stay as they are: the person may have made them so.
void HistorySheet::FitToRows(std::int32_t row, std::int32_t height) {
  ForEachBlock(row, height, [&](excel::Range& cells, const CaptionRow::Run& run) {
    const std::int32_t end = run.column + static_cast<std::int32_t>(run.count);
    std::vector<double> before;
    for (std::int32_t column = run.column; column < end; ++column)
      before.push_back(sheet_->Cells(1, column)->ColumnWidth().ToDouble());
    cells.Columns()->AutoFit();
    for (std::int32_t column = run.column; column < end; ++column) {
      const auto cell = sheet_->Cells(1, column);
      const double least = before[static_cast<std::size_t>(column - run.column)];
      if (cell->ColumnWidth().ToDouble() < least) cell->ColumnWidth(least);
    }
  });
}

}  // namespace mirelo::day
