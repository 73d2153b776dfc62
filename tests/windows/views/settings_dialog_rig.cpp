#include "windows/views/settings_dialog_rig.h"

#include <stdexcept>

#include "dialog/scripted_portfolios.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::windows {

SettingsDialogOnWindows::SettingsDialogOnWindows() {
  internet.answer = testing::ScriptedPortfolios();
  host.Use(internet).Use(clock).Use(registry).Use(system).Use(vault);
  facade.emplace();
  facade->m_ObjExcelApplication(spreadsheet.Application());
}

std::string SettingsDialogOnWindows::CellOf(std::int32_t row, std::int32_t column) {
  const auto sheet = spreadsheet.Application()->Worksheets()->Item("Dovanta2_Quotes");
  return sheet->Cells(row, column)->Value().ToText();
}

// Several steps: what a key does is done when the person has let it go.
void SettingsDialogOnWindows::AddsTicker(const std::string& ticker) {
  person.Does("go to the ticker", [this] { person.Click("txtTicker"); });
  person.Does("type " + ticker, [ticker] { Person::Type(ticker); });
  person.Does("add it", [this] { person.Click("ButAdd"); });
}

void SettingsDialogOnWindows::Press(Key key) {
  switch (key) {
    case Key::kReturn:
      return Person::Press(VK_RETURN);
    case Key::kBlank:
      return Person::Press(VK_SPACE);
    case Key::kEnd:
      return Person::Press(VK_END);
    case Key::kBackspace:
      return Person::Type("\b");
    case Key::kEscape:
      return Person::Press(VK_ESCAPE);
  }
}

void SettingsDialogOnWindows::ClickCell(std::int32_t ticker, const std::string& header) {
  const POINT at = PlaceOfCell(ticker, header);
  person.ClickAt("FG", at.x, at.y);
}

void SettingsDialogOnWindows::ClickLowerArrow(const std::string& arrows, const std::string& /*box*/) {
  const RECT place = person.PlaceOf(arrows);
  person.ClickAt(arrows, 5, place.bottom - place.top - 4);
}

void SettingsDialogOnWindows::ChooseNext(const std::string& combo) {
  const LRESULT chosen = ::SendMessageW(person.Find(combo), CB_GETCURSEL, 0, 0);
  person.Choose(combo, static_cast<int>(chosen) + 1);
}

// As the form has it, which has red in the low byte.
std::int32_t SettingsDialogOnWindows::ColorOf(const std::string& control) {
  const std::int32_t color = person.Window().form().Find(control)->BackColor();
  return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

testing::SettingsDialogRig::Texts SettingsDialogOnWindows::Tickers() {
  Texts tickers;
  for (std::int32_t row = 1; row < Grid().Rows(); ++row) tickers.push_back(Grid().TextMatrix(row, 1));
  return tickers;
}

testing::SettingsDialogRig::Texts SettingsDialogOnWindows::Ticked() {
  Texts ticked;
  for (std::int32_t row = 1; row < Grid().Rows(); ++row) {
    for (std::int32_t col = 2; col < Grid().Cols(); ++col) {
      const std::string& text = Grid().TextMatrix(row, col);
      if (!text.empty() && text != "0")
        ticked.push_back(Grid().TextMatrix(row, 1) + " " + Grid().TextMatrix(0, col));
    }
  }
  return ticked;
}

GridView& SettingsDialogOnWindows::Table() const {
  return dynamic_cast<GridView&>(*person.Window().views().ViewOf(person.Window().form().Find("FG"))->painted);
}

const forms::Grid& SettingsDialogOnWindows::Grid() const {
  return dynamic_cast<const forms::Grid&>(*person.Window().form().Find("FG"));
}

std::int32_t SettingsDialogOnWindows::ColumnOf(const std::string& header) const {
  for (std::int32_t col = 0; col < Grid().Cols(); ++col) {
    if (Grid().TextMatrix(0, col) == header) return col;
  }
  throw std::runtime_error("no column " + header);
}

POINT SettingsDialogOnWindows::PlaceOfCell(std::int32_t row, const std::string& header) const {
  const auto place = Table().Places().PlaceOf(row, ColumnOf(header));
  return {place.left + place.width / 2, place.top + place.height / 2};
}

}  // namespace mirelo::windows

namespace mirelo::testing {

std::unique_ptr<SettingsDialogRig> NewSettingsDialogRig() {
  return std::make_unique<windows::SettingsDialogOnWindows>();
}

}  // namespace mirelo::testing
