#pragma once

#include "windows/views/rig.h"

#include <cstdint>
#include <optional>
#include <string>

#include "adapters/windows/views/grid_view.h"
#include "adapters/workbook/spreadsheet.h"
#include "core/cMirelo.h"
#include "forms/grid.h"
#include "support/answering_internet.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/recording_system.h"
#include "views/settings_dialog_rig.h"

namespace mirelo::windows {

// The settings dialog in windows of Windows' own, on an empty workbook in memory.
class SettingsDialogOnWindows : public testing::SettingsDialogRig, protected Desk {
 public:
  SettingsDialogOnWindows();

  std::int32_t LoadFrmMirelo() override { return facade->LoadFrmMirelo(); }
  std::string CellOf(std::int32_t row, std::int32_t column) override;

  void Does(std::string what, std::function<void()> act) override {
    person.Does(std::move(what), std::move(act));
  }
  void Answers(const std::string& text, Button button) override {
    person.Answers(text, button == Button::kOk ? IDOK : IDNO);
  }
  void AddsTicker(const std::string& ticker) override;

  void Open(Tab tab) override { person.Open("C1TTickersSettings", tab); }
  void Click(const std::string& control) override { person.Click(control); }
  void Type(const std::string& text) override { Person::Type(text); }
  void Press(Key key) override;
  void ClickCell(std::int32_t ticker, const std::string& header) override;
  void ClickHeader(const std::string& header) override { ClickCell(0, header); }
  void ClickUpperArrow(const std::string& arrows, const std::string& /*box*/) override {
    person.ClickAt(arrows, 5, 4);
  }
  void ClickLowerArrow(const std::string& arrows, const std::string& box) override;
  void ClickSecond(const std::string& list) override { person.Choose(list, 1); }
  void ChooseNext(const std::string& combo) override;

  std::string TextOf(const std::string& control) override { return person.TextOf(control); }
  Texts Items(const std::string& list) override { return person.Items(list); }
  bool IsShown(const std::string& control) override { return person.IsShown(control); }
  bool IsEnabled(const std::string& control) override { return person.IsEnabled(control); }
  bool IsTicked(const std::string& box) override { return person.IsTicked(box); }
  std::int32_t ColorOf(const std::string& control) override;
  Texts Tickers() override;
  Texts Ticked() override;

 protected:
  GridView& Table() const;
  const forms::Grid& Grid() const;
  std::int32_t ColumnOf(const std::string& header) const;
  POINT PlaceOfCell(std::int32_t row, const std::string& header) const;  // rows from 1; 0 is the header

  testing::AnsweringInternet internet;
  testing::ManualClock clock;
  testing::MemoryRegistry registry;
  testing::RecordingSystem system;
  testing::MemoryVault vault;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
  std::optional<cMirelo> facade;
};

}  // namespace mirelo::windows
