#include "calc/views/settings_dialog_rig.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/grid/XGridColumn.hpp>
#include <com/sun/star/awt/grid/XGridColumnModel.hpp>
#include <com/sun/star/awt/grid/XGridControl.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/text/XText.hpp>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/objects/spreadsheet_program.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "forms/grid.h"

namespace mirelo::calc {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// As it is stored: ports from 32768 on are negative in the 16 bits that a port has.
std::string SignedHttpPort() {
  return std::to_string(static_cast<std::int16_t>(std::stoi(std::getenv("MIRELO_HTTP_PORT"))));
}

}  // namespace

SettingsDialogInOffice::SettingsDialogInOffice() {
  host.Use(internet).Use(sockets).Use(clock).Use(registry).Use(system).Use(vault);
  facade.emplace();
  mGlobal::AppSettings().SaveSetting("Settings", "HTTPPort", Variant(SignedHttpPort()));
  facade->m_ObjExcelApplication(
      ApplicationOf(OfficeContext(), Reference<css::sheet::XSpreadsheetDocument>(document, UNO_QUERY_THROW)));
}

// The table's sheet is the first.
std::string SettingsDialogInOffice::CellOf(std::int32_t row, std::int32_t column) {
  const Reference<css::container::XIndexAccess> sheets(
      Reference<css::sheet::XSpreadsheetDocument>(document, UNO_QUERY_THROW)->getSheets(), UNO_QUERY_THROW);
  const Reference<css::table::XCellRange> cells(sheets->getByIndex(0), UNO_QUERY_THROW);
  return calc::TextOf(
      Reference<css::text::XText>(cells->getCellByPosition(column - 1, row - 1), UNO_QUERY_THROW)
          ->getString());
}

void SettingsDialogInOffice::AddsTicker(const std::string& ticker) {
  person.Does("type " + ticker, [=, this] {
    person.Click("txtTicker");
    person.Type(ticker);
    person.Press(css::awt::Key::RETURN);
  });
}

void SettingsDialogInOffice::Press(Key key) {
  switch (key) {
    case Key::kReturn:
      return person.Press(css::awt::Key::RETURN);
    case Key::kBlank:
      return person.Press(css::awt::Key::SPACE, 0, u' ');
    case Key::kEnd:
      return person.Press(css::awt::Key::END);
    case Key::kBackspace:
      return person.Press(css::awt::Key::BACKSPACE);
    case Key::kEscape:
      return person.Press(css::awt::Key::ESCAPE);
  }
}

// Where the table answers that this cell is; to it the header is row -1.
void SettingsDialogInOffice::ClickCell(std::int32_t ticker, const std::string& header) {
  const auto table = person.Find("FG").As<css::awt::grid::XGridControl>();
  const css::awt::Rectangle size = person.Find("FG").As<css::awt::XWindow>()->getPosSize();
  const std::int32_t column = ColumnOf(header);
  for (std::int32_t y = 4; y < size.Height; y += 6) {
    for (std::int32_t x = 4; x < size.Width; x += 6) {
      if (table->getRowAtPoint(x, y) == ticker - 1 && table->getColumnAtPoint(x, y) == column)
        return person.ClickAt("FG", x + 4, y + 2);
    }
  }
  throw std::runtime_error("no cell of " + header);
}

void SettingsDialogInOffice::ClickLowerArrow(const std::string& arrows, const std::string& /*box*/) {
  const css::awt::Rectangle size = person.Find(arrows).As<css::awt::XWindow>()->getPosSize();
  person.ClickAt(arrows, 5, size.Height - 4);
}

void SettingsDialogInOffice::ChooseNext(const std::string& combo) {
  person.Click(combo);
  person.Press(css::awt::Key::DOWN);
}

testing::SettingsDialogRig::Texts SettingsDialogInOffice::Items(const std::string& list) {
  Texts items;
  for (const auto& item : person.Find(list).As<css::awt::XListBox>()->getItems())
    items.push_back(calc::TextOf(item));
  return items;
}

testing::SettingsDialogRig::Texts SettingsDialogInOffice::Tickers() {
  Texts tickers;
  for (sal_Int32 row = 0; row < Table()->getRowCount(); ++row)
    tickers.push_back(calc::TextOf(Table()->getCellData(0, row).get<rtl::OUString>()));
  return tickers;
}

// As the form has them: the office's cells are pictures.
testing::SettingsDialogRig::Texts SettingsDialogInOffice::Ticked() {
  const auto& grid = dynamic_cast<const forms::Grid&>(*person.Window().form().Find("FG"));
  Texts ticked;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    for (std::int32_t col = 2; col < grid.Cols(); ++col) {
      const std::string& tick = grid.TextMatrix(row, col);
      if (!tick.empty() && tick != "0")
        ticked.push_back(grid.TextMatrix(row, 1) + " " + grid.TextMatrix(0, col));
    }
  }
  return ticked;
}

Reference<css::awt::grid::XGridDataModel> SettingsDialogInOffice::Table() const {
  return person.Find("FG").Get<Reference<css::awt::grid::XGridDataModel>>("GridDataModel");
}

std::int32_t SettingsDialogInOffice::ColumnOf(const std::string& header) const {
  const auto columns = person.Find("FG").Get<Reference<css::awt::grid::XGridColumnModel>>("ColumnModel");
  for (sal_Int32 column = 0; column < columns->getColumnCount(); ++column) {
    if (calc::TextOf(columns->getColumn(column)->getTitle()) == header) return column;
  }
  throw std::runtime_error("no column " + header);
}

}  // namespace mirelo::calc

namespace mirelo::testing {

std::unique_ptr<SettingsDialogRig> NewSettingsDialogRig() {
  return std::make_unique<calc::SettingsDialogInOffice>();
}

}  // namespace mirelo::testing
