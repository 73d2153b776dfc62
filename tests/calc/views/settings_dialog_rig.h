#pragma once

#include <com/sun/star/awt/grid/XGridDataModel.hpp>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "adapters/curl/curl_internet.h"
#include "adapters/poll/poll_winsock_library.h"
#include "calc/views/office_rig.h"
#include "core/cMirelo.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/recording_system.h"
#include "views/settings_dialog_rig.h"

namespace mirelo::calc {

// The settings dialog in an office, above the document that it works on. It asks the stand-in for
// QuoteTracker.
class SettingsDialogInOffice : public testing::SettingsDialogRig, protected Desk {
 public:
  SettingsDialogInOffice();

  std::int32_t LoadFrmMirelo() override { return facade->LoadFrmMirelo(); }
  std::string CellOf(std::int32_t row, std::int32_t column) override;

  void Does(std::string what, std::function<void()> act) override {
    person.Does(std::move(what), std::move(act));
  }
  void Answers(const std::string& text, Button button) override {
    person.Answers(text, button == Button::kOk ? "OK" : "No");
  }
  void AddsTicker(const std::string& ticker) override;

  void Open(Tab tab) override { person.Click("C1TTickersSettings:" + std::to_string(tab)); }
  void Click(const std::string& control) override { person.Click(control); }
  void Type(const std::string& text) override { person.Type(text); }
  void Press(Key key) override;
  void ClickCell(std::int32_t ticker, const std::string& header) override;
  void ClickHeader(const std::string& header) override { ClickCell(0, header); }
  void ClickUpperArrow(const std::string& arrows, const std::string& /*box*/) override {
    person.ClickAt(arrows, 5, 4);
  }
  void ClickLowerArrow(const std::string& arrows, const std::string& box) override;
  void ClickSecond(const std::string& list) override { person.ClickAt(list, 10, 20); }
  void ChooseNext(const std::string& combo) override;

  std::string TextOf(const std::string& control) override { return person.TextOf(control); }
  Texts Items(const std::string& list) override;
  bool IsShown(const std::string& control) override { return person.IsShown(control); }
  bool IsEnabled(const std::string& control) override { return person.Find(control).Get<bool>("Enabled"); }
  bool IsTicked(const std::string& box) override { return person.Find(box).Get<sal_Int16>("State") == 1; }
  std::int32_t ColorOf(const std::string& control) override {
    return person.Find(control).Get<sal_Int32>("BackgroundColor");
  }
  Texts Tickers() override;
  Texts Ticked() override;

 protected:
  css::uno::Reference<css::awt::grid::XGridDataModel> Table() const;
  std::int32_t ColumnOf(const std::string& header) const;

  curl::CurlInternet internet{loop};
  poll::PollWinsockLibrary sockets{loop};
  testing::ManualClock clock;
  testing::MemoryRegistry registry;
  testing::RecordingSystem system;
  testing::MemoryVault vault;
  std::optional<cMirelo> facade;
};

}  // namespace mirelo::calc
