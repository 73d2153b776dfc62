#include "adapters/workbook/objects/comment_shape.h"

#include <algorithm>
#include <iterator>

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/address.h"
#include "spreadsheet/pixels.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/shape_size.h"

namespace mirelo::workbook {

namespace {

// From the cell's right edge, and from the upper edge of the row above it; the first row has none above.
constexpr double kToTheRight = 11.25;
constexpr double kBelowRowAbove = 7.5;
constexpr double kBelowFirstRow = 1.5;

}  // namespace

CellPlace CommentPlace::Cell() const {
  if (sheet->comments.Find(cell.row, cell.column) == comment) return cell;
  for (const auto& [place, other] : sheet->comments.all()) {
    if (other == comment) return {place.first, place.second};
  }
  throw Refusals::CommentGone();
}

Comment& CommentShape::Get() const {
  place_.Cell();
  return *place_.comment;
}

host::excel::MsoShapeType CommentShape::Type() {
  Get();
  return host::excel::msoComment;
}

std::string CommentShape::Name() {
  const CellPlace cell = place_.Cell();
  return "Comment " + CellName(cell.row, cell.column);
}

std::shared_ptr<host::excel::Chart> CommentShape::Chart() { throw Refusals::NotAChart(); }

std::int32_t CommentShape::ZOrderPosition() {
  const CellPlace cell = place_.Cell();
  const auto& all = place_.sheet->comments.all();
  const auto number = std::distance(all.begin(), all.find({cell.row, cell.column}));
  return static_cast<std::int32_t>(place_.sheet->charts.all.size()) + static_cast<std::int32_t>(number) + 1;
}

void CommentShape::Select() {
  Get();
  if (place_.sheet->hidden) throw Refusals::CommentOnAHiddenSheet();
  place_.book->BringToFront(*place_.sheet);
  place_.sheet->selected_comment = place_.comment;
  place_.sheet->selected_chart.reset();
}

void CommentShape::Delete() {
  const CellPlace cell = place_.Cell();
  place_.sheet->comments.Clear(Area::Cell(cell.row, cell.column));
}

double CommentShape::Left() { return WidthOfColumns(*place_.sheet, 1, place_.Cell().column) + kToTheRight; }

double CommentShape::Top() {
  const std::int32_t row = place_.Cell().row;
  return row == 1 ? kBelowFirstRow : HeightOfRows(*place_.sheet, 1, row - 2) + kBelowRowAbove;
}

void CommentShape::Left(double /*points*/) { throw Refusals::CommentBesideItsCell(); }
void CommentShape::Top(double /*points*/) { throw Refusals::CommentBesideItsCell(); }

double CommentShape::Height() { return Get().height * kPointsPerPixel; }
double CommentShape::Width() { return Get().width * kPointsPerPixel; }
void CommentShape::Height(double points) { Get().height = PixelsOfSize(points); }
void CommentShape::Width(double points) { Get().width = PixelsOfSize(points); }

void CommentShape::ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) {
  Comment& comment = Get();
  comment.height = ScaledPixels(comment.height, factor, relative_to_original_size);
}

void CommentShape::ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) {
  Comment& comment = Get();
  comment.width = ScaledPixels(comment.width, factor, relative_to_original_size);
}

}  // namespace mirelo::workbook
