#include "day/quote_journal.h"

#include <algorithm>
#include <utility>

#include "automation/iso_text.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "automation/whole_number.h"
#include "day/column_type.h"
#include "day/quote_board.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::day {

using host::DataColumn;
using host::DataRow;
using host::DataType;
using host::DataValue;

namespace {

// Of quotes that have gathered after a failure: where the disk has room for some of them, these are kept.
constexpr std::size_t kMostAtOnce = 1000;

constexpr std::size_t kBeforeTheFields = 1;  // when it came; the ticker is the first field

// Of a file that another process has locked, at the day's end.
constexpr std::int32_t kLocked = 70;
constexpr int kLastTries = 20;

std::vector<DataColumn> MakeColumns() {
  std::vector<DataColumn> columns{{"Arrived", DataType::Text}};
  for (const std::string& name : QuoteBoard::AllColumns()) {
    columns.push_back({name, TypeOf(FindColumn(UCase(name))->kind)});
  }
  return columns;
}

std::string Digits(std::int64_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

// UTC, to the millisecond.
std::string TextOf(QuoteJournal::Moment moment) {
  namespace chrono = std::chrono;
  const auto milliseconds = chrono::floor<chrono::milliseconds>(moment);
  const auto midnight = chrono::floor<chrono::days>(milliseconds);
  const chrono::year_month_day day(midnight);
  const chrono::hh_mm_ss time(milliseconds - midnight);
  return Digits(static_cast<int>(day.year()), 4) + '-' + Digits(static_cast<unsigned>(day.month()), 2) + '-' +
         Digits(static_cast<unsigned>(day.day()), 2) + 'T' + Digits(time.hours().count(), 2) + ':' +
         Digits(time.minutes().count(), 2) + ':' + Digits(time.seconds().count(), 2) + '.' +
         Digits(time.subseconds().count(), 3) + 'Z';
}

DataValue NumberOf(double number) {
  if (const auto whole = WholeNumber(number)) return *whole;
  return number;
}

DataValue ValueOf(const QuoteValue& value, DataType type) {
  switch (value.kind()) {
    case QuoteValue::Kind::Number:
      if (type == DataType::Real) return value.ToNumber();
      return NumberOf(value.ToNumber());
    case QuoteValue::Kind::Moment:
      return IsoText(value.ToCell().ToDate());
    case QuoteValue::Kind::Text:
      return value.text();
    case QuoteValue::Kind::Nothing:
      break;
  }
  return {};
}

}  // namespace

const std::vector<DataColumn>& QuoteJournal::Columns() {
  static const std::vector<DataColumn> columns = MakeColumns();
  return columns;
}

QuoteJournal::QuoteJournal(host::MessageLoop& loop, Open open, std::function<Moment()> now)
    : loop_(loop), open_(std::move(open)), now_(std::move(now)), fields_(kColumnVocabulary.size()) {}

QuoteJournal::~QuoteJournal() { loop_.StopTimer(timer_); }

void QuoteJournal::Begin() try { OpenJournal(); } catch (const host::JournalRefused&) {
  throw;
} catch (const std::exception&) {
  NoteFailure();
}

void QuoteJournal::Take(const cQTData& quote) {
  LetQuoteFields(quote, fields_);
  DataRow row = NewRow(quote.Symbol());
  for (std::size_t field = 1; field < fields_.size(); ++field) {
    const std::size_t place = field + kBeforeTheFields;
    row[place] = ValueOf(fields_[field], Columns()[place].type);
  }
  Add(std::move(row));
}

void QuoteJournal::Take(const std::string& ticker, const std::vector<std::string>& columns,
                        const QuoteRow& values) {
  DataRow row = NewRow(ticker);
  for (std::size_t c = 0; c < std::min(columns.size(), values.size()); ++c) {
    const ColumnRow* const column = FindColumn(UCase(columns[c]));
    if (column == nullptr || column->kind == ColumnKind::Ticker) continue;
    const auto place = static_cast<std::size_t>(column->reading) - 1 + kBeforeTheFields;
    row[place] = ValueOf(values[c], Columns()[place].type);
  }
  Add(std::move(row));
}

void QuoteJournal::End() {
  loop_.StopTimer(std::exchange(timer_, 0));
  Write();
  for (int tries = 1; tries < kLastTries && !waiting_.empty() && trouble_number_ == kLocked; ++tries) Write();
  lost_ += std::ssize(waiting_);
  waiting_.clear();
  loop_.StopTimer(std::exchange(timer_, 0));
  if (journal_) journal_->Settle();
  journal_.reset();
}

DataRow QuoteJournal::NewRow(const std::string& ticker) {
  DataRow row(Columns().size());
  row[0] = TextOf(now_());
  row[kBeforeTheFields] = ticker;
  return row;
}

void QuoteJournal::Add(DataRow row) {
  if (waiting_.size() >= kMostWaiting) {
    ++lost_;
    return;
  }
  waiting_.push_back(std::move(row));
  if (timer_ == 0) WriteLater();
}

void QuoteJournal::WriteLater() {
  timer_ = loop_.StartTimer(kPause, [this] {
    timer_ = 0;
    Write();
  });
}

void QuoteJournal::Write() noexcept {
  if (waiting_.empty()) return;
  try {
    Append();
  } catch (...) {
    journal_.reset();
    NoteFailure();
  }
}

void QuoteJournal::Append() {
  if (!journal_) OpenJournal();
  while (!waiting_.empty()) {
    const std::size_t count = std::min(waiting_.size(), kMostAtOnce);
    journal_->Append({waiting_.data(), count});
    kept_ += static_cast<std::int64_t>(count);
    waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(count));
  }
  trouble_number_ = 0;
  if (!std::exchange(trouble_, {}).empty()) Recovered.Raise();
}

void QuoteJournal::OpenJournal() {
  journal_ = open_();
  if (const std::string mended = journal_->Mended(); !mended.empty()) Mended.Raise(mended);
}

// Of the error that is being handled. What whoever is told raises is dropped.
void QuoteJournal::NoteFailure() noexcept {
  try {
    const RuntimeError error = CurrentError();
    if (timer_ == 0) WriteLater();
    trouble_number_ = error.Number();
    if (std::exchange(trouble_, error.Description()) != error.Description()) Failed.Raise(error);
  } catch (...) {
  }
}

}  // namespace mirelo::day
