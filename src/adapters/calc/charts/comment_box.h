#pragma once

#include <com/sun/star/drawing/XShape.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/shape.h"
#include "spreadsheet/area.h"

namespace mirelo::calc {

// The box of the comment on a cell. Where it stands the office decides, beside the cell and clear of others.
class CommentBox final : public host::excel::Shape {
 public:
  explicit CommentBox(CellBlock cell) : cell_(std::move(cell)) {}

  host::excel::MsoShapeType Type() override;
  std::string Name() override;
  std::shared_ptr<host::excel::Chart> Chart() override;
  std::int32_t ZOrderPosition() override;
  void Select() override;
  void Delete() override;

  double Left() override;
  void Left(double points) override;
  double Top() override;
  void Top(double points) override;
  double Height() override;
  void Height(double points) override;
  double Width() override;
  void Width(double points) override;
  void ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) override;
  void ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) override;

  // Whether the office draws this comment in `shape`. Called within Document::Ask.
  bool IsIn(const Reference<css::drawing::XShape>& shape) const { return Box() == shape; }

 private:
  template <class Body>
  decltype(auto) Ask(Body&& body) const;
  // Error 1004 when the comment is gone.
  Reference<css::drawing::XShape> Box() const;

  CellBlock cell_;
};

// The cells of a sheet whose comments have boxes, in the order of these: row by row. Called within
// Document::Ask. From the sheet's list of comments, since CommentedCells looks at each cell of its block: of
// two million, two tenths of a second.
std::vector<spreadsheet::CellPlace> CellsOfCommentBoxes(DocumentSheet& sheet);

}  // namespace mirelo::calc
