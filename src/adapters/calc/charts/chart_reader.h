#pragma once

#include <rtl/ustring.hxx>
#include <vector>

#include "adapters/calc/charts/office_chart.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

class DocumentCharts;

// What is read of a chart of the office.

// A chart that was found in the document: its kind, parts, fonts, cells, and which points and markers have
// colours of their own. Other formats of its lines and fills stay as the document has them, and are not
// known.
spreadsheet::Chart ReadChart(const OfficeChart& chart, DocumentCharts& charts);

// The cells that each series plots, as the office writes them.
std::vector<rtl::OUString> CellsOfSeries(const OfficeChart& chart);
// Sets the cells of `chart`'s series from such texts. A series whose text equals the one in `before` is left
// alone.
void ReadCells(const std::vector<rtl::OUString>& cells, const std::vector<rtl::OUString>& before,
               DocumentCharts& charts, spreadsheet::Chart& chart);

// Where the shape stands, in points. The person puts it where they like, pixels or not.
spreadsheet::ChartBox PlaceOf(const OfficeChart& chart);

// Takes over into `chart`, and into what was `painted`, what a person may have changed of parts, title and
// cells since then. What a client has changed and nobody has painted yet stays unless the person changed it,
// too.
void ReadWhatAPersonChanged(const OfficeChart& office, spreadsheet::Chart& chart,
                            spreadsheet::Chart& painted);

}  // namespace mirelo::calc
