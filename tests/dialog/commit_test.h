#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "dialog/dialog_test.h"
#include "dialog/scripted_portfolios.h"
#include "support/logging_registry.h"

namespace mirelo::testing {

// The dialog with one ticker, whose person presses Go, and a QuoteTracker that answers.
class CommitTest : public DialogTest {
 protected:
  using Acts = std::function<void(frmMirelo& form)>;
  using Write = LoggingRegistry::Write;

  CommitTest() {
    host.Use(log);
    internet.answer = [this](const AnsweringInternet::Request& request) { return tracker(request); };
  }

  // What LoadFrmMirelo answers when the person does this, presses Go, and looks then.
  std::int32_t Go(
      const Acts& acts, const Acts& looks = [](frmMirelo&) {}) {
    return Show([&](frmMirelo& form) {
      form.txtTicker.UserEdit("MSFT");
      form.ButAdd.UserPress();
      acts(form);
      desktop.boxes.clear();
      log.writes.clear();
      form.ButGo.UserPress();
      looks(form);
    });
  }
  std::int32_t Go() {
    return Go([](frmMirelo&) {});
  }

  // A person's edits on the tabs Settings and Charting.
  static Acts OnSettings(Acts acts) {
    return [acts = std::move(acts)](frmMirelo& form) {
      form.C1TTickersSettings.UserSelect(kSettings);
      acts(form);
    };
  }
  static Acts OnCharting(Acts acts) {
    return [acts = std::move(acts)](frmMirelo& form) {
      form.C1TTickersSettings.UserSelect(kCharting);
      if (form.chkBuildCharts.Value() == 0) form.chkBuildCharts.UserClick();
      acts(form);
    };
  }

  // Puts a text into a number box that the box would not keep: its handler fails at its first statement, and
  // the person aborts it.
  void Hold(forms::TextBox& box, const char* text) {
    auto& handler = mGlobal::ErrorHandler();
    const std::string file = handler.TracingLogFile();
    handler.TracingLogFile("/no such folder/trace");
    handler.TracingEnabled(true);
    Answers({"ABORT"});
    box.Text(text);
    handler.TracingEnabled(false);
    handler.TracingLogFile(file);
    desktop.reports.clear();
  }

  // What Go has written, without the sheet's columns and the window's place.
  std::vector<Write> Written() const {
    std::vector<Write> written;
    for (const Write& write : log.writes) {
      const bool of_the_sheet = write.name == "ListLeft" || write.name == "ListRight";
      if (!of_the_sheet && !write.section.starts_with("Windows settings")) written.push_back(write);
    }
    return written;
  }
  // The names of the settings among that, in their order; the widths of columns left out.
  std::vector<std::string> WrittenNames() const {
    std::vector<std::string> names;
    for (const Write& write : Written()) {
      if (write.section != "Settings\\WidthField") names.push_back(write.name);
    }
    return names;
  }
  static Write Text(const char* key, const char* value) {
    return {"Settings", key, host::Registry::kSz, value};
  }
  static Write Number(const char* key, const char* value) {
    return {"Settings", key, host::Registry::kDword, value};
  }

  LoggingRegistry log{registry};
  ScriptedPortfolios tracker;
};

}  // namespace mirelo::testing
