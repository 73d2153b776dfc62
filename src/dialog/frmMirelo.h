#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/event.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "dialog/settings_controls.h"
#include "worksheet/table_names.h"
#include "worksheet/variant_arrays.h"

namespace mirelo {

namespace host::excel {
class Application;
class Chart;
class Worksheet;
class Worksheets;
}  // namespace host::excel

class CAppSettings;
class CFormRestore;
class cMirelo;
class cQTStreaming;
class Frame;
class frmColor;

// The settings dialog: tickers, columns, the connection to QuoteTracker, charts and colours. It is the work
// place of what the Go button does as well, so its routines are spread over the rooms that they belong to.
// Some need no dialog: what works on arrays and names alone it has from its bases.
//
// To show it, set frmAppSettings and Owner, show it modally, and read the Tag: "77" (committed, quotes are to
// be streamed), "78" (committed, any other case), or "2" (nothing committed).
//
// Nothing is stored before Go, with two exceptions: the fill colours, which are stored when they are picked,
// and the widths of the grid's columns.
class frmMirelo : public SettingsControls, public VariantArrays, public TableNames {
 public:
  frmMirelo();
  ~frmMirelo() override;

  // The settings store and the facade; null until they are set. Both must outlive the form or be unset first.
  CAppSettings* frmAppSettings() const { return frmAppSettings_; }
  void frmAppSettings(CAppSettings* settings) { frmAppSettings_ = settings; }
  cMirelo* Owner() const { return Owner_; }
  void Owner(cMirelo* owner) { Owner_ = owner; }

  // Whether Form_Activate fills the dialog. From Form_Load on, until a fill colour is picked.
  bool ReloadOnActivate() const { return ReloadOnActivate_; }
  void ReloadOnActivate(bool value) { ReloadOnActivate_ = value; }
  // Whether a click on chkVerTable does its work.
  bool VerticalClickArmed() const { return VerticalClickArmed_; }
  void VerticalClickArmed(bool value) { VerticalClickArmed_ = value; }

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload() override;

  // --- Routines that others than the form's own handlers call ---------------------------------------------
  // All are routine frames: a failure is reported by the error handler and never raised.

  // ticker_grid.cpp

  // Selects the row that has the ticker, whatever its case, or adds one; nothing for an empty text. `unused`
  // is part of the interface and not read.
  void AddTicker(const std::string& ticker, std::int32_t& unused);
  // Lays the grid out for the mode that chkVerTable says. `keep` when tickers that stand in the grid change
  // place with it.
  void FGVertical(bool keep);
  // Adds the column "Charts (Last & Volume)" to the grid if it is not there, and removes it if it is.
  void AddToFGColCharts();
  void DeleteFromFGColCharts();

  // streaming/quote_sources.cpp

  // Fills ComQuoteSource with the stored quote sources, storing the first-run list when there are none, and
  // shows `selected` if it is one of them, else the source chosen last.
  void AddListQuoteSource(const std::string& selected);

  // snapshot/portfolio_exchange.cpp

  // The symbols of QuoteTracker's first portfolio, an array of texts from 0 on. False after a failure that
  // the user was told of, and when there is no portfolio.
  bool GetPortfolioTickersFromQT(Variant& tickers);
  // Adds symbols, joined by commas, to QuoteTracker's current portfolio. False when it did not take them; the
  // user was told then.
  bool AddPortfolioTickersToQT(const std::string& list);

  // worksheet/save_settings.cpp

  // What Go does: checks the dialog's values, stores them and builds the table. `unused` is part of the
  // interface and not read. False when the dialog is to stay up.
  bool save_settings_and_create_table(bool unused);

  // worksheet/load_tickers.cpp

  // Brings the dialog into line with the quote table on the sheet, which outranks the settings. In: the
  // columns that the settings hide and show, joined by commas; out: those that the dialog is to list.
  void LoadTickers(std::string& hidden, std::string& shown);
  // How many headers LoadTickers recognised on the sheet, repeats included; -1 when it read no table.
  std::int16_t PrevColumnCount() const { return PrevColumnCount_; }

