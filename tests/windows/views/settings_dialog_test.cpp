// The settings dialog in windows of Windows' own, on an empty workbook in memory.

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "windows/views/rig.h"

#include "adapters/windows/views/grid_view.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "dialog/scripted_portfolios.h"
#include "forms/grid.h"
#include "forms/text_box.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/answering_internet.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/recording_system.h"

namespace mirelo::windows {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

class SettingsDialog : public OnTheDesktop {
 protected:
  enum Tab { kTickers, kSettings, kCharting, kFields };

  SettingsDialog() {
    internet.answer = testing::ScriptedPortfolios();
    host.Use(internet).Use(clock).Use(registry).Use(system).Use(vault);
    facade.emplace();
    facade->m_ObjExcelApplication(spreadsheet.Application());
  }

  void Open(Tab tab) const { person.Open("C1TTickersSettings", tab); }
  // Two steps: what a key does is done when the person has let it go.
  void AddTicker(const std::string& ticker) {
    person.Does("go to the ticker", [this] { person.Click("txtTicker"); });
    person.Does("type " + ticker, [this, ticker] { person.Type(ticker); });
    person.Does("add it", [this] { person.Click("ButAdd"); });
  }
  GridView& Table() const {
    return dynamic_cast<GridView&>(
        *person.Window().views().ViewOf(person.Window().form().Find("FG"))->painted);
  }
  const forms::Grid& Grid() const {
    return dynamic_cast<const forms::Grid&>(*person.Window().form().Find("FG"));
  }
  std::int32_t ColumnOf(const std::string& header) const {
    for (std::int32_t col = 0; col < Grid().Cols(); ++col) {
      if (Grid().TextMatrix(0, col) == header) return col;
    }
    throw std::runtime_error("no column " + header);
  }
  POINT PlaceOfCell(std::int32_t row, const std::string& header) const {
    const auto place = Table().Places().PlaceOf(row, ColumnOf(header));
    return {place.left + place.width / 2, place.top + place.height / 2};
  }
  // Rows from 1; 0 is the header.
  void ClickCell(std::int32_t row, const std::string& header) const {
    const POINT at = PlaceOfCell(row, header);
    person.ClickAt("FG", at.x, at.y);
  }
  std::vector<std::string> Tickers() const {
    std::vector<std::string> tickers;
    for (std::int32_t row = 1; row < Grid().Rows(); ++row) tickers.push_back(Grid().TextMatrix(row, 1));
    return tickers;
  }
  std::vector<std::string> Ticked() const {
    std::vector<std::string> ticked;
    for (std::int32_t row = 1; row < Grid().Rows(); ++row) {
      for (std::int32_t col = 2; col < Grid().Cols(); ++col) {
        const std::string& text = Grid().TextMatrix(row, col);
        if (!text.empty() && text != "0")
          ticked.push_back(Grid().TextMatrix(row, 1) + " " + Grid().TextMatrix(0, col));
      }
    }
    return ticked;
  }
  std::string CellOf(std::int32_t row, std::int32_t col) {
    return spreadsheet.Application()
        ->Worksheets()
        ->Item("Dovanta2_Quotes")
        ->Cells(row, col)
        ->Value()
        .ToText();
  }

