// The settings dialog in an office, above the document that it works on.

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/grid/XGridColumn.hpp>
#include <com/sun/star/awt/grid/XGridColumnModel.hpp>
#include <com/sun/star/awt/grid/XGridControl.hpp>
#include <com/sun/star/awt/grid/XGridDataModel.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/text/XText.hpp>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/objects/spreadsheet_program.h"
#include "adapters/curl/curl_internet.h"
#include "adapters/poll/poll_winsock_library.h"
#include "calc/views/office_rig.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "forms/grid.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/recording_system.h"

namespace mirelo::calc {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
using ::testing::Contains;
using ::testing::ElementsAre;

class SettingsDialog : public OnTheDesktop {
 protected:
  enum Tab { kTickers, kSettings, kCharting, kFields };

  SettingsDialog() {
    host.Use(internet).Use(sockets).Use(clock).Use(registry).Use(system).Use(vault);
    facade.emplace();
    mGlobal::AppSettings().SaveSetting("Settings", "HTTPPort", Variant(SignedHttpPort()));
    facade->m_ObjExcelApplication(ApplicationOf(
        OfficeContext(), Reference<css::sheet::XSpreadsheetDocument>(document, UNO_QUERY_THROW)));
  }

  // As it is stored: ports from 32768 on are negative in the 16 bits that a port has.
  static std::string SignedHttpPort() {
    return std::to_string(static_cast<std::int16_t>(std::stoi(std::getenv("MIRELO_HTTP_PORT"))));
  }
  void Open(Tab tab) const { person.Click("C1TTickersSettings:" + std::to_string(tab)); }
  void Tick(const std::string& box) const { person.ClickAt(box, 8, Height(box) / 2); }
  std::int32_t Height(const std::string& view) const {
    return person.Find(view).As<css::awt::XWindow>()->getPosSize().Height;
  }
  bool IsTicked(const std::string& box) const { return person.Find(box).Get<sal_Int16>("State") == 1; }
  bool IsEnabled(const std::string& view) const { return person.Find(view).Get<bool>("Enabled"); }

  std::vector<std::string> Items(const std::string& list) const {
    std::vector<std::string> items;
    for (const auto& item : person.Find(list).As<css::awt::XListBox>()->getItems())
      items.push_back(calc::TextOf(item));
    return items;
  }

  Reference<css::awt::grid::XGridDataModel> Table() const {
    return person.Find("FG").Get<Reference<css::awt::grid::XGridDataModel>>("GridDataModel");
  }
  std::vector<std::string> Tickers() const {
    std::vector<std::string> tickers;
    for (sal_Int32 row = 0; row < Table()->getRowCount(); ++row)
      tickers.push_back(calc::TextOf(Table()->getCellData(0, row).get<rtl::OUString>()));
    return tickers;
  }
  std::int32_t ColumnOf(const std::string& header) const {
    const auto columns = person.Find("FG").Get<Reference<css::awt::grid::XGridColumnModel>>("ColumnModel");
    for (sal_Int32 column = 0; column < columns->getColumnCount(); ++column) {
      if (calc::TextOf(columns->getColumn(column)->getTitle()) == header) return column;
    }
    throw std::runtime_error("no column " + header);
  }
  // Where the table answers that this cell is; -1 for the header.
  void ClickCell(std::int32_t row, const std::string& header) const {
    const auto table = person.Find("FG").As<css::awt::grid::XGridControl>();
    const css::awt::Rectangle size = person.Find("FG").As<css::awt::XWindow>()->getPosSize();
    const std::int32_t column = ColumnOf(header);
    for (std::int32_t y = 4; y < size.Height; y += 6) {
      for (std::int32_t x = 4; x < size.Width; x += 6) {
        if (table->getRowAtPoint(x, y) == row && table->getColumnAtPoint(x, y) == column) {
          return person.ClickAt("FG", x + 4, y + 2);
        }
      }
    }
    throw std::runtime_error("no cell of " + header);
  }
  void ClickHeader(const std::string& header) const { ClickCell(-1, header); }
  // As the form has them: the office's cells are pictures.
  std::vector<std::string> Ticked() const {
    const auto& grid = dynamic_cast<const forms::Grid&>(*person.Window().form().Find("FG"));
    std::vector<std::string> ticked;
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      for (std::int32_t col = 2; col < grid.Cols(); ++col) {
        const std::string& tick = grid.TextMatrix(row, col);
        if (!tick.empty() && tick != "0")
          ticked.push_back(grid.TextMatrix(row, 1) + " " + grid.TextMatrix(0, col));
      }
    }
    return ticked;
  }
  void AddTicker(const std::string& ticker) {
    person.Does("type " + ticker, [=, this] {
      person.Click("txtTicker");
      person.Type(ticker);
      person.Press(css::awt::Key::RETURN);
    });
  }

