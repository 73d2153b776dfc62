#include "automation_server/excel/items.h"
#include "automation_server/excel/tables.h"
#include "automation_server/rows.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "host/excel/selectable.h"
#include "host/excel/sheet.h"
#include "host/excel/window.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::automation_server::excel {

using host::excel::Application;
using host::excel::Charts;
using host::excel::Window;
using host::excel::Workbook;
using host::excel::Worksheets;

namespace {

Class ApplicationClass() {
  using Self = Application;
  return HandedOut<Self>("Application", {
                                            GET(ActiveWorkbook),
                                            GET(ActiveSheet),
                                            GET(ActiveCell),
                                            GET(Selection),
                                            GET(ActiveWindow),
                                            GET(Worksheets),
                                            GET(Charts),
                                            INDEXED(Range, "Cell1"),
                                            GET(Cells),
                                            GET_LET(ScreenUpdating),
                                        });
}

Class WindowClass() {
  using Self = Window;
  return HandedOut<Self>("Window", {GET(VisibleRange)});
}

Class WorkbookClass() {
  using Self = Workbook;
  return HandedOut<Self>("Workbook", {
                                         GET(Name),
                                         GET(Worksheets),
                                         GET(Charts),
                                         INDEXED(Sheets, "Index"),
                                         GET(ActiveSheet),
                                     });
}

template <class Self>
Class SheetsClass() {
  return HandedOut<Self>("Sheets", {
                                       GET(Count),
                                       AsDefault(AsProperty(ItemRow<Self>())),
                                       METHOD(Add),
                                       NumberedItemsRow<Self>("_NewEnum"),
                                   });
}

}  // namespace

void AddProgramClasses(std::vector<Class>& classes) {
  classes.push_back(ApplicationClass());
  classes.push_back(WindowClass());
  classes.push_back(WorkbookClass());
  classes.push_back(SheetsClass<Worksheets>());
  classes.push_back(SheetsClass<Charts>());
}

}  // namespace mirelo::automation_server::excel
