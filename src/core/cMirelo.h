#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/array.h"
#include "automation/variant.h"
#include "core/status_run_query.h"
#include "host/excel/application.h"

namespace mirelo {

namespace host::excel {
class Chart;
class Worksheet;
}  // namespace host::excel

// The object that the add-in's macros hold: it owns the process-wide error handler and settings store,
// presents the settings that the macros need, and fetches quotes. It only answers; the pace is the macros'.
//
// One at a time: a second one replaces the process-wide services, and the first that goes takes them along,
// unless mGlobal::ShareServices has it that they share them.
class cMirelo : public Object {
 public:
  // Makes the error handler, then the settings store. Reads no setting and touches no network.
  cMirelo();
  // Releases the settings store, then the error handler.
  ~cMirelo() override;
  cMirelo(const cMirelo&) = delete;
  cMirelo& operator=(const cMirelo&) = delete;

  std::string_view TypeName() const override { return "cMirelo"; }

  // How many facades live.
  static int Living();

  // Members in the order of the public interface. Where a value stands in brackets the member shows a setting
  // of the section "Settings" and never fails: the value stands for an absent setting and for one that cannot
  // be read or converted.

  // What the streaming side is for.
  StatusRunQueryQT StatusRunWorkQT() const { return status_run_work_qt_; }
  void StatusRunWorkQT(StatusRunQueryQT value) { status_run_work_qt_ = value; }

  // The spreadsheet program; null until the macros hand it over.
  const std::shared_ptr<host::excel::Application>& m_ObjExcelApplication() const { return excel_; }
  void m_ObjExcelApplication(std::shared_ptr<host::excel::Application> value) { excel_ = std::move(value); }

  // What the next GetLastQuote compares volumes with: empty, or an array whose first index is the row of the
  // result and whose second is 1 (cumulative volume at the last call) or 2 (the date at that moment). The
  // macros dimension and clear it; GetLastQuote only writes its elements.
  const Variant& masPrevVolume() const { return prev_volume_; }
  Variant& masPrevVolume() { return prev_volume_; }
  void masPrevVolume(Variant value) { prev_volume_ = std::move(value); }

  std::int32_t FillColorFildOff() const;  // index of the spreadsheet's palette (3, red)
  std::int32_t FillColorFildOn() const;   // likewise (10, green)
  std::string TableStyle() const;         // ("Blue")
  // What stands in front of "(ticker)" in a sheet's name, without blanks around it ("Quotes_Vertical").
  std::string UserVerticalSheet() const;
  std::string DecimalPlacesFormat() const;  // number format: "0", "0.0", "0.00" ... ("0.00")

  // How GetLastQuote writes dates, in the letters of Format(); empty for the general form.
  const std::string& DovantaFormatUserDate() const { return format_user_date_; }
  void DovantaFormatUserDate(std::string value) { format_user_date_ = std::move(value); }

  // The column in which the field of the vertical tables stands among the visible columns, counted from 1;
  // the last one when the list names it more than once, 2 when it does not. A failure of the store reaches
  // the caller: error 0x80044284, "CAppSettings component failure".
  std::int16_t VerticalIndex() const;

  std::int16_t GreyOut() const;        // (1)
  std::int16_t ColorPoints() const;    // (1)
  std::string ChartStyle() const;      // ("Blue")
  std::int32_t ChartPoints() const;    // (20)
  std::int16_t BuildCharts() const;    // (1)
  std::int32_t RowsLimit() const;      // (20)
  std::int16_t VerticalTable() const;  // (1)
  std::int32_t Seconds() const;        // pause between updates, 0 to 3600 (10)

  // m_ObjExcelApplication as a variant. Setting one that holds no object is error 424, an object of another
  // class error 13.
  Variant ExcelApplication() const { return excel_; }
  void ExcelApplication(const Variant& value);

  // Shows the settings dialog until the user ends it. 77: the settings were stored and the table built, and
  // quotes are to be streamed; 78: they were, in any other case; 2: nothing was. 0 when a failure of the
  // dialog itself was aborted. Not to be called again while it shows. Defined in dialog/load_frm_mirelo.cpp.
  std::int32_t LoadFrmMirelo();

  // The tickers of the dialog that was last committed, row by row, in the dialog's letters; none before. What
  // stands in the quote table's cells may be something else, since a spreadsheet takes "005930" for a number.
  const std::vector<std::string>& TickersOfGo() const { return tickers_of_go_; }

