#include "person/dialog_attendant.h"

#include <functional>
#include <string>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/cMirelo.h"
#include "core/message_box.h"
#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "dialog/frmMirelo.h"
#include "host/desktop.h"
#include "host/excel/application.h"
#include "host/excel/workbook.h"
#include "person/ticker_list.h"

namespace mirelo {

namespace {

void AddTickers(frmMirelo& form, const std::function<void()>& add) {
  const auto tickers = SplitTickers(form.txtTicker.Text());
  for (const std::string& ticker : tickers) {
    if (IsTickerName(ticker)) continue;
    return ShowMessage("\"" + ticker + "\" is no ticker: no request can name one that holds a bracket.",
                       host::Desktop::kExclamation);
  }
  form.txtTicker.Text("");
  if (tickers.empty()) return add();
  for (const std::string& ticker : tickers) {
    form.txtTicker.Text(ticker);
    add();
  }
}

// The dialog stores what its boxes hold.
bool CanBeStored(const char* key, const forms::TextBox& box) try {
  SettingValue(*FindSetting(catalogue::kSettings, key), box.Text());
  return true;
} catch (const RuntimeError& error) {
  ShowMessage(std::string(key) + ": " + error.Description(), host::Desktop::kExclamation);
  return false;
}

std::vector<std::string> CostsOf(frmMirelo& form, const GoGuard& guard) {
  if (!guard.accept || form.FG.Rows() < 2) return {};
  const auto application = form.Owner() == nullptr ? nullptr : form.Owner()->m_ObjExcelApplication();
  const auto workbook = application ? application->ActiveWorkbook() : nullptr;
  return workbook ? GoCosts(*workbook, PlanOf(form), guard.losses) : std::vector<std::string>();
}

void PressGo(frmMirelo& form, const GoGuard& guard, const std::function<void()>& press) {
  if (!CanBeStored("Webaddress", form.txtWebAddress) || !CanBeStored("SocketPort", form.txtSocketPort))
    return;
  const auto costs = CostsOf(form, guard);
  if (costs.empty() || guard.accept(costs)) press();
}

}  // namespace

void AttendTo(forms::Form& form, const GoGuard& guard) {
  auto* const dialog = dynamic_cast<frmMirelo*>(&form);
  if (dialog == nullptr) return;
  dialog->ButAdd.AttendWith([dialog](const std::function<void()>& click) { AddTickers(*dialog, click); });
  dialog->ButGo.AttendWith(
      [dialog, guard](const std::function<void()>& click) { PressGo(*dialog, guard, click); });
}

bool AskWhetherToGoOn(const std::vector<std::string>& costs) {
  return Confirm("Go will cost this:\n\n" + Join(costs, "\n") + "\n\nGo on?");
}

}  // namespace mirelo
