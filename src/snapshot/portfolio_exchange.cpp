// The ticker grid of the settings dialog and QuoteTracker's portfolios, brought into line.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "core/message_box.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/tabs.h"
#include "host/desktop.h"
#include "snapshot/messages.h"
#include "snapshot/tickers_per_request.h"

namespace mirelo {

namespace {

constexpr int kCritical = host::Desktop::kCritical;
constexpr int kExclamation = host::Desktop::kExclamation;
constexpr int kInformation = host::Desktop::kInformation;

// Line `number` of a reply, from 1; error 9 for one that the reply does not have.
const std::string& Line(const std::vector<std::string>& lines, std::size_t number) {
  if (number > lines.size()) throw Errors::SubscriptOutOfRange();
  return lines[number - 1];
}

bool IsUnderstood(const std::vector<std::string>& lines) { return EqualText(Line(lines, 1), "OK"); }

// The first of the names between commas; empty for no names.
std::string FirstName(std::string_view names) { return std::string(names.substr(0, names.find(','))); }

bool Contains(const VariantArray& symbols, std::string_view ticker) {
  for (const std::int32_t i : Bounds{symbols.LBound(), symbols.UBound()}) {
    if (EqualText(symbols(i).ToText(), ticker)) return true;
  }
  return false;
}

// Asks QuoteTracker for a resource, at the place that the dialog shows, and cuts the reply into lines. Its
// statements are the calling routine's. False when nothing answered, which the user was told.
bool FetchLines(Frame& frame, const frmMirelo& form, const std::string& resource,
                std::vector<std::string>& lines) {
  std::string reply;
  STEP(const std::int16_t port = Variant(form.txtHTTPPort.Text()).ToInt16();
       reply = Referred(form.Owner()).DownloadURL(resource, form.txtWebAddress.Text(), port, "GET").ToText());
  if (reply.empty()) {
    STEP(ShowMessage(kRunQuoteTracker, kInformation));
    return false;
  }
  STEP(lines = Split(reply, "\r\n"));
  return true;
}

}  // namespace

bool frmMirelo::GetPortfolioTickersFromQT(Variant& tickers) {
  return Function("Mirelo.frmMirelo.GetPortfolioTickersFromQT", false, [&](Frame& frame, bool& understood) {
    if (frame.test([&] { return !IsNumeric(txtHTTPPort.Text()); })) {
      STEP(ShowMessage("The value must be a digit.", kCritical));
      STEP(C1TTickersSettings.CurrTab(kTickersTab));
      STEP(txtHTTPPort.SetFocus());
      return;
    }

    std::vector<std::string> portfolios;
    if (!FetchLines(frame, *this, "/req?EnumPorts()", portfolios)) return;
    if (portfolios.empty()) return frame.pop();
    if (frame.test([&] { return !IsUnderstood(portfolios); })) {
      STEP(ShowMessage(kAdjustPort, kInformation));
      return;
    }
    std::string name;
    STEP(name = FirstName(Line(portfolios, 2)));
    if (name.empty()) return frame.pop();

    std::vector<std::string> symbols;
    if (!FetchLines(frame, *this, "/req?EnumPortSymbols(" + name + ")", symbols)) return;
    if (symbols.empty()) return frame.pop();
    if (frame.test([&] { return !IsUnderstood(symbols); })) {
      STEP(ShowMessage(kAdjustPort, kInformation));
      return;
    }
    STEP(tickers = VariantArray::OfTexts(Split(Line(symbols, 2), ",")));
    STEP(understood = true);
    frame.pop();
  });
}

bool frmMirelo::AddPortfolioTickersToQT(const std::string& list) {
  return Function("Mirelo.frmMirelo.AddPortfolioTickersToQT", false, [&](Frame& frame, bool& taken) {
    std::vector<std::string> lines;
    if (!FetchLines(frame, *this, "/req?AddStocksToPort(CURRENT," + list + ")", lines)) return;
    // Unlike the other replies this one may say more behind its OK.
    if (frame.test([&] { return EqualText(Left(Line(lines, 1), 2), "OK"); })) {
      STEP(taken = true);
      frame.pop();
    } else {
      STEP(ShowMessage(kAdjustPort, kInformation));
    }
  });
}

void frmMirelo::ButExport_Click() {
  Routine("Mirelo.frmMirelo.ButExport_Click", [&](Frame& frame) {
    if (frame.test([&] { return FG.Rows() < 2; })) {
      STEP(ShowMessage("Tickers list is empty.", kExclamation));
      return;
    }
    Variant symbols;
    if (frame.test([&] { return !GetPortfolioTickersFromQT(symbols); })) return frame.pop();

    std::vector<std::string> missing;
    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      std::string ticker;
      STEP(ticker = FG.TextMatrix(row, TickerCol_));
      if (frame.test([&] { return !Contains(symbols.AsArray(), ticker); })) STEP(missing.push_back(ticker));
    }
    if (missing.empty()) return frame.pop();

    std::string batch;
    std::int32_t batch_count = 0;
    for (const std::string& ticker : missing) {
      STEP(batch += ticker);
      if (batch_count < kTickersPerRequest - 1) {
        if (&ticker != &missing.back()) STEP(batch += ',');
        ++batch_count;
      } else {
        const bool taken = frame.test([&] { return AddPortfolioTickersToQT(batch); });
        batch.clear();
        if (!taken) break;
        batch_count = 0;
      }
    }
    // Symbols that fill their last request end without a word.
    if (!batch.empty() && frame.test([&] { return AddPortfolioTickersToQT(batch); })) {
      STEP(ShowMessage("QouteTracker portfolio updated", kInformation));
    }
    frame.pop();
  });
}

void frmMirelo::ButImport_Click() {
  Routine("Mirelo.frmMirelo.ButImport_Click", [&](Frame& frame) {
    Variant symbols;
    if (frame.test([&] { return !GetPortfolioTickersFromQT(symbols); })) return frame.pop();
    if (frame.test([&] { return FG.Rows() == 0; })) STEP(FG.Rows(1));
    std::int32_t unused = 0;
    for (const std::int32_t i : frame.loop([&] {
           return Bounds{symbols.AsArray().LBound(), symbols.AsArray().UBound()};
         })) {
      STEP(AddTicker(UCase(symbols.AsArray()(i).ToText()), unused));
    }
    frame.pop();
  });
}

}  // namespace mirelo
