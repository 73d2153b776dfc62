#include "day/day_tables.h"

#include <algorithm>
#include <utility>

#include "automation/text.h"
#include "core/cMirelo.h"
#include "day/quote_trail.h"
#include "host/excel/application.h"
#include "host/excel/worksheet.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo::day {

namespace {

// Holds the screen still while cells are written.
class StillScreen {
 public:
  explicit StillScreen(host::excel::Application& application)
      : application_(application), before_(application.ScreenUpdating()) {
    application_.ScreenUpdating(false);
  }
  ~StillScreen() {
    try {
      application_.ScreenUpdating(before_);
    } catch (...) {  // the spreadsheet is gone
    }
  }
  StillScreen(const StillScreen&) = delete;
  StillScreen& operator=(const StillScreen&) = delete;

 private:
  host::excel::Application& application_;
  bool before_;
};

}  // namespace

DayTables::DayTables(host::excel::Application& application, cMirelo& facade)
    : application_(application),
      table_(application, VisibleColumns()),
      board_(table_.Columns(), table_.Tickers()),
      charts_(application, facade, table_.Columns()) {
  for (const std::string& column : Columns()) {
    const ColumnRow* const row = FindColumn(UCase(column));
    makes_row_.push_back(row == nullptr ? MakesRow::Never : row->makes_row);
  }
  const bool vertical = facade.VerticalTable() != 0;
  histories_.resize(Tickers().size());
  for (std::size_t ticker = 0; ticker < Tickers().size(); ++ticker) {
    const std::string& name = Tickers()[ticker];
    if (!vertical) continue;
    if (auto history = HistorySheet::Find(application_, VerticalSheetName(facade.UserVerticalSheet(), name),
                                          Columns(), facade.RowsLimit())) {
      charts_.Add(ticker, history->Sheet());
      histories_[ticker] = std::move(history);
    }
  }
}

std::vector<std::string> DayTables::HistorySheets() const {
  std::vector<std::string> names;
  for (const auto& history : histories_) {
    if (history) names.push_back(history->Sheet()->Name());
  }
  return names;
}

void DayTables::Follow(const QuoteTrail& trail) {
  trail_ = &trail;
  for (std::size_t ticker = 0; ticker < Tickers().size(); ++ticker) {
    if (trail.Follows(Tickers()[ticker])) followed_.emplace(ticker, 0);
  }
  for (const std::string& ticker : trail.Tickers()) {
    const bool has_row =
        std::ranges::any_of(Tickers(), [&](const auto& name) { return EqualText(name, ticker); });
    if (!has_row) trail.Note(ticker, "the quote table has no row of this ticker");
  }
}

void DayTables::Take(const cQTData& quote) {
  const std::size_t ticker = board_.Take(quote);
  if (ticker < Tickers().size()) Note(ticker);
}

void DayTables::Take(std::size_t ticker, QuoteRow row) {
  if (ticker >= Tickers().size()) return;
  Cut(ticker, row);
  const bool is_new = IsNew(row, Rows()[ticker]);
  board_.Put(ticker, std::move(row));
  if (is_new) return Note(ticker);
  table_.Touch(ticker);
  if (followed_.contains(ticker))
    trail_->Note(Tickers()[ticker], "nothing is new but the time, so history gets no row");
}

void DayTables::Cut(std::size_t ticker, QuoteRow& row) {
  for (std::size_t c = 0; c < std::min(row.size(), Columns().size()); ++c) {
    if (!IsTooLong(row[c].text())) continue;
    row[c] = ReadValue(ReadingOf(Columns()[c]), std::string(Left(row[c].text(), kLongestText)));
    if (!cuts_.emplace(ticker, c).second) continue;
    untold_cuts_.push_back(Tickers()[ticker] + ": " + Columns()[c] + " is too long for a cell; cut to " +
                           std::to_string(kLongestText) + " characters");
  }
}

void DayTables::Note(std::size_t ticker) {
  table_.Touch(ticker);
  ++unwritten_;
  if (const auto followed = followed_.find(ticker); followed != followed_.end()) ++followed->second;
  auto& history = histories_[ticker];
  if (!history) return;
  if (!history->HasNews()) touched_.push_back(ticker);
  const QuoteRow& row = Rows()[ticker];
  history->Append(row);
  charts_.Take(ticker, row);
}

bool DayTables::IsNew(const QuoteRow& row, const QuoteRow& before) const {
  for (std::size_t c = 1; c < row.size(); ++c) {
    switch (makes_row_[c]) {
      case MakesRow::Never:
        break;
      case MakesRow::WhenOther:
        if (row[c] != before[c]) return true;
        break;
      case MakesRow::WhenNotZero:
        if (row[c].ToNumber() != 0) return true;
        break;
    }
  }
  return false;
}

// Of quotes that were written together all are in the history, and the newest in the table.
void DayTables::NoteWritten(std::size_t ticker) const {
  const std::int64_t quotes = followed_.at(ticker);
  std::string line = "written to " + table_.CellsOf(ticker);
  if (quotes > 1) line += ", the newest of " + std::to_string(quotes) + " quotes since the last time";
  if (const auto& history = histories_[ticker]; !history) {
    line += "; it has no history";
  } else if (const std::string cells = history->CellsWritten(); !cells.empty()) {
    line += "; history at the foot of " + cells;
  } else {
    line += "; its history has no room left";
  }
  trail_->Note(Tickers()[ticker], line);
}

std::int64_t DayTables::Write() {
  const StillScreen still(application_);
  table_.Write(Rows(), buffer_);
  for (const std::size_t ticker : touched_) {
    if (!histories_[ticker]->Write(buffer_)) ++full_sheets_;
  }
  charts_.Update(touched_);
  for (auto& [ticker, quotes] : followed_) {
    if (quotes > 0) NoteWritten(ticker);
    quotes = 0;
  }
  touched_.clear();
  return std::exchange(unwritten_, 0);
}

}  // namespace mirelo::day
