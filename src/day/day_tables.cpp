#include "day/day_tables.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/cMirelo.h"
#include "day/meanwhile.h"
#include "day/quote_trail.h"
#include "day/worked_time.h"
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

DayTables::~DayTables() {
  try {
    NoteUnwritten("the day is over before it could be written");
  } catch (const std::exception&) {  // there is no memory to tell of it
  }
}

void DayTables::Follow(const QuoteTrail& trail) {
  trail_ = &trail;
  for (std::size_t ticker = 0; ticker < Tickers().size(); ++ticker) {
    if (trail.Follows(Tickers()[ticker])) followed_[ticker].later_rows = RowsBehind(ticker);
  }
  for (const std::string& ticker : trail.Tickers()) {
    const bool has_row =
        std::ranges::any_of(Tickers(), [&](const auto& name) { return EqualText(name, ticker); });
    if (!has_row) trail.Note(ticker, "the quote table has no row of this ticker");
  }
}

// The cells of the same ticker further down.
std::string DayTables::RowsBehind(std::size_t ticker) const {
  std::vector<std::string> cells;
  for (std::size_t other = ticker + 1; other < Tickers().size(); ++other) {
    if (EqualText(Tickers()[other], Tickers()[ticker])) cells.push_back(table_.CellsOf(other));
  }
  return Join(cells, ", ");
}

bool DayTables::Take(const cQTData& quote) {
  const std::size_t ticker = board_.Take(quote);
  if (ticker >= Tickers().size()) {
    if (trail_ != nullptr)
      trail_->Note(quote.Symbol(), "the quote table has no row of this ticker; the quote is left out");
    return false;
  }
  if (const auto followed = followed_.find(ticker); followed != followed_.end()) {
    if (!board_.Shows(quote)) trail_->Note(Tickers()[ticker], "no column of the quote table shows any of it");
    if (const std::string& rows = followed->second.later_rows; !rows.empty())
      trail_->Note(Tickers()[ticker], "the ticker stands again at " + rows +
                                          ", which get nothing: a streamed quote goes to its first row");
  }
  Note(ticker);
  return true;
}

bool DayTables::Take(std::size_t ticker, QuoteRow row) {
  if (ticker >= Tickers().size()) return false;
  Cut(ticker, row);
  const bool is_new = IsNew(row, Rows()[ticker]);
  board_.Put(ticker, std::move(row));
  if (is_new) {
    Note(ticker);
    return true;
  }
  table_.Touch(ticker);
  if (const auto followed = followed_.find(ticker); followed != followed_.end()) {
    followed->second.is_written_again = true;
    trail_->Note(Tickers()[ticker], "nothing is new but the time, so history gets no row");
  }
  return false;
}

void DayTables::Cut(std::size_t ticker, QuoteRow& row) {
  for (std::size_t c = 0; c < std::min(row.size(), Columns().size()); ++c) {
    if (!IsTooLong(row[c].text())) continue;
    row[c] = ReadValue(ReadingOf(Columns()[c]), std::string(Left(row[c].text(), kLongestText)));
    if (!cuts_.emplace(ticker, c).second) continue;
    untold_.push_back(Tickers()[ticker] + ": " + Columns()[c] + " is too long for a cell; cut to " +
                      std::to_string(kLongestText) + " characters");
  }
}

void DayTables::Note(std::size_t ticker) {
  table_.Touch(ticker);
  ++unwritten_;
  if (const auto followed = followed_.find(ticker); followed != followed_.end()) ++followed->second.quotes;
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

std::int64_t DayTables::Write(std::optional<std::chrono::milliseconds> at_most) {
  const Meanwhile writing(is_writing_);  // charts are painted at the end of the next one
  const StillScreen still(application_);
  try {
    WriteCells(at_most);
  } catch (const std::exception&) {
    NoteUnwritten("it could not be written: " + CurrentError().Description());
    throw;
  }
  for (auto& [ticker, followed] : followed_) {
    if (IsTouched(ticker)) continue;  // its way has not ended
    NoteWritten(ticker, followed);
    followed.quotes = 0;
    followed.is_written_again = false;
  }
  return std::exchange(unwritten_, 0);
}

void DayTables::WriteCells(std::optional<std::chrono::milliseconds> at_most) {
  const auto start = TimeWorked();
  if (looks_again_) FindTables();
  table_.Write(Rows(), buffer_);
  while (!touched_.empty()) {
    const std::size_t ticker = touched_.front();
    if (!histories_[ticker]->Write(buffer_)) ++full_sheets_;
    touched_.pop_front();
    // The classes update charts by the places where Go has put the rows.
    if (histories_[ticker]->IsAsBuilt()) charts_.Update(ticker);
    if (at_most && TimeWorked() - start >= *at_most) return;
  }
}

bool DayTables::IsTouched(std::size_t ticker) const {
  return std::ranges::find(touched_, ticker) != touched_.end();
}

// Histories when they have something to write.
void DayTables::FindTables() {
  std::vector<bool> before;
  for (std::size_t ticker = 0; ticker < Tickers().size(); ++ticker) before.push_back(table_.HasRow(ticker));
  table_.LookAgain();
  looks_again_ = false;
  for (std::size_t ticker = 0; ticker < Tickers().size(); ++ticker) {
    if (before[ticker] && !table_.HasRow(ticker))
      untold_.push_back("The quote table has no row of " + Tickers()[ticker] + " any more");
    if (histories_[ticker]) histories_[ticker]->LookAgain();
  }
}

// Of quotes that were written together the newest is in the table.
void DayTables::NoteWritten(std::size_t ticker, const Followed& followed) const {
  if (followed.quotes == 0 && !followed.is_written_again) return;
  const std::string cells = table_.CellsOf(ticker);
  std::string line = cells.empty() ? "written to no cell, as the quote table has no column but the ticker's"
                                   : "written to " + cells;
  if (followed.quotes > 1)
    line += ", the newest of " + std::to_string(followed.quotes) + " quotes since the last time";
  trail_->Note(Tickers()[ticker], line + FateInHistory(ticker, followed));
}

// They are all in the history, as far as it has room.
std::string DayTables::FateInHistory(std::size_t ticker, const Followed& followed) const {
  const auto& history = histories_[ticker];
  if (!history) return "; it has no history";
  if (followed.quotes == 0) return "; not to its history";
  const std::string cells = history->CellsWritten();
  if (cells.empty()) return "; its history has no room left";
  std::string fate = "; history at the foot of " + cells;
  if (history->RowsLost() == 0) return fate;
  const std::string lost = std::to_string(history->RowsLost());
  return fate + (history->IsLimited()
                     ? ", without the " + lost + " oldest of them, which are beyond its limit"
                     : ", without the " + lost + " newest of them, as it has no room left");
}

// The trail has told of these quotes; the cells are written with the next ones.
void DayTables::NoteUnwritten(const std::string& why) {
  for (auto& [ticker, followed] : followed_) {
    if (followed.quotes > 0 || followed.is_written_again) trail_->Note(Tickers()[ticker], why);
    followed.quotes = 0;
    followed.is_written_again = false;
  }
}

}  // namespace mirelo::day
