#include "app/dialog_attendant.h"

#include <algorithm>
#include <functional>
#include <string>

#include "app/ticker_list.h"
#include "core/message_box.h"
#include "dialog/frmMirelo.h"
#include "host/desktop.h"

namespace mirelo::app {

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

}  // namespace

void AttendTo(forms::Form& form) {
  auto* const dialog = dynamic_cast<frmMirelo*>(&form);
  if (dialog == nullptr) return;
  dialog->ButAdd.AttendWith([dialog](const std::function<void()>& click) { AddTickers(*dialog, click); });
}

}  // namespace mirelo::app
