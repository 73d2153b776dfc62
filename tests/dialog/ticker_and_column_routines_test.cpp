// The names under which the routines of the grid and of the column lists stand in traces and reports.

#include <functional>

#include "dialog/vertical_grid_test.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;

class TickerAndColumnRoutines : public VerticalGridTest {
 protected:
  TickerAndColumnRoutines() {
    Save("ListLeft", "Open,High");
    OpenWithCharts("Last,LastVolume,Bid", {"A", "B", "C"});
  }

  void SelectLeft() {
    form.C1TTickersSettings.UserSelect(kFields);
    form.ListLeft.UserSelect(0);
  }
  void SelectRight() {
    form.C1TTickersSettings.UserSelect(kFields);
    form.ListRight.UserSelect(2);
  }
};

TEST_F(TickerAndColumnRoutines, AreEnteredAndLeftByTheirNames) {
  struct Case {
    const char* name;
    std::function<void()> act;
  };
  const std::vector<Case> cases{
      {"ButAdd_Click", [this] { Add({"D"}); }},
      {"AddTicker", [this] { Add({"E"}); }},
      {"AddTicker", [this] { Add({"A"}); }},
      {"ButSort_Click", [this] { form.ButSort.UserPress(); }},
      {"ButTickerUp_Click", [this] { form.ButTickerUp.Click.Raise(); }},
      {"ButTickerDown_Click", [this] { form.ButTickerDown.Click.Raise(); }},
      {"ButDel_Click", [this] { form.ButDel.UserPress(); }},
      {"FG_Click", [this] { FG.UserClickCell(0, 2); }},
      {"FG_BeforeEdit", [this] { FG.UserClickCell(1, 2); }},
      {"FG_AfterEdit", [this] { FG.UserClickCell(1, 2); }},
      {"DeleteFromFGColCharts", [this] { ToggleCharts(); }},
      {"AddToFGColCharts", [this] { ToggleCharts(); }},
      {"FGVertical", [this] { form.FGVertical(false); }},
      {"ListLeft_Click", [this] { SelectLeft(); }},
      {"ListRight_Click", [this] { SelectRight(); }},
      {"EnableUpDn", [this] { SelectRight(); }},
      {"ButUp_Click", [this] { form.ButUp.UserPress(); }},
      {"ButDown_Click", [this] { form.ButDown.UserPress(); }},
      {"ButLeft_Click", [this] { form.ButLeft.UserPress(); }},
      {"ButRight_Click", [this] { form.ButRight.UserPress(); }},
      {"MoveToRight", [this] { form.ListLeft.UserDoubleClick(0); }},
      {"ListLeft_DblClick", [this] { form.ListLeft.UserDoubleClick(0); }},
      {"MoveToLeft", [this] { form.ListRight.UserDoubleClick(2); }},
      {"ListRight_DblClick", [this] { form.ListRight.UserDoubleClick(0); }},
      {"ButAllRight_Click", [this] { form.ButAllRight.Click.Raise(); }},
      {"GetListVerticFields", [this] { form.ButAllRight.Click.Raise(); }},
      {"CheckFieldForVerticalTable", [this] { form.ButAllRight.Click.Raise(); }},
      {"ButAllLeft_Click", [this] { form.ButAllLeft.Click.Raise(); }},
      {"LoadTickers", [this] { form.Activate(); }},
      {"NullDublicatForListRight", [] { frmMirelo::NullDublicatForListRight("Last"); }},
      {"GiveListVerticFields", [] { frmMirelo::GiveListVerticFields("Last"); }},
      {"CheckFieldHeaderTable", [] { frmMirelo::CheckFieldHeaderTable("Last"); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const auto traces = Traces(c.act);
    EXPECT_THAT(traces, Contains("Entered Mirelo.frmMirelo." + std::string(c.name)));
    EXPECT_THAT(traces, Contains("Exited Mirelo.frmMirelo." + std::string(c.name)));
    EXPECT_THAT(CallStack(), IsEmpty());
  }
}

}  // namespace
}  // namespace mirelo::testing
