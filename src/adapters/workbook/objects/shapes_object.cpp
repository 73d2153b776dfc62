#include "adapters/workbook/objects/shapes_object.h"
#include "adapters/workbook/objects/book_chart.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "adapters/workbook/objects/comment_shape.h"
#include "adapters/workbook/rules.h"
#include "automation/text.h"
#include "spreadsheet/charts/chart_shape.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

std::int32_t ShapesObject::Count() {
  return static_cast<std::int32_t>(sheet_->charts.all.size() + sheet_->comments.all().size());
}

std::shared_ptr<host::excel::Shape> ShapesObject::Item(std::int32_t index) {
  if (index < 1 || index > Count()) throw Refusals::NoSuchShape();
  const auto& charts = sheet_->charts.all;
  const std::size_t number = static_cast<std::size_t>(index) - 1;
  if (number < charts.size()) return std::make_shared<ChartShape>(PlaceOf(book_, sheet_, charts[number]));
  const auto& [cell, comment] =
      *std::next(sheet_->comments.all().begin(), static_cast<std::ptrdiff_t>(number - charts.size()));
  return std::make_shared<CommentShape>(CommentPlace{book_, sheet_, {cell.first, cell.second}, comment});
}

std::shared_ptr<host::excel::Shape> ShapesObject::Item(std::string_view name) {
  for (std::int32_t index = 1; index <= Count(); ++index) {
    auto shape = Item(index);
    if (EqualText(shape->Name(), name)) return shape;
  }
  throw Refusals::NoSuchShape(name);
}

std::shared_ptr<host::excel::Shape> SelectedShape(const std::shared_ptr<Book>& book,
                                                  const std::shared_ptr<Sheet>& sheet) {
  const auto& charts = sheet->charts.all;
  const std::shared_ptr<Chart> chart = sheet->selected_chart.lock();
  if (chart != nullptr && std::find(charts.begin(), charts.end(), chart) != charts.end())
    return std::make_shared<ChartShape>(PlaceOf(book, sheet, chart));

  const std::shared_ptr<Comment> comment = sheet->selected_comment.lock();
  if (comment == nullptr) return nullptr;
  for (const auto& [cell, other] : sheet->comments.all()) {
    if (other == comment)
      return std::make_shared<CommentShape>(CommentPlace{book, sheet, {cell.first, cell.second}, comment});
  }
  return nullptr;
}

}  // namespace mirelo::workbook
