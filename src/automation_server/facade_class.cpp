#include <cstdint>

#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/cMirelo.h"
#include "host/excel/chart.h"
#include "host/excel/worksheet.h"

namespace mirelo::automation_server {

Class FacadeClass() {
  using Self = cMirelo;
  return Creatable<Self>("cMirelo", {
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
                                        METHOD(DownloadURL, "URL", Optional("Host", "127.0.0.1"),
                                               Optional("Port", std::int16_t{16239}),
                                               Optional("Method", "GET"), Optional("strPostQuery", "")),
                                        METHOD(GetLastQuote, "Tickers"),
                                        METHOD(LoadMasPosition),
                                        METHOD(Change_Colors, "Dest_Chart", "Change_Now", "Change_Today",
                                               "Chart_Style", Optional("Color_Points", std::int16_t{1}),
                                               Optional("Use_Stay_Color_With_Points", std::int16_t{0})),
                                        METHOD(Update_Charts, "Dest_Sheet", "Vert_Array", "ChartPoints",
                                               "ChartStyle", "ColorPoints", "GreyOut"),
                                    });
}

}  // namespace mirelo::automation_server