  // worksheet/vertical_fields.cpp

  // Makes the grid's field columns those of ListRight that a vertical table can show, keeping their ticks.
  void GetListVerticFields();

  // worksheet/vertical_sheets.cpp; both leave alone what they cannot change

  // Makes the sheets of the tickers' vertical tables, a comma list, where they are missing.
  void AddSheetsVerticalTables(const std::string& tickers);
  // Sets these sheets up with the fields that are ticked in the tickers' rows of the grid, a comma list of
  // row numbers: headers, chart marks and formats. The history is cleared where the headers change. `colors`
  // are the five of the table's style.
  void AddForSheetsVerticalTables(const std::string& tickers, const std::string& rows,
                                  const std::vector<std::string>& colors);

  // worksheet/vertical_ticks.cpp

  // Ticks in the grid the fields that the tickers' vertical sheets have.
  void ChkFGVerticalTables();
  // The text of the comment on a cell; empty where there is none. Raises nothing.
  static std::string GivComment(host::excel::Worksheet& sheet, const std::string& cell);

  // worksheet/last_cell.cpp

  // The last row of a worksheet but one, and its last column.
  void GiveSheetLimits(const std::string& sheet, std::int32_t& row_limit, std::int32_t& last_column);
  // The address, without "$", of the cell in the last row and the last column of a worksheet that hold
  // something; of the last cell that is used when that one does. `first` is any cell of it. What is selected
  // changes meanwhile.
  std::string GotoLastCell(const std::string& sheet, const std::string& first);

  // charts/build_charts.cpp

  // Gives the vertical tables of these tickers, an array of texts or empty, their charts: of "Last" and of
  // "LastVolume", as far as the dialog offers these fields and the tables have them. Charts that are there
  // go, all of them, once the user agreed; a No ends it.
  void Build_Charts(const Variant& tickers);

  // charts/add_chart.cpp

  // A new chart of a column of cells (an address on the sheet). Two ranges are part of the interface and not
  // read. Null after a failure that was aborted.
  std::shared_ptr<host::excel::Chart> Add_Chart(const std::string& Chart_Title, const std::string& SheetName,
                                                const std::string& Chart_SourceDataRange,
                                                const std::string& Chart_Range,
                                                const std::string& Labels_Range, bool Add_X_Axis,
                                                bool Add_Y_Axis, std::int32_t ChartType);

  // charts/move_and_resize_chart.cpp

  // Puts the newest chart of a sheet below the one before it; the first one, at the top of `column`. Where it
  // would reach below what is seen of the sheet it goes to the top, beside that one. `height` in points, the
  // width is `factor` for each of `points`; `name` becomes the chart's without its number. Nothing for a null
  // chart. The result is an empty variant.
  Variant Move_And_Resize_Chart(const std::shared_ptr<host::excel::Chart>& chart, std::string& name,
                                std::int16_t height, double factor, std::int16_t column, std::int16_t points);

 private:
  // wiring.cpp
  void DesignControls();
  void SubscribeHandlers();
  // What frmAppSettings and Owner refer to; error 91 for nothing.
  CAppSettings& Store() const { return Referred(frmAppSettings_); }
  cMirelo& Facade() const { return Referred(Owner_); }

  // Runs of statements of one routine each, in the source that has the routine.
  struct Filling;
  struct GridLayout;
  struct TableReading;
  struct Saving;
  struct QuoteTableRun;
  struct VerticalSheetRun;
  struct ChartsRun;

  // fill_dialog.cpp
  void LoadFG();
  // A value of the section "Settings". Error 91 without a store; otherwise the store's errors.
  Variant Setting(DialogSetting setting) const;
  // Its statements are the calling routine's.
  void EnableRowsLimit(Frame& frame);

  // closing.cpp
  void ButGo_Click();
  void ButClose_Click();
  void ButCancel_Click();
  // Ends the stream by which the sources were fetched, as far as it is still there. Raises nothing.
  void TearDownStream();

