#include "noted_day.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "adapters/sodium/sodium_vault.h"
#include "app/options.h"
#include "day/dialog_result.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "person/attended_desktop.h"
#include "quotetracker/market.h"

namespace mirelo {

namespace {

constexpr std::int64_t kWarmUp = 300;  // quotes
constexpr std::int32_t kFirstTickerRow = 3;
constexpr std::int32_t kVolumeColumn = 2;

// Quotes of the tickers in turn, each noted when it is about to be sent.
class NotedQuotes : public quotetracker::QuoteSource {
 public:
  explicit NotedQuotes(Sendings& sendings) : sendings_(sendings) {}

  quotetracker::Moment Now() override { return market_.Now(); }
  const quotetracker::Quote& Look(std::string_view ticker) override { return market_.Look(ticker); }
  std::unique_ptr<quotetracker::QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) override {
    return std::make_unique<Updates>(*this, tickers);
  }

 private:
  class Updates : public quotetracker::QuoteUpdates {
   public:
    Updates(NotedQuotes& source, std::vector<std::string> tickers)
        : source_(source), tickers_(std::move(tickers)) {}
    quotetracker::QuoteChange Next() override {
      const std::int64_t number = ++source_.number_;
      const std::size_t ticker = static_cast<std::size_t>(number) % tickers_.size();
      quote_ = source_.Look(tickers_[ticker]);
      quote_.volume = number;
      quote_.last_volume = 1;  // a trade: the record carries the volume
      source_.sendings_.Note(number);
      return {&quote_, ticker};
    }

   private:
    NotedQuotes& source_;
    std::vector<std::string> tickers_;
    quotetracker::Quote quote_;
  };

  Sendings& sendings_;
  quotetracker::Market market_{1};
  std::int64_t number_ = 0;
};

}  // namespace

DialogWishes NotedDay::Streaming(std::vector<std::string> tickers, const std::vector<std::string>& fields) {
  DialogWishes wishes;
  wishes.tickers = std::move(tickers);
  wishes.columns = {"Ticker", "Volume", "Last", "Change", "Bid", "Ask", "LastVolume", "Date", "Time"};
  wishes.settings = {{"UpdateEvery", "1"},
                     {"Seconds", "0"},
                     {"ComQuoteSource", "Alpstein Finance (delayed)"},
                     {"VerticalTable", "1"}};
  for (const std::string& ticker : wishes.tickers) {
    for (const std::string& field : fields) wishes.ticks.push_back({ticker, field});
  }
  return wishes;
}

NotedDay::NotedDay(DialogWishes wishes, double rate) : wishes_(std::move(wishes)) {
  sodium::SodiumVault vault(folder_.Path());
  vault.Set({.name = "MireloDemo", .secret = "demo-secret"});

  quotetracker::ServerOptions serving;
  serving.quotes = std::make_unique<NotedQuotes>(sendings_);
  serving.stream.rate = rate;
  server_ = std::make_unique<quotetracker::Server>(std::move(serving));

  options_.registry = folder_.Path() / "registry.db";
  session_ = std::make_unique<app::Session>(options_);
  auto& host = session_->host();
  host.KeepCredentialsIn(folder_.Path());
  host.OverrideHttpPort(server_->HttpPort());
  host.Override("SocketPort", std::to_string(server_->StreamPort()));
  auto desktop = std::make_unique<AttendedDesktop>(printed_);
  person_ = std::make_unique<DialogPerson>(wishes_, *desktop);
  host.ShowOn(std::move(desktop));

  document_ = session_->documents().New();
  day_ = std::make_unique<day::WorkingDay>(host.loop(), host.sockets(), session_->replies(),
                                           document_->Application());
  if (day_->ShowDialog() != day::kToStream)
    throw std::runtime_error("Go was not committed: " + printed_.Text());
  table_ = document_->Application()->Worksheets()->Item("Dovanta2_Quotes");
  seen_.resize(wishes_.tickers.size());
  day_->Wrote.Subscribe([this] { NoteAges(); });
}

NotedDay::~NotedDay() = default;

void NotedDay::RunUntil(const std::function<bool()>& done) {
  if (!std::exchange(has_started_, true)) day_->Start();
  day_->RunUntil(done);
}

void NotedDay::NoteAges() {
  const auto step = static_cast<std::int64_t>(seen_.size());
  for (std::size_t row = 0; row < seen_.size(); ++row) {
    const auto number = static_cast<std::int64_t>(
        table_->Cells(static_cast<std::int32_t>(row) + kFirstTickerRow, kVolumeColumn)->Value().ToDouble());
    if (!sendings_.Has(number)) continue;
    for (std::int64_t n = seen_[row] == 0 ? number : seen_[row] + step; n <= number; n += step) {
      if (n > kWarmUp) ages_.push_back(sendings_.AgeOf(n));
    }
    seen_[row] = number;
  }
}

}  // namespace mirelo
