#include "day/quote_supply.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "day/meanwhile.h"
#include "day/stored_source.h"
#include "day/working_day.h"
#include "snapshot/column_names.h"
#include "wire/side_host.h"

namespace mirelo::day {

namespace {

constexpr const char* kNothingAskedFor = "QuoteTracker has not been asked yet";
constexpr const char* kBeginning = "Connecting to QuoteTracker";
constexpr const char* kStreaming = "Streaming";
constexpr const char* kNoQuotes = "QuoteTracker gave no quotes";

std::string EverySeconds(std::int32_t seconds) {
  return seconds == 1 ? "Asked every second" : "Asked every " + std::to_string(seconds) + " seconds";
}

}  // namespace

QuoteSupply::QuoteSupply(wire::SideHost& machine) : machine_(machine), state_(kNothingAskedFor) {
  machine_.Override("ListRight", kColumnsForReading);
  machine_.Run([&] {
    facade_.emplace();
    facade_->DovantaFormatUserDate(WorkingDay::kDateFormat);
  });
}

QuoteSupply::~QuoteSupply() {
  machine_.Run([&] { End(); });
}

void QuoteSupply::Bring(std::vector<std::string> tickers) {
  machine_.Run([&] {
    if (fetching_) {
      next_ = std::move(tickers);
      return;
    }
    try {
      const bool is_new = tickers != tickers_;
      tickers_ = std::move(tickers);
      Plan plan = tickers_.empty() ? Plan() : ReadPlan();
      const bool is_running = stream_ || snapshot_ || tickers_.empty();
      if (is_running && !is_new && plan == plan_ && !HasFailed()) return;
      plan_ = std::move(plan);
      End();
      Begin();
    } catch (...) {
      End();
      Fail(CurrentError().Description());
    }
  });
}

QuoteSupply::Plan QuoteSupply::ReadPlan() {
  CAppSettings& settings = mGlobal::AppSettings();
  Plan plan;
  plan.seconds = FacadeSetting("Seconds").In(settings).ToInt32();
  plan.once = DialogSetting("UpdateEvery").In(settings).ToText() == "0";
  plan.source = ChosenSource();
  plan.places = {FacadeSetting("Webaddress").In(settings).ToText(),
                 FacadeSetting("HTTPPort").In(settings).ToText(),
                 FacadeSetting("SocketPort").In(settings).ToText()};
  return plan;
}

void QuoteSupply::Begin() {
  if (tickers_.empty()) return Say(false, kNothingAskedFor);
  Say(false, kBeginning);
  if (plan_.seconds == 0) {
    Stream();
  } else {
    StartAsking();
  }
}

void QuoteSupply::Stream() {
  stream_.emplace(*facade_, machine_.loop(), machine_.sockets(), tickers_, StreamerFileOf(plan_.source));
  stream_->Status.Subscribe([this, &feed = *stream_](const std::string& text) {
    const bool streams = feed.IsStreaming();
    Say(streams, streams ? kStreaming : text);
  });
  stream_->Quote.Subscribe([this](const cQTData& quote) { TakeStreamed(quote); });
  stream_->Unknown.Subscribe([this](const std::string& ticker) { Unknown.Raise(ticker); });
  stream_->Start();
}

// A failure that cost quotes is over when others come.
void QuoteSupply::TakeStreamed(const cQTData& quote) {
  if (!in_order_) Say(true, kStreaming);
  Streamed.Raise(quote);
}

void QuoteSupply::StartAsking() {
  snapshot_.emplace(*facade_, machine_.internet(), tickers_);
  asking_ = machine_.loop().StartTimer({}, [this] { Ask(); });
}

void QuoteSupply::Ask() {
  asking_ = 0;
  std::optional<QuoteRows> rows;
  {
    const Meanwhile fetching(fetching_);
    machine_.desktop().TakeWords();
    rows = snapshot_->Fetch();
  }
  if (rows) {
    HandOn(*rows);
  } else {
    const std::string words = machine_.desktop().TakeWords();
    Say(false, words.empty() ? kNoQuotes : words);
  }
  if (next_) return Bring(*std::exchange(next_, std::nullopt));
  if (plan_.once && rows) return;
  const std::chrono::seconds pause(std::max(1, plan_.seconds));
  asking_ = machine_.loop().StartTimer(pause, [this] { Ask(); });
}

void QuoteSupply::HandOn(const QuoteRows& rows) {
  Say(true, plan_.once ? "Asked once" : EverySeconds(plan_.seconds));
  const std::vector<std::string>& asked = snapshot_->Tickers();
  for (std::size_t i = 0; i < asked.size(); ++i) {
    if (snapshot_->HasQuote(i)) {
      Asked.Raise(asked[i], rows[i]);
    } else {
      Unknown.Raise(asked[i]);
    }
  }
}

void QuoteSupply::End() {
  machine_.loop().StopTimer(std::exchange(asking_, 0));
  if (stream_) stream_->Stop();
  stream_.reset();
  snapshot_.reset();
}

// What fails when a stream reconnects is kept for whoever runs the loop, which nobody does here.
bool QuoteSupply::HasFailed() {
  if (stream_) stream_->RunUntil([] { return true; });
  return snapshot_ && !plan_.once && asking_ == 0;
}

void QuoteSupply::Fail(const std::string& description) { Say(false, description); }

void QuoteSupply::Say(bool in_order, const std::string& state) {
  if (in_order_ == in_order && state_ == state) return;
  in_order_ = in_order;
  state_ = state;
  StateChanged.Raise();
}

}  // namespace mirelo::day