  std::string CellOf(std::int32_t sheet, std::int32_t column, std::int32_t row) const {
    const Reference<css::container::XIndexAccess> sheets(
        Reference<css::sheet::XSpreadsheetDocument>(document, UNO_QUERY_THROW)->getSheets(), UNO_QUERY_THROW);
    const Reference<css::table::XCellRange> cells(sheets->getByIndex(sheet), UNO_QUERY_THROW);
    return calc::TextOf(
        Reference<css::text::XText>(cells->getCellByPosition(column, row), UNO_QUERY_THROW)->getString());
  }

  curl::CurlInternet internet{loop};
  poll::PollWinsockLibrary sockets{loop};
  testing::ManualClock clock;
  testing::MemoryRegistry registry;
  testing::RecordingSystem system;
  testing::MemoryVault vault;
  std::optional<cMirelo> facade;
};

TEST_F(SettingsDialog, OpensOnItsFirstTabWithTheDefaults) {
  person.Does("look at the first tab", [&] {
    EXPECT_TRUE(person.IsShown("FG"));
    EXPECT_TRUE(IsTicked("chkVerTable"));
    EXPECT_EQ(person.TextOf("txtRows"), "20");
    Open(kSettings);
  });
  person.Does("look at the second", [&] {
    EXPECT_FALSE(person.IsShown("FG"));
    EXPECT_TRUE(person.IsShown("txtSec"));
    EXPECT_EQ(person.TextOf("txtSec"), "60");
    EXPECT_EQ(person.TextOf("ComDisplayTimezone"), "(ET) US Eastern");
    EXPECT_FALSE(IsEnabled("ComQuoteSource"));
    Open(kCharting);
  });
  person.Does("look at the third", [&] {
    EXPECT_TRUE(person.IsShown("ComChartStyle"));
    EXPECT_FALSE(IsTicked("chkBuildCharts"));
    Open(kFields);
  });
  person.Does("look at the last", [&] {
    EXPECT_THAT(Items("ListRight"), ElementsAre("Ticker", "Last", "Change", "Bid", "Ask", "Date", "Time"));
    EXPECT_EQ(Items("ListLeft").size(), 12U);
    person.Click("ButCancel");
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SettingsDialog, MakesTheTableOfTheTickersThatAreTyped) {
  AddTicker("msft");
  AddTicker("ibm");
  person.Does("look, and go", [&] {
    EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
    EXPECT_EQ(person.TextOf("txtTicker"), "");
    person.Click("ButGo");
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 78);
  EXPECT_EQ(CellOf(0, 0, 1), "Ticker");
  EXPECT_EQ(CellOf(0, 1, 1), "Last");
  EXPECT_EQ(CellOf(0, 0, 2), "MSFT");
  EXPECT_EQ(CellOf(0, 0, 3), "IBM");
}

TEST_F(SettingsDialog, TicksTheFieldsThatAreClicked) {
  AddTicker("msft");
  AddTicker("ibm");
  person.Does("click a cell", [&] { ClickCell(1, "Last"); });
  person.Does("click another, and look", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("IBM Last"));
    ClickCell(0, "Bid");
  });
  person.Does("click a header", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "IBM Last"));
    ClickHeader("Ask");
  });
  person.Does("take a tick away", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Last", "IBM Ask"));
    ClickCell(1, "Last");
  });
  person.Does("press the blank key", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Ask"));
    person.Press(css::awt::Key::SPACE, 0, u' ');
  });
  person.Does("look", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Last", "IBM Ask"));
    person.Click("ButCancel");
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SettingsDialog, RefusesLettersInANumberAndKeepsThem) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("type a letter", [&] {
    person.Click("txtSec");
    person.Press(css::awt::Key::END);
    person.Type("x");
  });
  person.Answers("The value must be a digit.", "OK");
  person.Does("look", [&] {
    EXPECT_EQ(person.TextOf("txtSec"), "60x");
    person.Press(css::awt::Key::BACKSPACE);
  });
  person.Does("look again", [&] {
    EXPECT_EQ(person.TextOf("txtSec"), "60");
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, CountsUpAndDownByItsArrows) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("press the upper arrow", [&] { person.ClickAt("VScrollDecimalplaces", 5, 4); });
  person.Does("press the lower arrow", [&] {
    EXPECT_EQ(person.TextOf("txtDecimalPlaces"), "3");
    person.ClickAt("VScrollDecimalplaces", 5, Height("VScrollDecimalplaces") - 4);
  });
  person.Does("look", [&] {
    EXPECT_EQ(person.TextOf("txtDecimalPlaces"), "2");
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, TakesFillColorsFromThePalette) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("press On", [&] { person.Click("ButOn"); });
  person.Does("take a color", [&] {
    EXPECT_EQ(person.Window().form().Name(), "frmColor");
    person.Click("L1(3)");
  });
  person.Does("look", [&] {
    EXPECT_EQ(person.Window().form().Name(), "frmMirelo");
    EXPECT_EQ(person.Find("txtOn").Get<sal_Int32>("BackgroundColor"), 0xFF0000);
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, AsksBeforeEnterTakesNoColor) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("press On", [&] { person.Click("ButOn"); });
  person.Does("press Enter", [&] {
    EXPECT_EQ(person.Window().form().Name(), "frmColor");
    person.Press(css::awt::Key::RETURN);
  });
  person.Answers("Use no fill color?", "No");
  person.Does("press Escape, which is of no use", [&] {
    EXPECT_EQ(person.Window().form().Name(), "frmColor");
    person.Press(css::awt::Key::ESCAPE);
  });
  person.Does("look, and give up", [&] {
    EXPECT_EQ(person.Window().form().Name(), "frmColor");
    EXPECT_TRUE(person.IsShown("L1(0)"));
    person.Window().form().Close();
  });
  person.Does("cancel", [&] { person.Click("ButCancel"); });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, MovesColumnsByItsButtons) {
  person.Does("open the fields", [&] { Open(kFields); });
  person.Does("show a column", [&] { person.ClickAt("ListLeft", 10, 20); });
  person.Does("by the button", [&] { person.Click("ButRight"); });
  person.Does("look", [&] {
    EXPECT_THAT(Items("ListRight"), Contains("Volume"));
    EXPECT_EQ(Items("ListLeft").size(), 11U);
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, ChoosesFromLists) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("open the list of styles", [&] {
    person.Click("ComStyle");
    person.Press(css::awt::Key::DOWN);
  });
  person.Does("look", [&] {
    EXPECT_EQ(person.TextOf("ComStyle"), "Green");
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, KeepsTheDocumentThatItLiesAbove) {
  person.Does("close the document", [&] {
    EXPECT_ANY_THROW(Reference<css::util::XCloseable>(document, UNO_QUERY_THROW)->close(false));
  });
  person.Does("cancel", [&] { person.Click("ButCancel"); });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SettingsDialog, KeepsTheDocumentWhileABoxWaitsForAnAnswer) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("type a letter", [&] {
    person.Click("txtSec");
    person.Type("x");
  });
  person.Waits("the box", [&] { return Person::IsBoxUp("The value must be a digit."); });
  person.Does("close the document", [&] {
    EXPECT_ANY_THROW(Reference<css::util::XCloseable>(document, UNO_QUERY_THROW)->close(false));
  });
  person.Answers("The value must be a digit.", "OK");
  person.Does("cancel", [&] { person.Click("ButCancel"); });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

}  // namespace
}  // namespace mirelo::calc
