// What only Windows' own windows do in the settings dialog; the rest is in tests/views.

#include "windows/views/settings_dialog_rig.h"

#include <optional>
#include <string>

#include "automation/runtime_error.h"
#include "forms/form.h"

namespace mirelo::windows {
namespace {

class SettingsDialog : public ::testing::Test, protected SettingsDialogOnWindows {
 protected:
  void AddTicker(const std::string& ticker) { AddsTicker(ticker); }
};

TEST_F(SettingsDialog, OpensTabsByTheirMarkedLetters) {
  person.Does("press Alt+S", [&] {
    EXPECT_TRUE(person.HasFocus("txtTicker"));
    person.PressWithAlt(L's');
  });
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

TEST_F(SettingsDialog, GoesThroughThePaletteByTheArrowKeys) {
  person.Does("open the settings", [&] { Open(kSettings); });
  person.Does("press On", [&] { person.Click("ButOn"); });
  person.Does("go down by the arrow", [&] {
    EXPECT_TRUE(person.HasFocus("L1(0)"));
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
