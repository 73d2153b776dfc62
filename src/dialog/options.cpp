// How the dialog's boxes switch each other on and off.

#include <cstdint>

#include "core/known_setting.h"
#include "diagnostics/routine.h"
#include "dialog/column_widths.h"
#include "dialog/frmMirelo.h"
#include "dialog/styles.h"
#include "dialog/tabs.h"

namespace mirelo {

void frmMirelo::C1TTickersSettings_Click() {
  Routine("Mirelo.frmMirelo.C1TTickersSettings_Click", [&](Frame& frame) {
    if (C1TTickersSettings.CurrTab() == kFieldsTab) {
      STEP(ListLeft.SetFocus());
      if (ListLeft.ListCount() > 0 && ListLeft.ListIndex() == -1)
        STEP(ListLeft.ListIndex(ListLeft.ListCount() - 1));
      STEP(EnableUpDn());
    } else if (C1TTickersSettings.CurrTab() == kSettingsTab) {
      STEP(lblStatus.Caption(""));
    }
    frame.pop();
  });
}

void frmMirelo::chkBuildCharts_Click() {
  Routine("Mirelo.frmMirelo.chkBuildCharts_Click", [&](Frame& frame) {
    const bool on = chkBuildCharts.Value() == 1;
    STEP(chkChartStyle.Enabled(on));
    STEP(ComChartStyle.Enabled(on && ComChartStyle.Text() != kNoStyle));
    STEP(txtChartPoints.Enabled(on));
    STEP(VScrollChartPoints.Enabled(on));
    STEP(chkColorPoints.Enabled(on));
    STEP(chkGreyOut.Enabled(on));
    STEP(chkAddYAxis.Enabled(on));
    if (chkBuildCharts.Value() == 1) {
      if (chkVerTable.Value() == 1) {
        STEP(AddToFGColCharts());
      } else {
        STEP(DeleteFromFGColCharts());
      }
    } else if (chkVerTable.Value() == 1) {
      STEP(DeleteFromFGColCharts());
    }
    frame.pop();
  });
}

void frmMirelo::chkChartStyle_Click() {
  Routine("Mirelo.frmMirelo.chkChartStyle_Click", [&](Frame& frame) {
    if (chkChartStyle.Value() == 0) {
      STEP(ComChartStyle.Text(kNoStyle));
      STEP(ComChartStyle.Enabled(false));
      STEP(txtChartPoints.Enabled(false));
      STEP(VScrollChartPoints.Enabled(false));
    } else {
      STEP(ComChartStyle.Enabled(true));
      if (ComChartStyle.Text() == kNoStyle) STEP(ComChartStyle.Text(Setting("ChartStyle").ToText()));
      STEP(txtChartPoints.Enabled(true));
      STEP(VScrollChartPoints.Enabled(true));
    }
    frame.pop();
  });
}

void frmMirelo::chkStyleOrNot_Click() {
  Routine("Mirelo.frmMirelo.chkStyleOrNot_Click", [&](Frame& frame) {
    if (chkStyleOrNot.Value() == 0) {
      STEP(ComStyle.Text(kNoStyle));
      STEP(ComStyle.Enabled(false));
    } else {
      STEP(ComStyle.Enabled(true));
      if (ComStyle.Text() == kNoStyle) STEP(ComStyle.Text(Setting("Style").ToText()));
    }
    frame.pop();
  });
}

void frmMirelo::chkLimitRows_Click() {
  Routine("Mirelo.frmMirelo.chkLimitRows_Click", [&](Frame& frame) {
    STEP(txtRows.Enabled(chkLimitRows.Value() == 1));
    STEP(VScrollRows.Enabled(chkLimitRows.Value() == 1));
    if (chkLimitRows.Value() == 0) STEP(txtRows.Text("0"));
    frame.pop();
  });
}

void frmMirelo::chkUpdOrNot_Click() {
  Routine("Mirelo.frmMirelo.chkUpdOrNot_Click", [&](Frame& frame) {
    if (chkUpdOrNot.Value() == 0) {
      STEP(txtSec.Text("0"));
      STEP(txtSec.Enabled(false));
      STEP(VScrollSec.Enabled(false));
    } else {
      STEP(txtSec.Enabled(true));
      STEP(VScrollSec.Enabled(true));
    }
    frame.pop();
  });
}

void frmMirelo::chkVerTable_Click() {
  Routine("Mirelo.frmMirelo.chkVerTable_Click", [&](Frame& frame) {
    if (VerticalClickArmed_) {
      StoreColumnWidths(frame, *this);
      EnableRowsLimit(frame);
      STEP(TickerCol_ = chkVerTable.Value() == 0 ? 0 : 1);
      STEP(FGVertical(true));
      if (chkVerTable.Value() == 1) STEP(ChkFGVerticalTables());
    }
    frame.pop();
  });
}

}  // namespace mirelo
