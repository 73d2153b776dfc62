#pragma once

#include <memory>
#include <optional>
#include <rtl/ustring.hxx>
#include <string>
#include <vector>

#include "adapters/calc/charts/column_anchor.h"
#include "adapters/calc/charts/office_chart.h"
#include "adapters/calc/objects/document_sheet.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

class DocumentCharts;
class SheetCells;

// A chart on a sheet of the document: what clients told of it, painted there.
//
// A person works with the same chart. From the document come, at each use: whether it is there, its name,
// place and size, whether it has a title and a legend, the title's text, and which cells its series plot,
// which the office keeps up with what is inserted and deleted. All else is as clients told it; of a chart
// that they did not make, as it was read when it was first asked for. What a person colours stays until
// something else is told of that part. What the office's charts cannot hold is kept here and nowhere else.
//
// Called within Document::Ask.
class DrawnChart {
 public:
  // One that is in the document, by the name of its object there.
  DrawnChart(DocumentCharts& charts, DocumentSheet& sheet, const rtl::OUString& object,
             const Reference<css::drawing::XShape>& shape);
  // One that was just put there, empty, and is to become `chart`.
  DrawnChart(DocumentCharts& charts, DocumentSheet& sheet, const rtl::OUString& object,
             const Reference<css::drawing::XShape>& shape, std::shared_ptr<spreadsheet::Chart> chart);

  DocumentSheet& sheet() const { return sheet_; }
  const rtl::OUString& object() const { return object_; }
  const Reference<css::drawing::XShape>& shape() const { return office_.shape; }
  // As Get has given it.
  const std::shared_ptr<spreadsheet::Chart>& model() const { return chart_; }

  bool IsThere() const;
  std::string Name() const;
  // The chart as it is now. Error 1004 when it is gone.
  spreadsheet::Chart& Get();
  // Something of it was changed. It is painted now, or once charts are drawn again.
  void Changed();
  // Paints what waits for it. False when that is nothing any more, as the chart is gone.
  bool DrawWhatWaits();
  void Delete();
  // To be called before and after a change of its sheet's columns: the chart keeps its place by them. One
  // that a person has anchored to a cell is left to the office.
  void FollowColumns();
  // The cells of an area were taken out of a sheet, and those below have moved up. The office has series go
  // with their cells, but stay where they are once all of these are gone.
  void FollowDeletion(const SheetCells& sheet, const spreadsheet::Area& gone);

 private:
  void Open();
  void Meet();
  void Read();
  void MoveWithColumns();
  void Paint();
  // Runs `body`; where the office had unloaded the chart's document to save memory, loads it and runs `body`
  // once more.
  template <class Body>
  void WithOpenDocument(Body&& body);

  DocumentCharts& charts_;
  DocumentSheet& sheet_;
  const rtl::OUString object_;
  OfficeChart office_;
  std::shared_ptr<spreadsheet::Chart> chart_;  // as clients see it; null until the first one asks
  spreadsheet::Chart painted_;                 // as the document has it, as far as that is known
  spreadsheet::ChartBox place_;                // as the document had it at the last look
  std::optional<ColumnAnchor> anchor_;         // by which chart_ stands, as far as that was asked
  std::vector<rtl::OUString> cells_;           // CellsOfSeries at the last look
  bool is_read_ = false;                       // from the document, since drawing was switched off
  sal_Int32 drawings_ = 0;                     // on its sheet, when it was read
  bool waits_ = false;
};

}  // namespace mirelo::calc
