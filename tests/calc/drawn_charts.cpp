#include "calc/drawn_charts.h"

#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/XEmbeddedObjectSupplier.hpp>
#include <com/sun/star/drawing/XShapes.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/properties.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"

namespace mirelo::testing {

using calc::As;
using calc::Properties;
using calc::Reference;

Reference<css::sheet::XSpreadsheet> DrawnCharts::Sheet(const char* name) const {
  return As<css::sheet::XSpreadsheet>(document->getSheets()->getByName(rtl::OUString::createFromAscii(name)));
}

Reference<css::drawing::XDrawPage> DrawnCharts::Page() const { return calc::PageOf(Sheet()); }

calc::OfficeChart DrawnCharts::Seen(sal_Int32 number) const {
  const auto shape = As<css::drawing::XShape>(Page()->getByIndex(number));
  const auto object = Properties(shape).Get("PersistName", rtl::OUString());
  const auto charts =
      As<css::container::XNameAccess>(As<css::table::XTableChartsSupplier>(Sheet())->getCharts());
  return {shape,
          As<css::chart::XChartDocument>(
              As<css::document::XEmbeddedObjectSupplier>(charts->getByName(object))->getEmbeddedObject())};
}

css::chart2::Symbol DrawnCharts::MarkerSeen(sal_Int32 point) const {
  return Properties(Seen().Series()[0]->getDataPointByIndex(point)).Get("Symbol", css::chart2::Symbol());
}

std::string DrawnCharts::CellsSeen() const {
  return calc::TextOf(calc::ValuesOf(Seen().Series().at(0))->getSourceRangeRepresentation());
}

std::shared_ptr<host::excel::Chart> DrawnCharts::AddChart(host::excel::XlChartType type) const {
  const auto chart = application->Charts()->Add();
  chart->ChartType(type);
  chart->SetSourceData(*sheet->Range("B2:B6"), host::excel::xlColumns);
  return chart->Location(host::excel::xlLocationAsObject, sheet->Name());
}

void DrawnCharts::AddChartOfAPerson() const {
  const auto cells = As<css::sheet::XCellRangeAddressable>(Sheet()->getCellRangeByName("C2:C9"));
  const auto address = cells->getRangeAddress();
  As<css::table::XTableChartsSupplier>(Sheet())->getCharts()->addNewByName(
      "", css::awt::Rectangle(2540, 5080, 7620, 5080),
      css::uno::Sequence<css::table::CellRangeAddress>(&address, 1), false, false);
}

void DrawnCharts::Select(const std::vector<Reference<css::drawing::XShape>>& drawings) const {
  const auto& context = LiveOffice::Get().Context();
  const auto all = As<css::drawing::XShapes>(context->getServiceManager()->createInstanceWithContext(
      "com.sun.star.drawing.ShapeCollection", context));
  for (const auto& drawing : drawings) all->add(drawing);
  As<css::view::XSelectionSupplier>(Window())->select(css::uno::Any(all));
}

bool DrawnCharts::HasDrawingsSelected() const {
  return calc::IfAs<css::drawing::XShapes>(As<css::view::XSelectionSupplier>(Window())->getSelection()).is();
}

Reference<css::frame::XController> DrawnCharts::Window() const {
  return As<css::frame::XModel>(document)->getCurrentController();
}

}  // namespace mirelo::testing
