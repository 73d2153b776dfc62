#include "app/session.h"

#include <memory>
#include <string>

#include "app/dialog/guiding_desktop.h"
#include "app/link_trouble.h"
#include "app/options.h"
#include "app/workbook/spreadsheet_program.h"
#include "core/message_box.h"
#include "host/desktop.h"
#include "person/dialog_attendant.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

// The registry is opened here: later, the settings store would hide why it cannot be.
Session::Session(const GlobalOptions& options)
    : shows_windows_(options.show_windows != nullptr),
      host_(options.registry),
      documents_(options.spreadsheets ? options.spreadsheets(host_) : SpreadsheetProgram()) {
  host_.registry();
  const auto warn = [](const std::string& text) { ShowMessage(text, host::Desktop::kExclamation); };
  host_.ShowThrough([this](host::Desktop& inner) {
    const GoGuard guard{[this](const std::string& sheet) {
                          return document == nullptr ? std::vector<std::string>()
                                                     : document->WorkLostByChange(sheet);
                        },
                        [this](const std::vector<std::string>& costs) { return AcceptsCosts(costs); }};
    return std::make_unique<GuidingDesktop>(
        inner, [this] { return LinkTrouble(*this); }, shows_windows_, guard);
  });
  host_.FetchThrough([this](host::WinInetApi& inner) {
    auto asked = std::make_unique<wire::AskedServer>(inner);
    asked_ = asked.get();
    return asked;
  });
  host_.FetchThrough([this, warn](host::WinInetApi& inner) {
    auto mended = std::make_unique<wire::MendedReplies>(inner);
    mended->Refused.Subscribe(warn);
    replies_ = mended.get();
    return mended;
  });
  // The facade takes what came of a reply that was broken off for all of it, and says nothing of why.
  host_.WaitForWholeReplies();
  host_.ReplyBrokenOff.Subscribe(warn);
}

bool Session::AcceptsCosts(const std::vector<std::string>& costs) {
  if (shows_windows_) return AskWhetherToGoOn(costs);
  for (const std::string& cost : costs) terminal::Err() << "warning: " << cost << "\n";
  if (!accepts_costs) {
    terminal::Err()
        << "error: Go would cost what the warnings say, so nothing was committed. To go on all the "
           "same, add --yes\n";
  }
  refused_costs = !accepts_costs;
  return accepts_costs;
}

wire::MendedReplies& Session::replies() {
  host_.internet();
  return *replies_;
}

const wire::AskedServer& Session::asked() {
  host_.internet();
  return *asked_;
}

cMirelo& Session::facade() {
  if (!facade_) facade_ = std::make_unique<cMirelo>();
  return *facade_;
}

Interrupt& Session::interrupt() {
  if (!interrupt_) interrupt_ = std::make_unique<Interrupt>(host_.loop());
  return *interrupt_;
}

}  // namespace mirelo::app