  // Fetches a resource (path and query) over HTTP. The result is the reply's body as text, empty when the
  // transfer failed or was aborted. A non-empty `strPostQuery` is sent as the request's body.
  Variant DownloadURL(const std::string& URL, const std::string& Host = "127.0.0.1",
                      std::int16_t Port = 16239, const std::string& Method = "GET",
                      const std::string& strPostQuery = "");

  // The present quotes of the tickers in a one-dimensional array of any bounds. The result is an array whose
  // first index is the ticker's number, from 1, and whose second is the column's number among the visible
  // columns, from 1; each element is a text, or empty where the column is unknown or no line of a reply
  // belongs to the row.
  //
  // The result is the empty text when a request failed (the user was told), when the call was aborted, and
  // when the number of tickers is a multiple of 81 (kTickersPerRequest): the table is handed over only by a
  // last request that holds fewer.
  Variant GetLastQuote(const Variant& Tickers);

  // Reads the visible columns, which give GetLastQuote its columns. To be called before the first
  // GetLastQuote and whenever the list changed; an empty list leaves the columns as they were.
  void LoadMasPosition();

  // Paints a chart: its ground in the style's colours, its title by the change of the day, and its first
  // series, with Color_Points 1, point by point, otherwise as a whole by the last change. A point that lies
  // as high as the one before it is grey with Use_Stay_Color_With_Points 1, otherwise it has that one's
  // colours. The styles are "Blue", "Green" and "Yellow"; any other is a failure. Nothing for a null chart.
  // The result is an empty variant. Defined in charts/change_colors.cpp.
  Variant Change_Colors(const std::shared_ptr<host::excel::Chart>& Dest_Chart, double Change_Now,
                        double Change_Today, const std::string& Chart_Style, std::int16_t Color_Points = 1,
                        std::int16_t Use_Stay_Color_With_Points = 0);

  // Brings the charts of a vertical table up to date with its rows: those titled "Last" and "LastVolume", in
  // letters of either case, show the last ChartPoints rows of these columns and are painted anew, unless the
  // style is "None". `Vert_Array` has the table's rows as its first index; its second column says what
  // changed from the row before the last filled one to that one. The sheet comes to the front meanwhile.
  //
  // Failures are the caller's, and leave the sheet in front: error 1004 for a chart whose column the table
  // does not have, 9 or 13 for an array that is none. Defined in charts/update_charts.cpp.
  void Update_Charts(const std::shared_ptr<host::excel::Worksheet>& Dest_Sheet, const Variant& Vert_Array,
                     std::int32_t ChartPoints, const std::string& ChartStyle, std::int16_t ColorPoints,
                     std::int16_t GreyOut);

 private:
  struct LastQuoteRun;
  struct ChartUpdateRun;

  // QuoteTracker's HTTP interface. Both keep their value where its setting cannot be read and the user aborts
  // or ignores that; a port above 32767 is such a failure. The result is an empty variant.
  Variant GetPortWebAddress(std::int16_t& Port, std::string& WebAddress);
  // What is added to the clock to show times in the user's chosen zone. The result is an empty variant.
  Variant GetDisplacementHourMinute(std::int32_t& Hour, std::int32_t& Minute);
  // The present moment in that zone, as texts.
  void GetDisplacedDateTime(std::string& DateText, std::string& TimeText) const;

  // The eighteen palette indexes (texts, from 0 on) for these changes, in the order of ChartColor; an array
  // without elements for an unknown style.
  Variant Load_Colors(double Change_Now, double Change_Today, const std::string& Chart_Style);
  // The last row but one of a worksheet of the active workbook, and its last column.
  void GetSheetLimits(const std::string& SheetName, std::int32_t& MaxRow, std::int32_t& MaxColumn);

  StatusRunQueryQT status_run_work_qt_ = Status_Null;
  std::shared_ptr<host::excel::Application> excel_;
  std::vector<std::string> tickers_of_go_;
  Variant prev_volume_;
  // Element c is the code of the column shown at position c, -1 for a name outside the vocabulary. Bounds 1
  // to the number of visible columns; unallocated until LoadMasPosition has read a list that is not empty.
  Array<std::int16_t> mas_position_;
  std::string format_user_date_;
  std::int32_t displacement_hour_ = 0;
  std::int32_t displacement_minute_ = 0;
};

}  // namespace mirelo
