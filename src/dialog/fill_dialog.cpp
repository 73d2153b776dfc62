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

// The dialog while it is filled. The statements are those of Form_Activate.
struct frmMirelo::Filling {
  Frame& frame;
  frmMirelo& form;

  void Times();
  void Charts();
  void Table();
  void Timing();
  void VerticalTables();
  void Connection();
  void Columns();
  void EnableByOptions();
  void Colors();

  Variant Setting(DialogSetting setting) const { return form.Setting(setting); }
};

void frmMirelo::Form_Activate() {
  Routine("Mirelo.frmMirelo.Form_Activate", [&](Frame& frame) {
    if (!ReloadOnActivate_) return;  // this exit leaves the name on the call stack
    Filling filling{frame, *this};
    filling.Times();
    filling.Charts();
    filling.Table();
    filling.Timing();
    filling.VerticalTables();
    filling.Connection();
    filling.Columns();
    filling.EnableByOptions();
    filling.Colors();
    STEP(C1TTickersSettings.CurrTab(kTickersTab));
    frame.pop();
  });
}

void frmMirelo::Filling::Times() {
  STEP(form.ComDisplayTimezone.Clear());
  for (const TimeZone& zone : kTimeZones) STEP(form.ComDisplayTimezone.AddItem(zone.name));
  // A text that is no entry is shown as well.
  STEP(form.ComDisplayTimezone.Text(Setting("DisplayTimezone").ToText()));

  STEP(form.ComDisplayOffset.Clear());
  for (std::int32_t offset = kHighestHalfHour; offset >= kLowestHalfHour; --offset)
    STEP(form.ComDisplayOffset.AddItem(DisplayOffsetText(offset)));
  STEP(form.ComDisplayOffset.Text(Setting("DisplayOffset").ToText()));
}

void frmMirelo::Filling::Charts() {
  STEP(form.ComChartStyle.Clear());
  for (const char* style : kStyles) STEP(form.ComChartStyle.AddItem(style));
  STEP(form.ComChartStyle.Text(Setting("ChartStyle").ToText()));
  STEP(form.chkBuildCharts.Value(Setting("BuildCharts").ToInt16()));
  STEP(form.chkChartStyle.Value(form.ComChartStyle.Text() != kNoStyle));
  STEP(form.chkColorPoints.Value(Setting("ColorPoints").ToInt16()));
  STEP(form.chkAddYAxis.Value(Setting("AddYAxis").ToInt16()));
  STEP(form.chkGreyOut.Value(Setting("GreyOut").ToInt16()));
  STEP(form.txtChartPoints.Text(Setting("ChartPoints").ToText()));
}

void frmMirelo::Filling::Table() {
  STEP(form.txtDecimalPlaces.Text(Setting("txtDecimalPlaces").ToText()));
  STEP(form.txtVerticalSheet.Text(std::string(Trim(Setting("txtVerticalSheet").ToText()))));
  STEP(form.ComStyle.Clear());
  for (const char* style : kStyles) STEP(form.ComStyle.AddItem(style));
  STEP(form.LoadFG());
  STEP(form.PrevColumnCount_ = -1);
  STEP(form.ComStyle.Text(Setting("Style").ToText()));
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

void frmMirelo::Filling::Timing() {
  STEP(form.chkUpdOrNot.Value(Setting("UpdateEvery").ToInt16()));
  if (form.chkUpdOrNot.Value() == 1) {
    STEP(form.txtSec.Text(Setting("Seconds").ToText()));
  } else {
    STEP(form.txtSec.Text("0"));
  }
  STEP(form.chkStyleOrNot.Value(form.ComStyle.Text() != kNoStyle));
}

void frmMirelo::Filling::VerticalTables() {
  STEP(form.VerticalClickArmed_ = false);
  STEP(form.chkVerTable.Value(Setting("VerticalTable").ToInt16()));
  STEP(form.TickerCol_ = form.chkVerTable.Value() == 0 ? 0 : 1);
  STEP(form.VerticalClickArmed_ = true);

  STEP(form.txtRows.Enabled(form.chkLimitRows.Value() == 1));
  STEP(form.VScrollRows.Enabled(form.chkLimitRows.Value() == 1));
  STEP(form.txtRows.Text(Setting("RowsLimit").ToText()));
  STEP(form.chkLimitRows.Value(Val(form.txtRows.Text()) != 0));
  STEP(form.VScrollRows.Enabled(form.txtRows.Enabled()));
}

void frmMirelo::Filling::Connection() {
  STEP(form.txtHTTPPort.Text(Setting("HTTPPort").ToText()));
  STEP(form.txtSocketPort.Text(Setting("SocketPort").ToText()));
  STEP(form.txtWebAddress.Text(Setting("Webaddress").ToText()));
}

// The table on the sheet knows better than the settings which columns there are.
void frmMirelo::Filling::Columns() {
  std::string hidden;
  std::string shown;
  STEP(hidden = Setting("ListLeft").ToText());
  STEP(shown = Setting("ListRight").ToText());
  STEP(form.LoadTickers(hidden, shown));

  std::vector<std::string> names;
  STEP(form.ListLeft.Clear());
  if (!hidden.empty()) {
    STEP(names = Split(hidden, ","));
    for (const std::string& name : names) STEP(form.ListLeft.AddItem(name));
  }
  STEP(form.ListRight.Clear());
  STEP(names = Split(shown, ","));
  for (const std::string& name : names) STEP(form.ListRight.AddItem(name));

  for (forms::Button* button :
       {&form.ButRight, &form.ButAllRight, &form.ButLeft, &form.ButAllLeft, &form.ButDown, &form.ButUp})
    STEP(button->Enabled(false));
}

void frmMirelo::Filling::EnableByOptions() {
  form.EnableRowsLimit(frame);
  STEP(form.chkBuildCharts_Click());
  form.EnableRowsLimit(frame);
  STEP(form.TickerCol_ = form.chkVerTable.Value() == 0 ? 0 : 1);
  STEP(form.FGVertical(false));
  if (form.chkVerTable.Value() == 1) STEP(form.ChkFGVerticalTables());
  STEP(form.chkUpdOrNot_Click());
}

// Only vertical tables can have a limit of rows.
void frmMirelo::EnableRowsLimit(Frame& frame) {
  STEP(chkLimitRows.Enabled(chkVerTable.Value() == 1));
  STEP(txtRows.Enabled(chkVerTable.Value() == 1));
  STEP(VScrollRows.Enabled(chkVerTable.Value() == 1));
}

void frmMirelo::Filling::Colors() {
  STEP(form.backColorTxtFillColor(form.txtOn, Setting("FillColorON").ToInt32()));
  STEP(form.backColorTxtFillColor(form.txtOff, Setting("FillColorOFF").ToInt32()));
}

}  // namespace mirelo
