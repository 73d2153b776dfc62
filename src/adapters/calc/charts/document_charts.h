#pragma once

#include <com/sun/star/drawing/XShape.hpp>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "adapters/calc/charts/drawn_chart.h"
#include "adapters/calc/charts/plotted_cells.h"
#include "adapters/calc/objects/interfaces.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

class Document;

// The charts of a document, with what is known of them beside it. Calc has no chart sheets: these are kept
// here, and nobody sees them, until they are moved onto a worksheet. Called within Document::Ask.
class DocumentCharts {
 public:
  static DocumentCharts& Of(Document& document);
  explicit DocumentCharts(Document& document) : document_(document) {}

  // Those on a sheet, from the bottom of the pile to its top.
  std::vector<std::shared_ptr<DrawnChart>> On(DocumentSheet& sheet);
  // Null when the shape is none of them.
  std::shared_ptr<DrawnChart> Find(DocumentSheet& sheet, const Reference<css::drawing::XShape>& shape);
  // Puts a chart on top of the others, under the next name that is free there.
  std::shared_ptr<DrawnChart> Add(DocumentSheet& sheet, std::shared_ptr<spreadsheet::Chart> chart);
  void Forget(const DrawnChart& chart);

  std::vector<std::shared_ptr<spreadsheet::Chart>>& Sheets() { return sheets_; }
  // By name without regard to case. Null when none bears it.
  std::shared_ptr<spreadsheet::Chart> FindSheet(std::string_view name) const;

  // A sheet's cells, for charts that plot them. Null when the document has no such sheet.
  std::shared_ptr<SheetCells> CellsOf(std::string_view sheet);
  std::shared_ptr<SheetCells> CellsOf(DocumentSheet& sheet);

  // The cells of an area were taken out of a sheet, and those below have moved up.
  void FollowDeletion(DocumentSheet& sheet, const spreadsheet::Area& gone);

  // To be called before and after a change of a sheet's columns: charts keep their place by them.
  void FollowColumns(const DocumentSheet& sheet);

  // Whether charts are painted as soon as something of them changes. Off, they are once it is on again.
  bool Draws() const { return draws_; }
  void Draw(bool on);

 private:
  // The object's name of a shape that is a chart of the sheet; empty for others.
  rtl::OUString ObjectOf(DocumentSheet& sheet, const Reference<css::drawing::XShape>& shape) const;
  std::shared_ptr<DrawnChart> Known(DocumentSheet& sheet, const rtl::OUString& object,
                                    const Reference<css::drawing::XShape>& shape);
  std::string NextName(DocumentSheet& sheet);

  Document& document_;
  std::vector<std::shared_ptr<DrawnChart>> drawn_;
  std::vector<std::shared_ptr<spreadsheet::Chart>> sheets_;
  std::map<DocumentSheet*, std::shared_ptr<SheetCells>> cells_;
  std::map<DocumentSheet*, int> made_;  // charts that a sheet ever had, for their names
  bool draws_ = true;
};

}  // namespace mirelo::calc
