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

constexpr std::int32_t kFieldRow = 2;
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
    : sheet_(std::move(sheet)),
      limit_(std::max(limit, 0)),
      most_rows_(sheet_->Rows()->Count() - kFirstHistoryRow + 1) {
  for (std::int32_t column = 1;; ++column) {
    const std::string field = TextOf(*sheet_->Cells(kFieldRow, column));
    if (field.empty()) break;
    fields_.push_back(field);
    sources_.push_back(IndexOf(columns, field));
  }
  if (!fields_.empty()) ReadHistory();
}

// What was written before goes on. Its last row is that of the last cell in use, as far as all fields are
// empty below it.
void HistorySheet::ReadHistory() {
  const auto width = static_cast<std::int32_t>(fields_.size());
  const std::int32_t last = sheet_->Cells(1, 1)->SpecialCells(excel::xlCellTypeLastCell)->Row();
  if (last < kFirstHistoryRow) return;
  const Variant block =
      sheet_->Cells(kFirstHistoryRow, 1)->Resize(last - kFirstHistoryRow + 1, width)->Value();
  const auto cell = [&](std::int32_t r, std::int32_t c) {
    const Variant& value = block.IsArray() ? block.AsArray()(r, c) : block;
    return value.IsText() ? Variant(std::string("'").append(value.ToText()))
                          : value;  // it goes back as it is
  };
  for (std::int32_t r = last - kFirstHistoryRow + 1; r >= 1 && row_count_ == 0; --r) {
    for (std::int32_t c = 1; c <= width; ++c) {
      if (!cell(r, c).IsEmpty()) row_count_ = r;
    }
  }
  if (limit_ == 0) return;
  for (std::int32_t r = 1; r <= row_count_; ++r) {
    for (std::int32_t c = 1; c <= width; ++c) cells_.push_back(cell(r, c));
  }
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
  const auto width = static_cast<std::int32_t>(fields_.size());
  const auto block = sheet_->Cells(written_row_, 1)->Resize(written_height_, width);
  return sheet_->Name() + "!" + block->Address(false, false);
}

void HistorySheet::DropRows(std::size_t first, std::size_t count) {
  const auto from = cells_.begin() + static_cast<std::ptrdiff_t>(first * fields_.size());
  cells_.erase(from, from + static_cast<std::ptrdiff_t>(count * fields_.size()));
}

bool HistorySheet::Write(CellBuffer& buffer) {
  written_height_ = 0;
  rows_lost_ = std::exchange(dropped_, 0);
  if (waiting_ == 0) return true;
  bool fits = true;
  if (limit_ == 0) {
    const std::int32_t room = most_rows_ - row_count_;
    fits = waiting_ <= static_cast<std::size_t>(room);
    if (!fits) {
      rows_lost_ = waiting_ - static_cast<std::size_t>(room);
      DropRows(static_cast<std::size_t>(room), rows_lost_);
    }
    WriteFrom(kFirstHistoryRow + row_count_, 0, buffer);
    row_count_ += static_cast<std::int32_t>(KeptRows());
    cells_.clear();
  } else if (KeptRows() <= static_cast<std::size_t>(limit_)) {
    WriteFrom(kFirstHistoryRow + row_count_, KeptRows() - waiting_, buffer);
    row_count_ = static_cast<std::int32_t>(KeptRows());
  } else {
    // The formats stay where they are, so the values move up past them.
    DropRows(0, KeptRows() - static_cast<std::size_t>(limit_));
    WriteFrom(kFirstHistoryRow, 0, buffer);
    if (row_count_ > limit_) {
      sheet_->Cells(kFirstHistoryRow + limit_, 1)
          ->Resize(row_count_ - limit_, static_cast<std::int32_t>(fields_.size()))
          ->ClearContents();
    }
    row_count_ = limit_;
  }
  waiting_ = 0;
  return fits;
}

void HistorySheet::WriteFrom(std::int32_t row, std::size_t first, CellBuffer& buffer) {
  if (first >= KeptRows()) return;
  const auto height = static_cast<std::int32_t>(KeptRows() - first);
  const auto width = static_cast<std::int32_t>(fields_.size());
  VariantArray& block = buffer.Renew(height, width);
  auto cell = cells_.begin() + static_cast<std::ptrdiff_t>(first * fields_.size());
  for (std::int32_t r = 1; r <= height; ++r) {
    for (std::int32_t c = 1; c <= width; ++c, ++cell) {
      if (limit_ == 0) {
        block(r, c) = std::move(*cell);  // it is not kept
      } else {
        block(r, c) = *cell;
      }
    }
  }
  written_row_ = row;
  written_height_ = height;
  sheet_->Cells(row, 1)->Resize(height, width)->Value(buffer.Block());
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
  if (!std::exchange(is_header_fitted_, true)) FitToRows(kFieldRow, 1);
  FitToRows(row, height);
}

// Columns that are wide enough stay as they are: the person may have made them so.
void HistorySheet::FitToRows(std::int32_t row, std::int32_t height) {
  const auto width = static_cast<std::int32_t>(fields_.size());
  std::vector<double> before;
  for (std::int32_t column = 1; column <= width; ++column)
    before.push_back(sheet_->Cells(1, column)->ColumnWidth().ToDouble());
  sheet_->Cells(row, 1)->Resize(height, width)->Columns()->AutoFit();
  for (std::int32_t column = 1; column <= width; ++column) {
    const auto cell = sheet_->Cells(1, column);
    const double least = before[static_cast<std::size_t>(column) - 1];
    if (cell->ColumnWidth().ToDouble() < least) cell->ColumnWidth(least);
  }
}

}  // namespace mirelo::day
