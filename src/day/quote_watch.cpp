#include "day/quote_watch.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/visible_text.h"
#include "core/cQTData.h"
#include "day/snapshot_feed.h"
#include "day/unknown_ticker.h"
#include "snapshot/column_names.h"
#include "snapshot/column_vocabulary.h"
#include "wire/side_host.h"

namespace mirelo::day {

namespace {

constexpr std::chrono::seconds kTick{1};
// After telling has taken so long, it pauses for twice as long.
constexpr int kPauseForTelling = 2;
constexpr std::int32_t kMostOfAName = 40;

std::string Shown(const std::string& name) { return '"' + Visible(Left(name, kMostOfAName)) + '"'; }

std::string AllNames() { return Replace(kColumnsForReading, ",", ", "); }

}  // namespace

// One ticker that somebody asks about, with what is known of it.
struct QuoteWatch::Ticker {
  explicit Ticker(std::string its_name) : name(std::move(its_name)) {}

  void Forget() {
    board.emplace(QuoteBoard::AllColumns(), std::vector{name});
    came.reset();
    is_unknown = false;
  }
  const QuoteValue& ValueOf(std::size_t place) const { return board->Rows().front()[place]; }

  std::string name;
  std::vector<std::shared_ptr<Asked>> asked;
  std::optional<QuoteBoard> board;  // of this ticker alone
  std::optional<Clock::time_point> came;
  bool is_unknown = false;  // to QuoteTracker, as it says
};

struct QuoteWatch::Asked {
  QuoteQuestion question;
  std::function<void()> changed;  // null when nobody asks any more
  const ColumnRow* column = nullptr;
  Ticker* ticker = nullptr;  // null for one that cannot be asked for
  QuoteValue answer;
  bool is_untold = false;
};

class QuoteWatch::Handle final : public Watched {
 public:
  Handle(QuoteWatch& watch, std::shared_ptr<Asked> asked) : watch_(watch), asked_(std::move(asked)) {}
  ~Handle() override { watch_.Detach(asked_); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  const QuoteValue& Answer() const override { return asked_->answer; }

 private:
  QuoteWatch& watch_;
  const std::shared_ptr<Asked> asked_;
};

QuoteQuestion QuoteQuestion::InOneSpelling() const {
  QuoteQuestion spelt{about, UCase(Trim(ticker)), std::nullopt};
  if (column) spelt.column = UCase(Trim(*column));
  return spelt;
}

QuoteWatch::QuoteWatch(wire::SideHost& machine, std::function<Clock::time_point()> now,
                       std::function<std::chrono::microseconds()> worked)
    : machine_(machine),
      loop_(machine.loop()),
      now_(std::move(now)),
      worked_(std::move(worked)),
      supply_(machine) {
  machine_.OnFailure([this](const std::exception_ptr& failure) {
    try {
      std::rethrow_exception(failure);
    } catch (...) {
      supply_.Fail(CurrentError().Description());
    }
  });
  supply_.Streamed.Subscribe([this](const cQTData& quote) { TakeStreamed(quote); });
  supply_.Asked.Subscribe([this](const std::string& ticker, const QuoteRow& row) { TakeAsked(ticker, row); });
  supply_.Unknown.Subscribe([this](const std::string& ticker) { NoteUnknown(ticker); });
  supply_.StateChanged.Subscribe([this] { MarkAll(); });
}

QuoteWatch::~QuoteWatch() {
  machine_.OnFailure({});
  HangUp();
}

void QuoteWatch::HangUp() {
  hung_up_ = true;
  supply_.Bring({});
  for (auto* const timer : {&telling_, &gathering_, &leaving_out_, &looking_, &ticking_})
    loop_.StopTimer(std::exchange(*timer, 0));
}

// --- Questions -----------------------------------------------------------------------------------------

std::unique_ptr<QuoteWatch::Watched> QuoteWatch::Ask(const QuoteQuestion& question,
                                                     std::function<void()> changed) {
  auto asked = std::make_shared<Asked>();
  asked->question = question.InOneSpelling();
  asked->changed = std::move(changed);
  if (asked->question.column) asked->column = FindColumn(*asked->question.column);
  auto handle = std::make_unique<Handle>(*this, asked);
  ++count_;
  if (CanBeAskedFor(asked->question.ticker)) {
    auto& ticker = tickers_[asked->question.ticker];
    if (!ticker) {
      ticker = std::make_unique<Ticker>(asked->question.ticker);
      ticker->Forget();
      GatherLater();
    }
    asked->ticker = ticker.get();
    ticker->asked.push_back(asked);
  }
  if (question.about == QuoteQuestion::About::Age) {
    ages_.insert(asked.get());
    if (ticking_ == 0 && !hung_up_) Tick();
  }
  asked->answer = AnswerTo(*asked);
  return handle;
}

void QuoteWatch::Detach(const std::shared_ptr<Asked>& asked) {
  asked->changed = nullptr;
  --count_;
  ages_.erase(asked.get());
  if (asked->ticker == nullptr) return;
  std::erase(asked->ticker->asked, asked);
  if (asked->ticker->asked.empty()) LeaveOutLater();
}

QuoteValue QuoteWatch::AnswerTo(const Asked& asked) const {
  switch (asked.question.about) {
    case QuoteQuestion::About::Status:
      return QuoteValue::Text(StatusOf(asked));
    case QuoteQuestion::About::Age:
      return asked.ticker == nullptr ? QuoteValue() : AgeOf(*asked.ticker);
    case QuoteQuestion::About::Value:
      break;
  }
  if (asked.ticker == nullptr || asked.column == nullptr || !asked.ticker->came) return {};
  return asked.ticker->ValueOf(static_cast<std::size_t>(asked.column->reading) - 1);
}

std::string QuoteWatch::StatusOf(const Asked& asked) const {
  const QuoteQuestion& question = asked.question;
  if (!question.column) return "Several cells are given for the column; it is one cell or a name";
  if (asked.column == nullptr) {
    return "There is no column " + Shown(*question.column) + "; the columns are " + AllNames();
  }
  if (question.ticker.empty()) return "No ticker is given";
  if (asked.ticker == nullptr) {
    return Shown(question.ticker) +
           " cannot be asked for: a ticker holds no comma, bracket or invisible character";
  }
  if (!supply_.IsInOrder()) return supply_.State();
  const Ticker& ticker = *asked.ticker;
  if (!ticker.came) {
    return std::string(ticker.is_unknown ? kKnowsNoQuoteOf : "QuoteTracker has sent no quote yet of ") +
           ticker.name;
  }
  if (ticker.ValueOf(static_cast<std::size_t>(asked.column->reading) - 1).IsNothing()) {
    if (supply_.Streams() && asked.column->streamed.IsNone()) {
      return "A stream does not bring " + std::string(asked.column->name);
    }
    return "No quote of " + ticker.name + " has had " + std::string(asked.column->name) + " yet";
  }
  return supply_.State();
}

QuoteValue QuoteWatch::AgeOf(const Ticker& ticker) const {
  if (!ticker.came) return {};
  return QuoteValue(
      static_cast<double>(std::chrono::floor<std::chrono::seconds>(now_() - *ticker.came).count()));
}

// --- Quotes --------------------------------------------------------------------------------------------

QuoteWatch::Ticker* QuoteWatch::Find(const std::string& ticker) {
  auto found = tickers_.find(ticker);
  if (found == tickers_.end()) found = tickers_.find(UCase(ticker));
  return found == tickers_.end() ? nullptr : found->second.get();
}

void QuoteWatch::TakeStreamed(const cQTData& quote) {
  Ticker* const ticker = Find(quote.Symbol());
  if (ticker == nullptr) return;
  ticker->board->Take(quote);
  ticker->came = now_();
  Mark(*ticker);
}

void QuoteWatch::TakeAsked(const std::string& name, const QuoteRow& row) {
  Ticker* const ticker = Find(name);
  if (ticker == nullptr) return;
  ticker->board->Put(0, row);
  ticker->came = now_();
  ticker->is_unknown = false;
  Mark(*ticker);
}

void QuoteWatch::NoteUnknown(const std::string& name) {
  Ticker* const ticker = Find(name);
  if (ticker == nullptr || std::exchange(ticker->is_unknown, true)) return;
  Mark(*ticker);
}

void QuoteWatch::MarkAll() {
  for (const auto& [name, ticker] : tickers_) Mark(*ticker);
}

void QuoteWatch::Mark(Ticker& ticker) {
  news_.insert(&ticker);
  TellLater();
}

void QuoteWatch::TellLater() {
  if (telling_ != 0 || hung_up_) return;
  telling_ = loop_.StartTimer(tell_pause_, [this] { Tell(); });
}

void QuoteWatch::Tell() {
  telling_ = 0;
  NoteChanges();
  if (untold_.empty()) return;
  const auto start = worked_();
  do {
    TellOne();
  } while (!untold_.empty() && worked_() - start < kTellAtMost);
  const auto pause = std::chrono::ceil<Pause>(kPauseForTelling * (worked_() - start));
  tell_pause_ = untold_.empty() ? std::max(kTellPause, pause) : pause;
  if (!untold_.empty()) TellLater();
}

void QuoteWatch::NoteChanges() {
  for (const Ticker* const ticker : std::exchange(news_, {})) {
    for (const auto& asked : ticker->asked) {
      QuoteValue answer = AnswerTo(*asked);
      if (answer == asked->answer) continue;
      asked->answer = std::move(answer);
      if (!std::exchange(asked->is_untold, true)) untold_.push_back(asked);
    }
  }
}

void QuoteWatch::TellOne() {
  const std::shared_ptr<Asked> asked = std::move(untold_.front());
  untold_.pop_front();
  asked->is_untold = false;
  const auto tell = asked->changed;
  if (tell) tell();
}

void QuoteWatch::Tick() {
  ticking_ = 0;
  if (ages_.empty()) return;
  for (const Asked* const asked : ages_) {
    if (asked->ticker != nullptr && asked->ticker->came) Mark(*asked->ticker);
  }
  ticking_ = loop_.StartTimer(kTick, [this] { Tick(); });
}

// --- Subscriptions -------------------------------------------------------------------------------------

void QuoteWatch::GatherLater() {
  if (hung_up_) return;
  if (!gathering_since_) gathering_since_ = now_();
  if (gathering_ != 0 && now_() - *gathering_since_ > kGatherAtMost - kGather) return;
  loop_.StopTimer(gathering_);
  gathering_ = loop_.StartTimer(kGather, [this] {
    gathering_ = 0;
    Bring();
  });
}

void QuoteWatch::LeaveOutLater() {
  if (leaving_out_ != 0 || hung_up_) return;
  leaving_out_ = loop_.StartTimer(kLinger, [this] {
    leaving_out_ = 0;
    Bring();
  });
}

void QuoteWatch::Bring() {
  gathering_since_.reset();
  std::vector<std::string> names;
  for (auto entry = tickers_.begin(); entry != tickers_.end();) {
    if (entry->second->asked.empty()) {
      news_.erase(entry->second.get());
      entry = tickers_.erase(entry);
      continue;
    }
    names.push_back(entry->first);
    ++entry;
  }
  supply_.Bring(std::move(names));
  LookLater();
}

void QuoteWatch::LookLater() {
  loop_.StopTimer(std::exchange(looking_, 0));
  if (tickers_.empty()) return;
  looking_ = loop_.StartTimer(kLook, [this] {
    looking_ = 0;
    LookLater();
    supply_.Look();
  });
}

}  // namespace mirelo::day
