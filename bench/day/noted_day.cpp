#include "day/noted_day.h"

#include <stdexcept>
#include <utility>

#include "adapters/sodium/sodium_vault.h"
#include "app/options.h"
#include "day/dialog_result.h"
#include "host/excel/application.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "person/attended_desktop.h"

namespace mirelo {

namespace {

constexpr std::int64_t kWarmUp = 300;  // quotes

}  // namespace

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
  day_ = std::make_unique<day::WorkingDay>(host.loop(), host.observed_sockets(), session_->replies(),
                                           document_->Application());
  if (day_->ShowDialog() != day::kToStream)
    throw std::runtime_error("Go was not committed: " + printed_.Text());
  table_ = document_->Application()->Worksheets()->Item("Dovanta2_Quotes");
  ages_.emplace(sendings_, wishes_.tickers.size(), kWarmUp);
  day_->Wrote.Subscribe([this] { ages_->NoteIn(*table_); });
}

NotedDay::~NotedDay() = default;

void NotedDay::RunUntil(const std::function<bool()>& done) {
  if (!std::exchange(has_started_, true)) day_->Start();
  day_->RunUntil(done);
}

}  // namespace mirelo
