#pragma once

#include <pugixml.hpp>

#include "adapters/workbook/xlsx/chart_losses.h"

namespace mirelo::workbook {

// Each of these reports what an element of a chart's part holds and the reader does not keep. A child element
// that is not known is reported by its name.
void ReportSpace(pugi::xml_node chart_space, ChartLosses& losses);
void ReportChart(pugi::xml_node chart, ChartLosses& losses);
void ReportPlot(pugi::xml_node plot_area, ChartLosses& losses);
void ReportGroup(pugi::xml_node group, ChartLosses& losses);
void ReportSeries(pugi::xml_node series, ChartLosses& losses);
void ReportPoint(pugi::xml_node point, ChartLosses& losses);
void ReportAxis(pugi::xml_node axis, ChartLosses& losses);
void ReportLegend(pugi::xml_node legend, ChartLosses& losses);

// The extension that we wrote into an element; null when there is none.
pugi::xml_node OwnExtension(pugi::xml_node element);

}  // namespace mirelo::workbook
