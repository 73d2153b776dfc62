#include "worksheet/desk.h"

#include <string>
#include <utility>

#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "dialog/frmMirelo.h"
#include "dialog/scripted_portfolios.h"

namespace mirelo {

namespace {

constexpr const char* kEveryColumn =
    "Ticker,Date,Time,Last,Bid,Ask,Change,Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,"
    "NumTrades,Open,52w Low,52w High";

}  // namespace

Desk::Desk() : Desk(kEveryColumn) {}

Desk::Desk(const std::string& columns) {
  host_.Use(loop_).Use(clock_).Use(registry_).Use(internet_).Use(desktop_).Use(system_).Use(sockets_).Use(
      vault_);
  installed_.emplace(host_);
  facade_.emplace();
  internet_.answer = testing::ScriptedPortfolios();
  mGlobal::AppSettings().SaveSetting("Settings", "ListLeft", Variant(""));
  mGlobal::AppSettings().SaveSetting("Settings", "ListRight", Variant(columns));
}

std::chrono::duration<double> Desk::Go(std::shared_ptr<host::excel::Application> application,
                                       std::int32_t tickers, Fields fields) {
  facade_->m_ObjExcelApplication(std::move(application));
  std::chrono::duration<double> taken{-1};
  desktop_.person["frmMirelo"] = [&](forms::Form& shown) {
    auto& form = dynamic_cast<frmMirelo&>(shown);
    for (std::int32_t i = 1; i <= tickers; ++i) {
      std::int32_t unused = 0;
      form.AddTicker("TCK" + std::to_string(i), unused);
    }
    for (std::int32_t row = 1; row <= tickers; ++row) {
      for (std::int32_t col = 2; fields == Fields::All && col < form.FG.Cols(); ++col)
        form.FG.TextMatrix(row, col, "-1");
    }
    const auto start = std::chrono::steady_clock::now();
    form.ButGo.UserPress();
    taken = std::chrono::steady_clock::now() - start;
  };
  if (facade_->LoadFrmMirelo() != 78) return std::chrono::duration<double>(-1);
  return taken;
}

}  // namespace mirelo
