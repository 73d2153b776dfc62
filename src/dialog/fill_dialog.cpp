// How the dialog is filled when it becomes active. Setting a control raises its handler as a person's action
// does, so the order of the statements matters.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/known_setting.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/styles.h"
#include "dialog/tabs.h"
#include "dialog/time_zones.h"

namespace mirelo {

Variant frmMirelo::Setting(DialogSetting setting) const { return setting.In(Store()); }

void frmMirelo::Form_Activate() {
  Routine("Mirelo.frmMirelo.Form_Activate", [&](Frame& frame) {
    if (!ReloadOnActivate_) return;  // this exit leaves the name on the call stack
    FillTimes(frame);
    FillCharts(frame);
    FillTable(frame);
    FillTiming(frame);
    FillVerticalTables(frame);
    FillConnection(frame);
    FillColumns(frame);
    EnableByOptions(frame);
    FillColors(frame);
    STEP(C1TTickersSettings.CurrTab(kTickersTab));
    frame.pop();
  });
}

void frmMirelo::FillTimes(Frame& frame) {
  STEP(ComDisplayTimezone.Clear());
  for (const TimeZone& zone : kTimeZones) STEP(ComDisplayTimezone.AddItem(zone.name));
  // A text that is no entry is shown as well.
  STEP(ComDisplayTimezone.Text(Setting("DisplayTimezone").ToText()));

  STEP(ComDisplayOffset.Clear());
  for (std::int32_t offset = kHighestHalfHour; offset >= kLowestHalfHour; --offset)
    STEP(ComDisplayOffset.AddItem(DisplayOffsetText(offset)));
  STEP(ComDisplayOffset.Text(Setting("DisplayOffset").ToText()));
}

void frmMirelo::FillCharts(Frame& frame) {
  STEP(ComChartStyle.Clear());
  for (const char* style : kStyles) STEP(ComChartStyle.AddItem(style));
  STEP(ComChartStyle.Text(Setting("ChartStyle").ToText()));
  STEP(chkBuildCharts.Value(Setting("BuildCharts").ToInt16()));
  STEP(chkChartStyle.Value(ComChartStyle.Text() != kNoStyle));
  STEP(chkColorPoints.Value(Setting("ColorPoints").ToInt16()));
  STEP(chkAddYAxis.Value(Setting("AddYAxis").ToInt16()));
  STEP(chkGreyOut.Value(Setting("GreyOut").ToInt16()));
  STEP(txtChartPoints.Text(Setting("ChartPoints").ToText()));
}

void frmMirelo::FillTable(Frame& frame) {
  STEP(txtDecimalPlaces.Text(Setting("txtDecimalPlaces").ToText()));
  STEP(txtVerticalSheet.Text(std::string(Trim(Setting("txtVerticalSheet").ToText()))));
  STEP(ComStyle.Clear());
  for (const char* style : kStyles) STEP(ComStyle.AddItem(style));
  STEP(LoadFG());
  STEP(PrevColumnCount_ = -1);
  STEP(ComStyle.Text(Setting("Style").ToText()));
}

// Four more properties of the grid are set here in the dialog as it was first designed (0, 3, 0 and 1); which
// ones is not known any more, and nothing in the dialog depends on them, so they are left alone.
void frmMirelo::LoadFG() {
  Routine("Mirelo.frmMirelo.LoadFG", [&](Frame& frame) {
    STEP(FG.Cols(20));
    STEP(FG.Rows(1));
    frame.pop();
  });
}

void frmMirelo::FillTiming(Frame& frame) {
  STEP(chkUpdOrNot.Value(Setting("UpdateEvery").ToInt16()));
  if (chkUpdOrNot.Value() == 1) {
    STEP(txtSec.Text(Setting("Seconds").ToText()));
  } else {
    STEP(txtSec.Text("0"));
  }
  STEP(chkStyleOrNot.Value(ComStyle.Text() != kNoStyle));
}

void frmMirelo::FillVerticalTables(Frame& frame) {
  STEP(VerticalClickArmed_ = false);
  STEP(chkVerTable.Value(Setting("VerticalTable").ToInt16()));
  STEP(TickerCol_ = chkVerTable.Value() == 0 ? 0 : 1);
  STEP(VerticalClickArmed_ = true);

  STEP(txtRows.Enabled(chkLimitRows.Value() == 1));
  STEP(VScrollRows.Enabled(chkLimitRows.Value() == 1));
  STEP(txtRows.Text(Setting("RowsLimit").ToText()));
  STEP(chkLimitRows.Value(Val(txtRows.Text()) != 0));
  STEP(VScrollRows.Enabled(txtRows.Enabled()));
}

void frmMirelo::FillConnection(Frame& frame) {
  STEP(txtHTTPPort.Text(Setting("HTTPPort").ToText()));
  STEP(txtSocketPort.Text(Setting("SocketPort").ToText()));
  STEP(txtWebAddress.Text(Setting("Webaddress").ToText()));
}

// The table on the sheet knows better than the settings which columns there are.
void frmMirelo::FillColumns(Frame& frame) {
  std::string hidden;
  std::string shown;
  STEP(hidden = Setting("ListLeft").ToText());
  STEP(shown = Setting("ListRight").ToText());
  STEP(LoadTickers(hidden, shown));

  std::vector<std::string> names;
  STEP(ListLeft.Clear());
  if (!hidden.empty()) {
    STEP(names = Split(hidden, ","));
    for (const std::string& name : names) STEP(ListLeft.AddItem(name));
  }
  STEP(ListRight.Clear());
  STEP(names = Split(shown, ","));
  for (const std::string& name : names) STEP(ListRight.AddItem(name));

  for (forms::Button* button : {&ButRight, &ButAllRight, &ButLeft, &ButAllLeft, &ButDown, &ButUp})
    STEP(button->Enabled(false));
}

void frmMirelo::EnableByOptions(Frame& frame) {
  EnableRowsLimit(frame);
  STEP(chkBuildCharts_Click());
  EnableRowsLimit(frame);
  STEP(TickerCol_ = chkVerTable.Value() == 0 ? 0 : 1);
  STEP(FGVertical(false));
  if (chkVerTable.Value() == 1) STEP(ChkFGVerticalTables());
  STEP(chkUpdOrNot_Click());
}

// Only vertical tables can have a limit of rows.
void frmMirelo::EnableRowsLimit(Frame& frame) {
  STEP(chkLimitRows.Enabled(chkVerTable.Value() == 1));
  STEP(txtRows.Enabled(chkVerTable.Value() == 1));
  STEP(VScrollRows.Enabled(chkVerTable.Value() == 1));
}

void frmMirelo::FillColors(Frame& frame) {
  STEP(backColorTxtFillColor(txtOn, Setting("FillColorON").ToInt32()));
  STEP(backColorTxtFillColor(txtOff, Setting("FillColorOFF").ToInt32()));
}

}  // namespace mirelo
