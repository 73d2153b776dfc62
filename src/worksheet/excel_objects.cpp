// The spreadsheet as the dialog reaches it, through its facade.

#include <memory>

#include "core/cMirelo.h"
#include "dialog/frmMirelo.h"
#include "host/excel/application.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheets.h"

namespace mirelo {

host::excel::Application& frmMirelo::Excel() const {
  return Referred(Facade().m_ObjExcelApplication().get());
}

std::shared_ptr<host::excel::Worksheets> frmMirelo::Worksheets() const {
  return Referred(Excel().ActiveWorkbook().get()).Worksheets();
}

}  // namespace mirelo