  // options.cpp
  void C1TTickersSettings_Click();
  void chkBuildCharts_Click();
  void chkChartStyle_Click();
  void chkLimitRows_Click();
  void chkStyleOrNot_Click();
  void chkUpdOrNot_Click();
  void chkVerTable_Click();

  // fill_colors.cpp

  // Shows a fill colour as a control's background: the window's own for no fill.
  void backColorTxtFillColor(forms::Control& control, std::int32_t color);
  struct FillColor;
  void PickFillColor(const FillColor& fill, forms::Control& swatch);
  void ButOn_Click();
  void ButOff_Click();

  // number_boxes.cpp
  void txtChartPoints_Change();
  void VScrollChartPoints_Change();
  void txtDecimalPlaces_Change();
  void VScrollDecimalplaces_Change();
  void txtRows_Change();
  void VScrollRows_Change();
  void txtSec_Change();
  void VScrollSec_Change();
  void txtVerticalSheet_Change();

  // column_lists.cpp
  void ButLeft_Click();
  void ButRight_Click();
  void ButAllLeft_Click();
  void ButAllRight_Click();
  void ButUp_Click();
  void ButDown_Click();
  void ListLeft_Click();
  void ListLeft_DblClick();
  void ListRight_Click();
  void ListRight_DblClick();
  void EnableUpDn();
  void MoveToLeft();
  void MoveToRight();

  // ticker_buttons.cpp
  void ButAdd_Click();
  void ButDel_Click();
  void ButSort_Click();
  void ButTickerUp_Click();
  void ButTickerDown_Click();

  // grid_clicks.cpp
  void FG_Click();
  void FG_BeforeEdit(std::int32_t row, std::int32_t col, bool& cancel);
  void FG_AfterEdit(std::int32_t row, std::int32_t col);

  // worksheet/excel_objects.cpp

  // The spreadsheet program, and the worksheets of its active workbook; error 91 where there is none.
  host::excel::Application& Excel() const;
  std::shared_ptr<host::excel::Worksheets> Worksheets() const;

  // worksheet/create_quote_table.cpp

  // The second half of save_settings_and_create_table, whose frame it gets: builds the table from the
  // dialog's values. `colors` are the five of the style, `decimal_format` is the number format of prices.
  // False after a message, which leaves the routine.
  bool CreateQuoteTable(Frame& frame, const std::vector<std::string>& colors,
                        const std::string& decimal_format);

  // streaming/quote_sources.cpp
  void ButUpDate_Click();
  void EventQTSt_OnStatusText(const std::string& text);
  void EventQTSt_PerformanceFollowingProcess(std::int16_t process);
  // Makes this the stream whose events the dialog answers, null for none; an earlier one is not heard of any
  // more and released. Raises nothing.
  void EventQTSt(std::shared_ptr<cQTStreaming> stream);

  // snapshot/portfolio_exchange.cpp
  void ButExport_Click();
  void ButImport_Click();

  CAppSettings* frmAppSettings_ = nullptr;
  cMirelo* Owner_ = nullptr;
  std::shared_ptr<frmColor> ListColors_;  // while the palette is up
  bool ReloadOnActivate_ = false;
  bool VerticalClickArmed_ = false;
  std::int16_t TickerCol_ = 0;  // the grid's column of the tickers: 0, or 1 with vertical tables
  std::int16_t ResultTag_ = 0;  // 77 or 78, set by the commit
  std::int16_t PrevColumnCount_ = 0;
  std::string VerticalFields_;  // comma list of the fields that the grid offers, the ticker column first
  std::shared_ptr<cQTStreaming> EventQTSt_;  // while the list of sources is fetched; set by EventQTSt()
  Event<const std::string&>::Cookie OnStatusTextCookie_ = 0;
  Event<std::int16_t>::Cookie PerformanceFollowingProcessCookie_ = 0;
  std::unique_ptr<CFormRestore> Placement_;  // from Form_Load to the end
};

}  // namespace mirelo
