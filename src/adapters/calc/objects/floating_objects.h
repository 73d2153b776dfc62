#pragma once

#include <com/sun/star/drawing/XShape.hpp>
#include <functional>
#include <memory>
#include <string_view>

#include "adapters/calc/objects/cell_block.h"
#include "adapters/calc/objects/interfaces.h"
#include "host/excel/charts.h"
#include "host/excel/selectable.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/sheet.h"

namespace mirelo::calc {

class Document;
class DocumentSheet;

// What floats over the cells of sheets, and the sheets that are charts. Called within Document::Ask.

std::shared_ptr<host::excel::Charts> ChartsOf(const std::shared_ptr<Document>& document);
// By name without regard to case. Null when none bears it.
std::shared_ptr<host::excel::Sheet> FindChartSheet(const std::shared_ptr<Document>& document,
                                                   std::string_view name);
std::shared_ptr<host::excel::Shapes> ShapesOf(const std::shared_ptr<DocumentSheet>& sheet);
// The one that the person, or a client, has selected. Null where the port knows none such.
std::shared_ptr<host::excel::Selectable> ShapeOf(const std::shared_ptr<DocumentSheet>& sheet,
                                                 const Reference<css::drawing::XShape>& shape);
// Whether charts are drawn when something of them changes. Off, they are once it is on again.
void DrawCharts(Document& document, bool on);
// Runs what gives columns of a sheet other widths. Charts that clients know stay beside their columns.
void ResizeColumns(DocumentSheet& sheet, const std::function<void()>& resize);
// The cells of a block were taken out of their sheet, and those below have moved up.
void FollowDeletion(const CellBlock& gone);
// The box of the comment on this cell.
std::shared_ptr<host::excel::Shape> CommentBoxOf(const CellBlock& cell);

}  // namespace mirelo::calc
