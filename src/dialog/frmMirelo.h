#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/event.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/form.h"
#include "forms/grid.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"
#include "host/excel/constants.h"

namespace mirelo {

namespace host::excel {
class Application;
class Chart;
class Range;
class Sheet;
class Worksheet;
class Worksheets;
}  // namespace host::excel

class CAppSettings;
class CFormRestore;
class cMirelo;
class cQTStreaming;
class DialogSetting;
class Frame;
class frmColor;

// The settings dialog: tickers, columns, the connection to QuoteTracker, charts and colours. It is the work
// place of what the Go button does as well, so its routines are spread over the rooms that they belong to.
//
// To show it, set frmAppSettings and Owner, show it modally, and read the Tag: "77" (committed, quotes are to
// be streamed), "78" (committed, any other case), or "2" (nothing committed).
//
// Nothing is stored before Go, with two exceptions: the fill colours, which are stored when they are picked,
// and the widths of the grid's columns.
class frmMirelo : public forms::Form {
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

  // --- The controls, in tab order -----------------------------------------------------------------------

  forms::Panel C1Elastic1{*this, "C1Elastic1", nullptr};
  forms::Tab C1TTickersSettings{*this, "C1TTickersSettings", &C1Elastic1,
                                "&Tickers|&Settings|&Charting|&Fields"};

  forms::Panel C1ElaTickers{*this, "C1ElaTickers", &C1TTickersSettings};
  forms::TextBox txtTicker{*this, "txtTicker", &C1ElaTickers};
  forms::Button ButAdd{*this, "ButAdd", &C1ElaTickers, "Add"};
  forms::Button ButTickerUp{*this, "ButTickerUp", &C1ElaTickers};
  forms::Button ButTickerDown{*this, "ButTickerDown", &C1ElaTickers};
  forms::Button ButDel{*this, "ButDel", &C1ElaTickers};
  forms::Button ButImport{*this, "ButImport", &C1ElaTickers, "Import"};
  forms::Button ButExport{*this, "ButExport", &C1ElaTickers, "Export"};
  forms::Button ButSort{*this, "ButSort", &C1ElaTickers, "Sort Tickers"};
  forms::Grid FG{*this, "FG", &C1ElaTickers};
  forms::CheckBox chkVerTable{*this, "chkVerTable", &C1ElaTickers, "Add vertical quotes table"};
  forms::CheckBox chkLimitRows{*this, "chkLimitRows", &C1ElaTickers, "Limit number of rows to:"};
  forms::TextBox txtRows{*this, "txtRows", &C1ElaTickers};
  forms::ScrollBar VScrollRows{*this, "VScrollRows", &C1ElaTickers, 3600, 0};
  forms::Image ImageChart{*this, "ImageChart", &C1ElaTickers, "chart"};

  forms::Panel C1ElaSettings{*this, "C1ElaSettings", &C1TTickersSettings};
  forms::Label lblTimingOptions{*this, "lblTimingOptions", &C1ElaSettings, "Timing Options:"};
  forms::CheckBox chkUpdOrNot{*this, "chkUpdOrNot", &C1ElaSettings, "Update every"};
  forms::TextBox txtSec{*this, "txtSec", &C1ElaSettings};
  forms::ScrollBar VScrollSec{*this, "VScrollSec", &C1ElaSettings, 3600, 0};
  forms::Label lblSeconds{*this, "lblSeconds", &C1ElaSettings, "seconds."};
  forms::ComboBox ComQuoteSource{*this, "ComQuoteSource", &C1ElaSettings, forms::ComboBox::Style::DropDown,
                                 true};
  forms::Button ButUpDate{*this, "ButUpDate", &C1ElaSettings, "UpDate"};
  forms::Label lblStatus{*this, "lblStatus", &C1ElaSettings};
  forms::Line Line1{*this, "Line1", &C1ElaSettings};
  forms::TextBox txtWebAddress{*this, "txtWebAddress", &C1ElaSettings, "127.0.0.1"};
  forms::TextBox txtHTTPPort{*this, "txtHTTPPort", &C1ElaSettings, "16239"};
  forms::TextBox txtSocketPort{*this, "txtSocketPort", &C1ElaSettings, "16240"};
  forms::ComboBox ComDisplayTimezone{*this, "ComDisplayTimezone", &C1ElaSettings};
  forms::ComboBox ComDisplayOffset{*this, "ComDisplayOffset", &C1ElaSettings};
  forms::Line Line2{*this, "Line2", &C1ElaSettings};
  forms::CheckBox chkStyleOrNot{*this, "chkStyleOrNot", &C1ElaSettings, "Table style"};
  forms::ComboBox ComStyle{*this, "ComStyle", &C1ElaSettings};
  forms::TextBox txtOn{*this, "txtOn", &C1ElaSettings};
  forms::Button ButOn{*this, "ButOn", &C1ElaSettings, "On"};
  forms::TextBox txtOff{*this, "txtOff", &C1ElaSettings};
  forms::Button ButOff{*this, "ButOff", &C1ElaSettings, "Off"};
  forms::TextBox txtDecimalPlaces{*this, "txtDecimalPlaces", &C1ElaSettings};
  forms::ScrollBar VScrollDecimalplaces{*this, "VScrollDecimalplaces", &C1ElaSettings, 10, 0};
  forms::Label lblExample{*this, "lblExample", &C1ElaSettings, "2.12"};
  forms::TextBox txtVerticalSheet{*this, "txtVerticalSheet", &C1ElaSettings};
  forms::Label lblTicker{*this, "lblTicker", &C1ElaSettings, "(Ticker)"};
  forms::Label lblExampleSheet{*this, "lblExampleSheet", &C1ElaSettings, "Quotes_Vertical(Ticker)"};

