#include "day/working_day.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "day/after_go.h"
#include "day/dialog_result.h"
#include "day/quote_journal.h"
#include "day/quote_trail.h"
#include "day/stored_source.h"
#include "day/worked_time.h"
#include "host/excel/application.h"
#include "wire/observed_sockets.h"

namespace mirelo::day {

namespace {

using Clock = std::chrono::steady_clock;

// Never more than a third of the time goes into writing: twice as long as a write took is waited before the
// next.
constexpr int kPauseForWriting = 2;

constexpr const char* kNothingShown =
    "No column of the quote table takes anything of a quote: quotes are counted, and nothing of them is "
    "shown";

bool IsUpdateOnce() { return DialogSetting("UpdateEvery").In(mGlobal::AppSettings()).ToText() == "0"; }

}  // namespace

WorkingDay::WorkingDay(host::MessageLoop& loop, wire::ObservedSockets& sockets, wire::MendedReplies& replies,
                       std::shared_ptr<host::excel::Application> application)
    : loop_(loop), sockets_(sockets), replies_(replies), application_(std::move(application)) {
  facade_.ExcelApplication(Variant(application_));
  facade_.DovantaFormatUserDate(kDateFormat);
  failure_.Came.Subscribe([this] { Over.Raise(); });
}

// The stream first, since its last quotes may start a timer.
WorkingDay::~WorkingDay() {
  stream_.reset();
  for (const auto timer : {asking_, writing_}) loop_.StopTimer(timer);
}

std::int32_t WorkingDay::ShowDialog() {
  result_ = facade_.LoadFrmMirelo();
  if (IsCommitted(result_)) FinishGo(facade_);
  return result_;
}

void WorkingDay::TakeSettings() {
  const bool is_to_stream = !IsUpdateOnce() && facade_.Seconds() == 0;
  result_ = is_to_stream ? kToStream : kToAsk;
}

void WorkingDay::Follow(QuoteTrail& trail) {
  trail_ = &trail;
  trail.Watch(sockets_);
}

void WorkingDay::Start() {
  tables_.emplace(*application_, facade_);
  if (trail_ != nullptr) tables_->Follow(*trail_);
  if (tables_->Tickers().empty()) throw RuntimeError(9, "The quote table holds no tickers");
  if (result_ == kToStream) return Listen();
  snapshot_.emplace(facade_, replies_, tables_->Tickers());
  if (trail_ != nullptr) snapshot_->Follow(*trail_);
  snapshot_->Told.Subscribe([this](const std::string& text) { Status.Raise(text); });
  if (!snapshot_->ShowsQuotes()) Status.Raise(kNothingShown);
  Ask();
}

void WorkingDay::RunUntil(const std::function<bool()>& done) {
  const auto ended = [&] { return over_ || failure_.HasCome() || done(); };
  if (stream_) {
    stream_->RunUntil(ended);
  } else {
    loop_.RunUntil(ended);
  }
  failure_.Raise();
}

void WorkingDay::Stop() {
  Abandon();
  if (tables_) Write();
}

void WorkingDay::Abandon() {
  is_stopped_ = true;
  for (const auto timer : {asking_, writing_}) loop_.StopTimer(timer);
  if (stream_) stream_->Stop();
}

void WorkingDay::TakeFailure(const std::exception_ptr& failure) {
  if (stream_) return stream_->TakeFailure(failure);
  failure_.Keep(failure);
}

void WorkingDay::RaiseFailure() {
  if (stream_) stream_->RaiseFailure();
  failure_.Raise();
}

// --- Quotes that are asked for -------------------------------------------------------------------------

// While it waits for QuoteTracker the loop runs, and somebody may stop the day.
void WorkingDay::Ask() {
  struct Asking {
    explicit Asking(WorkingDay& asking) : day(asking) { day.Asks.Raise(); }
    ~Asking() { day.Asked.Raise(); }
    WorkingDay& day;
  };
  const auto rows = [this] {
    const Asking asking(*this);
    return snapshot_->Fetch();
  }();
  if (is_stopped_) return;
  if (rows) {
    std::int64_t count = 0;
    for (std::size_t ticker = 0; ticker < rows->size(); ++ticker) {
      if (snapshot_->HasQuote(ticker)) {
        TakeAsked(ticker, (*rows)[ticker]);
        ++count;
      } else if (trail_ != nullptr) {
        trail_->Note(snapshot_->Tickers()[ticker], "that is no quote, so what its cells hold stays");
      }
    }
    Status.Raise(std::to_string(count) + (count == 1 ? " quote" : " quotes"));
    came_.Beat(count);
    Write();
  } else {
    Status.Raise("QuoteTracker gave no quotes; going on");
  }
  if (IsUpdateOnce()) {
    while (tables_->HasNews()) Write();
    over_ = true;
    Over.Raise();
    return;
  }
  const std::chrono::seconds pause(std::max(1, facade_.Seconds()));
  asking_ = loop_.StartTimer(pause, [this] { failure_.Guard([this] { Ask(); }); });
}

void WorkingDay::TakeAsked(std::size_t ticker, const QuoteRow& row) {
  if (!tables_->Take(ticker, row) || journals_.empty()) return;
  const QuoteRow came = snapshot_->AsItCame(ticker, row);
  for (QuoteJournal* const journal : journals_) {
    journal->Take(tables_->Tickers()[ticker], snapshot_->Columns(), came);
  }
}

// --- Quotes that are streamed --------------------------------------------------------------------------

void WorkingDay::Listen() {
  stream_.emplace(facade_, loop_, sockets_, tables_->Tickers(), StreamerFileOf(ChosenSource()));
  if (trail_ != nullptr) stream_->Follow(*trail_);
  stream_->Status.Subscribe([this](const std::string& text) { Status.Raise(text); });
  stream_->LoginRefused.Subscribe([this](const std::string& text) { LoginRefused.Raise(text); });
  stream_->Quote.Subscribe([this](const cQTData& quote) { TakeStreamed(quote); });
  stream_->Failed().Subscribe([this] { Over.Raise(); });
  stream_->Rested.Subscribe([this] { failure_.Guard([this] { WriteInTime(); }); });
  if (!tables_->ShowsStreamed()) Status.Raise(kNothingShown);
  stream_->Start();
}

void WorkingDay::TakeStreamed(const cQTData& quote) {
  came_.Beat();
  if (!tables_->Take(quote)) return;
  for (QuoteJournal* const journal : journals_) journal->Take(quote);
}

// At once, unless the write before is so near that quotes had better gather.
void WorkingDay::WriteInTime() {
  if (writing_ != 0 || is_stopped_ || !tables_->HasNews()) return;
  const auto pause = std::chrono::ceil<host::MessageLoop::Milliseconds>(next_write_ - Clock::now());
  if (pause.count() <= 0) return Write();
  writing_ = loop_.StartTimer(pause, [this] {
    writing_ = 0;
    failure_.Guard([this] { Write(); });
  });
}

void WorkingDay::Write() {
  const auto start = TimeWorked();
  written_ += tables_->Write(is_stopped_ ? std::nullopt : hold_at_most_);
  next_write_ = Clock::now() + kPauseForWriting * (TimeWorked() - start);
  for (const std::string& loss : tables_->TellLosses()) Status.Raise(loss);
  if (tables_->FullSheets() > 0 && !std::exchange(told_full_, true)) {
    Status.Raise("A vertical table has reached the foot of its sheet; its later rows are not kept");
  }
  for (const std::string& news : tables_->TellOfCharts()) Status.Raise(news);
  WriteInTime();
  Wrote.Raise();
}

}  // namespace mirelo::day
