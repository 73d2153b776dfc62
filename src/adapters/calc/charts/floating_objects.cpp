#include "adapters/calc/objects/floating_objects.h"

#include "spreadsheet/errors.h"

namespace mirelo::calc {

namespace excel = host::excel;

namespace {

RuntimeError NotYet() { return spreadsheet::Refused("Charts cannot be reached in LibreOffice yet."); }

}  // namespace

std::shared_ptr<excel::Charts> ChartsOf(const std::shared_ptr<Document>&) { throw NotYet(); }
std::shared_ptr<excel::Sheet> FindChartSheet(const std::shared_ptr<Document>&, std::string_view) {
  return nullptr;
}
std::shared_ptr<excel::Shapes> ShapesOf(const std::shared_ptr<DocumentSheet>&) { throw NotYet(); }
std::shared_ptr<excel::Selectable> ShapeOf(const std::shared_ptr<DocumentSheet>&,
                                           const Reference<css::drawing::XShape>&) {
  return nullptr;
}
void DrawCharts(Document&, bool) {}
std::shared_ptr<excel::Shape> CommentBoxOf(const CellBlock&) { throw NotYet(); }

}  // namespace mirelo::calc
