#include "adapters/calc/charts/comment_box.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/sheet/XSheetAnnotation.hpp>
#include <com/sun/star/sheet/XSheetAnnotationAnchor.hpp>
#include <com/sun/star/sheet/XSheetAnnotationShapeSupplier.hpp>
#include <com/sun/star/sheet/XSheetAnnotations.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>

#include "adapters/calc/charts/document_charts.h"
#include "adapters/calc/charts/office_chart.h"
#include "adapters/calc/objects/block_change.h"
#include "adapters/calc/objects/comment_object.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/front.h"
#include "spreadsheet/address.h"
#include "spreadsheet/pixels.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/shape_size.h"

namespace mirelo::calc {

using spreadsheet::CellPlace;

namespace Refusals = spreadsheet::Refusals;

namespace {

double WholePixels(double points) {
  return std::round(points / spreadsheet::kPointsPerPixel) * spreadsheet::kPointsPerPixel;
}

std::int32_t PixelsIn(double points) {
  return static_cast<std::int32_t>(std::round(points / spreadsheet::kPointsPerPixel));
}

}  // namespace

template <class Body>
decltype(auto) CommentBox::Ask(Body&& body) const {
  return cell_.document().Ask(std::forward<Body>(body));
}

Reference<css::drawing::XShape> CommentBox::Box() const {
  // Not by its text: the office makes an editor whenever it is asked for one.
  const auto note = As<css::sheet::XSheetAnnotationAnchor>(cell_.FirstCell())->getAnnotation();
  const auto supplier = IfAs<css::sheet::XSheetAnnotationShapeSupplier>(note);
  const auto shape = supplier.is() ? supplier->getAnnotationShape() : Reference<css::drawing::XShape>();
  if (!shape.is()) throw Refusals::CommentGone();
  return shape;
}

host::excel::MsoShapeType CommentBox::Type() {
  Ask([&] { Box(); });
  return host::excel::msoComment;
}

std::string CommentBox::Name() {
  Ask([&] { Box(); });
  return "Comment " + spreadsheet::CellName(cell_.area.first_row, cell_.area.first_column);
}

std::shared_ptr<host::excel::Chart> CommentBox::Chart() { throw Refusals::NotAChart(); }

std::int32_t CommentBox::ZOrderPosition() {
  return Ask([&] {
    Box();
    const auto cells = CellsOfCommentBoxes(*cell_.sheet);
    const CellPlace own{cell_.area.first_row, cell_.area.first_column};
    const auto charts = DocumentCharts::Of(cell_.document()).On(*cell_.sheet).size();
    return static_cast<std::int32_t>(charts) +
           static_cast<std::int32_t>(std::ranges::find(cells, own) - cells.begin()) + 1;
  });
}

void CommentBox::Select() {
  Ask([&] {
    const auto box = Box();
    if (cell_.sheet->IsHidden()) throw Refusals::CommentOnAHiddenSheet();
    cell_.document().Front().Select(*cell_.sheet, box);
  });
}

void CommentBox::Delete() {
  ChangeCells(cell_, [&] {
    Box();
    ClearComments(cell_);
  });
}

double CommentBox::Left() {
  return Ask([&] { return PointsOf(Box()->getPosition().X); });
}

double CommentBox::Top() {
  return Ask([&] { return PointsOf(Box()->getPosition().Y); });
}

void CommentBox::Left(double /*points*/) { throw Refusals::CommentBesideItsCell(); }
void CommentBox::Top(double /*points*/) { throw Refusals::CommentBesideItsCell(); }

double CommentBox::Height() {
  return Ask([&] { return WholePixels(PointsOf(Box()->getSize().Height)); });
}

double CommentBox::Width() {
  return Ask([&] { return WholePixels(PointsOf(Box()->getSize().Width)); });
}

void CommentBox::Height(double points) {
  const double height = spreadsheet::PixelsOfSize(points) * spreadsheet::kPointsPerPixel;
  ChangeCells(cell_, [&] {
    const auto box = Box();
    Properties(box).Set("TextAutoGrowHeight", false);  // also where that is too low for its text
    box->setSize({box->getSize().Width, LengthOf(height)});
  });
}

void CommentBox::Width(double points) {
  const double width = spreadsheet::PixelsOfSize(points) * spreadsheet::kPointsPerPixel;
  ChangeCells(cell_, [&] {
    const auto box = Box();
    box->setSize({LengthOf(width), box->getSize().Height});
  });
}

void CommentBox::ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) {
  Height(spreadsheet::ScaledPixels(PixelsIn(Height()), factor, relative_to_original_size) *
         spreadsheet::kPointsPerPixel);
}

void CommentBox::ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) {
  Width(spreadsheet::ScaledPixels(PixelsIn(Width()), factor, relative_to_original_size) *
        spreadsheet::kPointsPerPixel);
}

std::vector<CellPlace> CellsOfCommentBoxes(DocumentSheet& sheet) {
  const auto notes = As<css::container::XIndexAccess>(
      As<css::sheet::XSheetAnnotationsSupplier>(sheet.Get())->getAnnotations());
  std::vector<CellPlace> cells;
  for (sal_Int32 i = 0; i < notes->getCount(); ++i) {
    const auto cell = As<css::sheet::XSheetAnnotation>(notes->getByIndex(i))->getPosition();
    cells.push_back({cell.Row + 1, cell.Column + 1});
  }
  std::ranges::sort(cells);
  return cells;
}

}  // namespace mirelo::calc