  testing::AnsweringInternet internet;
  testing::ManualClock clock;
  testing::MemoryRegistry registry;
  testing::RecordingSystem system;
  testing::MemoryVault vault;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
  std::optional<cMirelo> facade;
};

TEST_F(SettingsDialog, ShowsItsTabs) {
  person.Does("look at the first", [&] {
    EXPECT_TRUE(person.IsShown("txtTicker"));
    EXPECT_TRUE(person.HasFocus("txtTicker"));
    EXPECT_FALSE(person.IsShown("txtSec"));
    Open(kSettings);
  });
  person.Does("look at the second", [&] {
    EXPECT_FALSE(person.IsShown("txtTicker"));
    EXPECT_TRUE(person.IsShown("txtSec"));
    EXPECT_EQ(person.TextOf("ComStyle"), "Blue");
    EXPECT_EQ(person.TextOf("txtDecimalPlaces"), "2");
    Open(kCharting);
  });
  person.Does("look at the third", [&] {
    EXPECT_TRUE(person.IsShown("ComChartStyle"));
    EXPECT_FALSE(person.IsTicked("chkBuildCharts"));
    Open(kFields);
  });
  person.Does("look at the last", [&] {
    EXPECT_THAT(person.Items("ListRight"),
                ElementsAre("Ticker", "Last", "Change", "Bid", "Ask", "Date", "Time"));
    EXPECT_EQ(person.Items("ListLeft").size(), 12U);
    person.Click("ButCancel");
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SettingsDialog, OpensTabsByTheirMarkedLetters) {
  person.Does("press Alt+S", [&] { person.PressWithAlt(L's'); });
  person.Does("look", [&] {
    EXPECT_TRUE(person.IsShown("txtSec"));
    EXPECT_TRUE(person.HasFocus("chkUpdOrNot")) << "the first on the tab";
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SettingsDialog, TurnsItsTabsByCtrlTab) {
  const auto hold = [](bool down) {
    BYTE keys[256] = {};
    keys[VK_CONTROL] = down ? 0x80 : 0;
    ::SetKeyboardState(keys);
  };
  person.Does("press Ctrl+Tab", [&] {
    hold(true);
    person.Press(VK_TAB);
  });
  person.Does("look", [&] {
    hold(false);
    EXPECT_TRUE(person.IsShown("txtSec"));
    person.Press(VK_ESCAPE);
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
  EXPECT_EQ(CellOf(2, 1), "Ticker");
  EXPECT_EQ(CellOf(2, 2), "Last");
  EXPECT_EQ(CellOf(3, 1), "MSFT");
  EXPECT_EQ(CellOf(4, 1), "IBM");
}

TEST_F(SettingsDialog, TicksTheFieldsThatAreClicked) {
  AddTicker("msft");
  AddTicker("ibm");
  person.Does("click a cell", [&] { ClickCell(2, "Last"); });
  person.Does("click another, and look", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("IBM Last"));
    ClickCell(1, "Bid");
  });
  person.Does("click a header", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "IBM Last"));
    ClickCell(0, "Ask");
  });
  person.Does("take a tick away", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Last", "IBM Ask"));
    ClickCell(2, "Last");
  });
  person.Does("press the blank key", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Ask"));
    person.Press(VK_SPACE);
  });
  person.Does("look", [&] {
    EXPECT_THAT(Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Last", "IBM Ask"));
    person.Click("ButCancel");
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SettingsDialog, DragsASelectionAndMovesItByTheArrowKeys) {
  for (const char* ticker : {"msft", "ibm", "ge"}) AddTicker(ticker);
  person.Does("drag", [&] { person.Drag("FG", PlaceOfCell(1, "Last"), PlaceOfCell(2, "Bid")); });
  person.Does("look, and press the arrow", [&] {
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_EQ(Grid().RowSel(), 2);
    EXPECT_EQ(Grid().ColSel(), ColumnOf("Bid"));
    person.Press(VK_DOWN);
  });
  person.Does("look", [&] {
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().RowSel(), 2);
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, WidensColumnsByTheEdgesOfTheirHeaders) {
  AddTicker("msft");
  std::int32_t before = 0;
  person.Does("drag the edge", [&] {
    const auto place = Table().Places().PlaceOf(0, ColumnOf("Ticker"));
    before = place.width;
    const LONG edge = place.left + place.width - 1;
    person.Drag("FG", {edge, place.height / 2}, {edge + 30, place.height / 2});
  });
  person.Does("look", [&] {
    EXPECT_NEAR(Table().Places().PlaceOf(0, ColumnOf("Ticker")).width, before + 30, 2);
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, RefusesLettersInANumberAndKeepsThem) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("go to the number", [&] {
    person.Click("txtSec");
    person.Press(VK_END);
  });
  person.Does("type a letter", [&] { person.Type("x"); });
  person.Answers("The value must be a digit.", IDOK);
  person.Does("look", [&] {
    EXPECT_EQ(person.TextOf("txtSec"), "60x");
    person.Type("\b");
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
    const RECT place = person.PlaceOf("VScrollDecimalplaces");
    person.ClickAt("VScrollDecimalplaces", 5, place.bottom - place.top - 4);
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
    EXPECT_EQ(person.Window().form().Find("txtOn")->BackColor(), 0x0000FF);
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, AsksBeforeEnterTakesNoColor) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("press On", [&] { person.Click("ButOn"); });
  person.Does("press Enter", [&] {
    EXPECT_TRUE(person.HasFocus("L1(0)"));
    person.Press(VK_RETURN);
  });
  person.Answers("Use no fill color?", IDNO);
  person.Does("go down by the arrow", [&] {
    EXPECT_EQ(person.Window().form().Name(), "frmColor");
    person.Press(VK_DOWN);
  });
  person.Does("and to the right", [&] {
    EXPECT_TRUE(person.HasFocus("L1(1)"));
    person.Press(VK_RIGHT);
  });
  person.Does("look, and give up", [&] {
    EXPECT_TRUE(person.HasFocus("L1(6)"));
    person.Window().form().Close();
  });
  person.Does("cancel", [&] { person.Click("ButCancel"); });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, MovesColumnsByItsButtons) {
  person.Does("open the fields", [&] { Open(kFields); });
  person.Does("choose a column", [&] { person.Choose("ListLeft", 0); });
  std::string column;
  person.Does("show it", [&] {
    column = person.Items("ListLeft").at(0);
    person.Click("ButRight");
  });
  person.Does("look", [&] {
    EXPECT_THAT(person.Items("ListRight"), Contains(column));
    EXPECT_EQ(person.Items("ListLeft").size(), 11U);
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, ChoosesFromLists) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("choose", [&] { person.Choose("ComStyle", 1); });
  person.Does("look", [&] {
    EXPECT_EQ(person.TextOf("ComStyle"), "Green");
    person.Click("ButCancel");
  });
  facade->LoadFrmMirelo();
}

TEST_F(SettingsDialog, ReportsWhatFailsInADialogOfItsOwn) {
  internet.answer = [](const auto&) -> std::optional<std::string> { throw Errors::InvalidProcedureCall(); };
  AddTicker("msft");
  person.Does("fail", [&] { person.Click("ButGo"); });
  person.Waits("the report", [&] {
    return forms::ActiveForm() != nullptr && forms::ActiveForm()->Name() == "frmErrorMessage";
  });
  person.Does("look, and abort", [&] {
    EXPECT_TRUE(person.IsShown("txtErrorMessage"));
    person.Click("btnAbort");
  });
  person.Answers("Please run QuoteTracker.", IDOK);
  person.Does("cancel", [&] { person.Click("ButCancel"); });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

}  // namespace
}  // namespace mirelo::windows