  forms::Panel C1ElaCharting{*this, "C1ElaCharting", &C1TTickersSettings};
  forms::CheckBox chkBuildCharts{*this, "chkBuildCharts", &C1ElaCharting, "Build charts"};
  forms::CheckBox chkChartStyle{*this, "chkChartStyle", &C1ElaCharting, "Chart style:"};
  forms::ComboBox ComChartStyle{*this, "ComChartStyle", &C1ElaCharting};
  forms::TextBox txtChartPoints{*this, "txtChartPoints", &C1ElaCharting};
  forms::ScrollBar VScrollChartPoints{*this, "VScrollChartPoints", &C1ElaCharting, 100, 0};
  forms::CheckBox chkAddYAxis{*this, "chkAddYAxis", &C1ElaCharting, "Add Y Axis"};
  forms::CheckBox chkColorPoints{*this, "chkColorPoints", &C1ElaCharting, "Color Points"};
  forms::CheckBox chkGreyOut{*this, "chkGreyOut", &C1ElaCharting, "Use grey-outing"};

  forms::Panel C1ElaFields{*this, "C1ElaFields", &C1TTickersSettings};
  forms::Label lblAvailableColums{*this, "lblAvailableColums", &C1ElaFields, "Available columns"};
  forms::ListBox ListLeft{*this, "ListLeft", &C1ElaFields};
  forms::Button ButRight{*this, "ButRight", &C1ElaFields};
  forms::Button ButAllRight{*this, "ButAllRight", &C1ElaFields};
  forms::Button ButLeft{*this, "ButLeft", &C1ElaFields};
  forms::Button ButAllLeft{*this, "ButAllLeft", &C1ElaFields};
  forms::Label lblColumsTo{*this, "lblColumsTo", &C1ElaFields, "Columns to view"};
  forms::ListBox ListRight{*this, "ListRight", &C1ElaFields};
  forms::Button ButUp{*this, "ButUp", &C1ElaFields};
  forms::Button ButDown{*this, "ButDown", &C1ElaFields};

  forms::Button ButGo{*this, "ButGo", &C1Elastic1, "Go"};
  forms::Button ButClose{*this, "ButClose", &C1Elastic1, "Close"};
  forms::Button ButCancel{*this, "ButCancel", &C1Elastic1, "Cancel"};

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
  // The part of a comma list that a vertical table can show, in its order.
  static std::string GiveListVerticFields(const std::string& list);
  // Whether a vertical table (the quote table) can have a column of that name, whatever its case.
  static bool CheckFieldForVerticalTable(const std::string& name);
  static bool CheckFieldHeaderTable(const std::string& name);
  // A comma list without empty entries and without repeats, which are found whatever their case; the first
  // spelling stays.
  static std::string NullDublicatForListRight(const std::string& list);

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

  // worksheet/variant_arrays.cpp; see there

  // Adds a value at the end of an array with lower bound 0, or makes an array of it; answers the array. Error
  // 9 for another lower bound or a second dimension.
  static Variant mPush(Variant& array, const Variant& value);
  // Adds a value, or the elements of an array one by one, at the end of an array, or makes an array with
  // that lower bound of them; answers how many were added. Error 9 for a second dimension.
  static std::int16_t Arr_Push(Variant& array, const Variant& value, std::int32_t lower);
  // The index of the first element that equals the value; -1 for none, and when it is no array.
  static std::int16_t Arr_Search(const Variant& array, const Variant& value);
  // The number of elements; -1 when it is no array.
  static std::int16_t Arr_Count(const Variant& array);
  // The number of dimensions, 0 when it is no array. Not a routine frame: it cannot fail.
  static std::int16_t ArrayDimensions(const Variant& array);

