// The settings dialog: four tabs above the buttons that end it.

#include "forms/layout/layouts.h"

namespace mirelo::forms::layout {

namespace {

Part TickersTab() {
  return Column({
      Row({Wide(Called(Control("txtTicker"), "Ticker to add")), Control("ButAdd")}),
      Wide(Row({
          // Of columns of fields, of those that nobody lays out, and of tickers. Tests of the dialog hold
          // them to what it lays out by the settings' catalogue, which this room may not know.
          Wide(WithUsualWidths(Called(Control("FG"), "Tickers"), {800, 960, 1700})),
          Column({Control("ButTickerUp"), Control("ButTickerDown"), Control("ButDel"), Space()}),
      })),
      Row({Control("ButSort"), Space(), Control("ButImport"), Control("ButExport")}),
      Control("chkVerTable"),
      Row({Control("chkLimitRows"), Spin("txtRows", "VScrollRows"), Space()}),
      Unseen("ImageChart"),
  });
}

Part SettingsTab() {
  return Column({
      Title("lblTimingOptions"),
      Fields({
          Row({Control("chkUpdOrNot"), Row({Spin("txtSec", "VScrollSec"), Control("lblSeconds"), Space()})}),
          Row({Words("Quote source:"), Row({Wide(Control("ComQuoteSource")), Control("ButUpDate")})}),
          Row({Words(""), Control("lblStatus")}),
      }),
      Control("Line1"),
      Heading("QuoteTracker:"),
      Fields({
          Row({Words("Address:"), Control("txtWebAddress")}),
          Row({Words("HTTP port:"),
               Row({Wide(Control("txtHTTPPort")), Words("Socket port:"), Wide(Control("txtSocketPort"))})}),
          Row({Words("Time zone:"), Control("ComDisplayTimezone")}),
          Row({Words("Time offset:"), Row({Control("ComDisplayOffset"), Space()})}),
      }),
      Control("Line2"),
      Heading("Table:"),
      Fields({
          Row({Control("chkStyleOrNot"), Row({Control("ComStyle"), Space()})}),
          Row({Words("Fill colors:"),
               Row({Swatch("txtOn"), Control("ButOn"), Swatch("txtOff"), Control("ButOff"), Space()})}),
          Row({Words("Decimal places:"),
               Row({Spin("txtDecimalPlaces", "VScrollDecimalplaces"), Control("lblExample"), Space()})}),
          Row({Words("Vertical sheets:"), Row({Wide(Control("txtVerticalSheet")), Control("lblTicker")})}),
          Row({Words(""), Control("lblExampleSheet")}),
      }),
      Space(),
  });
}

Part ChartingTab() {
  return Column({
      Control("chkBuildCharts"),
      Row({
          Indent(),
          Wide(Column({
              Fields({
                  Row({Control("chkChartStyle"), Row({Control("ComChartStyle"), Space()})}),
                  Row({Words("Chart points:"), Row({Spin("txtChartPoints", "VScrollChartPoints"), Space()})}),
              }),
              Control("chkAddYAxis"),
              Control("chkColorPoints"),
              Control("chkGreyOut"),
          })),
      }),
      Space(),
  });
}

Part FieldsTab() {
  return Row({
      Wide(Column({Control("lblAvailableColums"), Wide(Called(Control("ListLeft"), "Available columns"))})),
      Column({Space(), Called(Control("ButRight"), "Show the column"),
              Called(Control("ButAllRight"), "Show all columns"),
              Called(Control("ButLeft"), "Hide the column"),
              Called(Control("ButAllLeft"), "Hide all columns"), Space()}),
      Wide(Column({Control("lblColumsTo"), Wide(Called(Control("ListRight"), "Columns to view"))})),
      Column({Space(), Control("ButUp"), Control("ButDown"), Space()}),
  });
}

}  // namespace

FormLayout LayoutOfSettingsDialog() {
  return {
      {"C1Elastic1", Column({Wide(Control("C1TTickersSettings")),
                             Row({Space(), Control("ButGo"), Control("ButClose"), Control("ButCancel")})})},
      {"C1ElaTickers", TickersTab()},
      {"C1ElaSettings", SettingsTab()},
      {"C1ElaCharting", ChartingTab()},
      {"C1ElaFields", FieldsTab()},
  };
}

}  // namespace mirelo::forms::layout
