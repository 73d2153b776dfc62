#include <cstdint>
#include <string>

#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/cMirelo.h"
#include "core/known_setting.h"
#include "host/excel/chart.h"
#include "host/excel/worksheet.h"

namespace mirelo::automation_server {

Class FacadeClass() {
  using Self = cMirelo;
  // What stands in for these arguments is what readers of the settings assume while nothing is stored.
  const std::string host = FacadeSetting("Webaddress").Default().ToText();
  const std::int16_t port = FacadeSetting("HTTPPort").Default().ToInt16();
  const std::int16_t color_points = FacadeSetting("ColorPoints").Default().ToInt16();
  const std::int16_t grey_out = NewChartsGreyOut().Default().ToInt16();
  return Creatable<Self>(
      "cMirelo",
      {
          GET_LET(StatusRunWorkQT),
          GET_SET(m_ObjExcelApplication),
          GET_LET_SET(masPrevVolume),
          GET(FillColorFildOff),
          GET(FillColorFildOn),
          GET(TableStyle),
          GET(UserVerticalSheet),
          GET(DecimalPlacesFormat),
          GET_LET(DovantaFormatUserDate),
          GET(VerticalIndex),
          GET(GreyOut),
          GET(ColorPoints),
          GET(ChartStyle),
          GET(ChartPoints),
          GET(BuildCharts),
          GET(RowsLimit),
          GET(VerticalTable),
          GET(Seconds),
          GET_SET(ExcelApplication),
          METHOD(LoadFrmMirelo),
          METHOD(DownloadURL, "URL", Optional("Host", host), Optional("Port", port),
                 Optional("Method", "GET"), Optional("strPostQuery", "")),
          METHOD(GetLastQuote, "Tickers"),
          METHOD(LoadMasPosition),
          METHOD(Change_Colors, "Dest_Chart", "Change_Now", "Change_Today", "Chart_Style",
                 Optional("Color_Points", color_points), Optional("Use_Stay_Color_With_Points", grey_out)),
          METHOD(Update_Charts, "Dest_Sheet", "Vert_Array", "ChartPoints", "ChartStyle", "ColorPoints",
                 "GreyOut"),
      });
}

}  // namespace mirelo::automation_server
