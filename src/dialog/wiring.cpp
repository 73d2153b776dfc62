// What the controls of the dialog look like before anything is filled in, and which routine answers which
// event.

#include "core/cMirelo.h"
#include "diagnostics/CFormRestore.h"
#include "dialog/frmMirelo.h"
#include "streaming/cQTStreaming.h"

namespace mirelo {

namespace {

// Client size in twips.
constexpr std::int32_t kDialogWidth = 6330;
constexpr std::int32_t kDialogHeight = 7530;

}  // namespace

frmMirelo::frmMirelo() : SettingsControls("frmMirelo", "Dovanta") {
  Design(kDialogWidth, kDialogHeight, Border::Sizable);
  DesignControls();
  SubscribeHandlers();
}

frmMirelo::~frmMirelo() { EventQTSt(nullptr); }

void frmMirelo::DesignControls() {
  ButDown.ToolTipText("Move Field Down");
  ButUp.ToolTipText("Move Fieldr Up");
  txtDecimalPlaces.ToolTipText("Choose Decimal places");
  ButUpDate.ToolTipText("Update Quote Source from QT");
  ButSort.ToolTipText("Sort Tickers");
  ButExport.ToolTipText("Export Tickers to QT");
  ButImport.ToolTipText("Import Tickers Ftom QT");
  ButDel.ToolTipText("Delete Ticker");
  ButTickerDown.ToolTipText("Move Ticker Down");
  ButTickerUp.ToolTipText("Move Ticker Up");
  ButAdd.ToolTipText("Add Ticker");

  ButAllLeft.Picture("all-left");
  ButAllRight.Picture("all-right");
  ButLeft.Picture("left");
  ButRight.Picture("right");
  ButUp.Picture("up");
  ButDown.Picture("down");
  ButDel.Picture("delete");
  ButTickerUp.Picture("up");
  ButTickerDown.Picture("down");

  ButAdd.Default(true);
  ButCancel.Cancel(true);
  ImageChart.Visible(false);           // only lends its picture to the grid
  ComQuoteSource.Tag("Quote Source");  // what a message calls the box
}

void frmMirelo::SubscribeHandlers() {
  C1TTickersSettings.Click.Subscribe([this] { C1TTickersSettings_Click(); });

  ButAdd.Click.Subscribe([this] { ButAdd_Click(); });
  ButDel.Click.Subscribe([this] { ButDel_Click(); });
  ButTickerUp.Click.Subscribe([this] { ButTickerUp_Click(); });
  ButTickerDown.Click.Subscribe([this] { ButTickerDown_Click(); });
  ButSort.Click.Subscribe([this] { ButSort_Click(); });
  ButImport.Click.Subscribe([this] { ButImport_Click(); });
  ButExport.Click.Subscribe([this] { ButExport_Click(); });
  FG.Click.Subscribe([this] { FG_Click(); });
  FG.BeforeEdit.Subscribe(
      [this](std::int32_t row, std::int32_t col, bool& cancel) { FG_BeforeEdit(row, col, cancel); });
  FG.AfterEdit.Subscribe([this](std::int32_t row, std::int32_t col) { FG_AfterEdit(row, col); });
  chkVerTable.Click.Subscribe([this] { chkVerTable_Click(); });
  chkLimitRows.Click.Subscribe([this] { chkLimitRows_Click(); });
  txtRows.Change.Subscribe([this] { txtRows_Change(); });
  VScrollRows.Change.Subscribe([this] { VScrollRows_Change(); });

  chkUpdOrNot.Click.Subscribe([this] { chkUpdOrNot_Click(); });
  txtSec.Change.Subscribe([this] { txtSec_Change(); });
  VScrollSec.Change.Subscribe([this] { VScrollSec_Change(); });
  ButUpDate.Click.Subscribe([this] { ButUpDate_Click(); });
  chkStyleOrNot.Click.Subscribe([this] { chkStyleOrNot_Click(); });
  ButOn.Click.Subscribe([this] { ButOn_Click(); });
  ButOff.Click.Subscribe([this] { ButOff_Click(); });
  txtDecimalPlaces.Change.Subscribe([this] { txtDecimalPlaces_Change(); });
  VScrollDecimalplaces.Change.Subscribe([this] { VScrollDecimalplaces_Change(); });
  txtVerticalSheet.Change.Subscribe([this] { txtVerticalSheet_Change(); });

  chkBuildCharts.Click.Subscribe([this] { chkBuildCharts_Click(); });
  chkChartStyle.Click.Subscribe([this] { chkChartStyle_Click(); });
  txtChartPoints.Change.Subscribe([this] { txtChartPoints_Change(); });
  VScrollChartPoints.Change.Subscribe([this] { VScrollChartPoints_Change(); });

  ListLeft.Click.Subscribe([this] { ListLeft_Click(); });
  ListLeft.DblClick.Subscribe([this] { ListLeft_DblClick(); });
  ListRight.Click.Subscribe([this] { ListRight_Click(); });
  ListRight.DblClick.Subscribe([this] { ListRight_DblClick(); });
  ButLeft.Click.Subscribe([this] { ButLeft_Click(); });
  ButRight.Click.Subscribe([this] { ButRight_Click(); });
  ButAllLeft.Click.Subscribe([this] { ButAllLeft_Click(); });
  ButAllRight.Click.Subscribe([this] { ButAllRight_Click(); });
  ButUp.Click.Subscribe([this] { ButUp_Click(); });
  ButDown.Click.Subscribe([this] { ButDown_Click(); });

  ButGo.Click.Subscribe([this] { ButGo_Click(); });
  ButClose.Click.Subscribe([this] { ButClose_Click(); });
  ButCancel.Click.Subscribe([this] { ButCancel_Click(); });
}

}  // namespace mirelo
