#pragma once

#include <gtest/gtest.h>

#include <com/sun/star/chart2/Symbol.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <memory>
#include <string>
#include <vector>

#include "adapters/calc/charts/office_chart.h"
#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/live_office.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/constants.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {

// A document in LibreOffice in which clients draw charts, and a person takes a hand in them.
class DrawnCharts : public ::testing::Test {
 protected:
  calc::Reference<css::sheet::XSpreadsheet> Sheet(const char* name = "Sheet1") const;
  calc::Reference<css::drawing::XDrawPage> Page() const;
  // The chart as a person sees it.
  calc::OfficeChart Seen(sal_Int32 number = 0) const;
  css::chart2::Symbol MarkerSeen(sal_Int32 point) const;
  std::string CellsSeen() const;

  std::shared_ptr<host::excel::Chart> AddChart(
      host::excel::XlChartType type = host::excel::xlLineMarkers) const;
  // One that a person has put there.
  void AddChartOfAPerson() const;

  // As a person does with the mouse.
  void Select(const std::vector<calc::Reference<css::drawing::XShape>>& drawings) const;
  bool HasDrawingsSelected() const;
  calc::Reference<css::frame::XController> Window() const;

  LiveOffice::Document document = LiveOffice::Get().NewDocument();
  std::shared_ptr<host::excel::Application> application =
      calc::ApplicationOf(LiveOffice::Get().Context(), document);
  std::shared_ptr<host::excel::Worksheet> sheet = application->ActiveWorkbook()->Worksheets()->Item(1);
};

}  // namespace mirelo::testing