  // worksheet/range_arrays.cpp

  // The values of a range: of a single column an array from 1 on with its numbers and texts, everything else
  // being left out; of more columns all values, with the column as first index and the row as second, both
  // from 1 on.
  static Variant Range2Array(const std::shared_ptr<host::excel::Range>& range);
  // The array of two dimensions with its indexes exchanged. Writes no cells.
  static Variant Array2Range(const Variant& array);

  // worksheet/bad_symbols.cpp

  // Both replace each of `characters` by "_", in place, and answer the text.
  static Variant RemoveBadSymbols(Variant& text, const std::string& characters);
  static Variant remove_bad_symbols(Variant& text,
                                    const std::string& characters = "=~@#$%^&*()-+\\/.,';`\"!:\\/?*[]");

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

  // Members that get a frame are runs of statements of the routine that it belongs to.

  // fill_dialog.cpp
  void FillTimes(Frame& frame);
  void FillCharts(Frame& frame);
  void FillTable(Frame& frame);
  void FillTiming(Frame& frame);
  void FillVerticalTables(Frame& frame);
  void FillConnection(Frame& frame);
  void FillColumns(Frame& frame);
  void EnableByOptions(Frame& frame);
  void EnableRowsLimit(Frame& frame);
  void FillColors(Frame& frame);
  void LoadFG();
  // A value of the section "Settings". Error 91 without a store; otherwise the store's errors.
  Variant Setting(DialogSetting setting) const;

  // closing.cpp
  void ButGo_Click();
  void ButClose_Click();
  void ButCancel_Click();
  void SavePlacement(Frame& frame);
  // Ends the stream by which the sources were fetched, as far as it is still there. Raises nothing.
  void TearDownStream();

  // column_widths.cpp

  // Stores the width of each grid column that has a header. Its statements are the calling routine's.
  void StoreColumnWidths(Frame& frame);
  // The width that was stored for the column with this header.
  std::int32_t StoredColumnWidth(const std::string& header, std::string_view default_width) const;

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

  // ticker_grid.cpp
  void LayOutFields(Frame& frame, bool keep);
  void LayOutTickers(Frame& frame, bool keep);

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

  // worksheet/last_cell.cpp
  std::shared_ptr<host::excel::Range> LastFilledCell(host::excel::XlSearchOrder order) const;
  // Brings a sheet to the front and selects a cell of it; the statements are GotoLastCell's.
  static void GoBack(Frame& frame, host::excel::Sheet& front,
                     const std::shared_ptr<host::excel::Range>& cell);

  // worksheet/load_tickers.cpp; the frame is LoadTickers's, the table may be null (error 91)
  static std::int32_t EndOfTickers(host::excel::Worksheet* table);
  void LoadColumns(Frame& frame, host::excel::Worksheet* table, std::string& hidden, std::string& shown);
  void LoadHeaders(Frame& frame, host::excel::Worksheet* table, const std::string& last, std::string& hidden,
                   std::string& shown);
  void LoadTickerRows(Frame& frame, host::excel::Worksheet* table);
  void LoadMode(Frame& frame, const std::string& status);

  // worksheet/save_settings.cpp

  // Whether the values can be committed; the user was told if not.
  bool AcceptValues(Frame& frame);
  void Refuse(Frame& frame, const std::string& message, std::int32_t tab, forms::Control& control);
  void StoreValues(Frame& frame);
  // Stores the displacement that shows times in the chosen zone, worked out from zone and offset.
  void StoreDisplacement(Frame& frame);

  // worksheet/create_quote_table.cpp

  // The second half of save_settings_and_create_table: builds the table from the dialog's values. `colors`
  // are the five of the style, `decimal_format` is the number format of prices. False after a message, which
  // leaves the routine.
  bool CreateQuoteTable(Frame& frame, const std::vector<std::string>& colors,
                        const std::string& decimal_format);
  struct QuoteTableRun;

  // worksheet/vertical_sheets.cpp
  struct VerticalSheetRun;

  // charts/build_charts.cpp
  struct ChartsRun;

  // worksheet/vertical_ticks.cpp
  void TickFieldsOf(Frame& frame, host::excel::Worksheet& sheet, std::int32_t row, std::int32_t charts);
  std::int32_t ColumnOf(const std::string& header) const;

  // worksheet/vertical_fields.cpp

  // Gives a column of the grid its ticks and pictures from the columns that the grid had before.
  void RestoreField(Frame& frame, const VariantArray& old, std::int32_t col);

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
  // Asks QuoteTracker for a resource, at the place that the dialog shows, and cuts the reply into lines. Its
  // statements are the calling routine's. False when nothing answered, which the user was told.
  bool FetchLines(Frame& frame, const std::string& resource, std::vector<std::string>& lines);

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
