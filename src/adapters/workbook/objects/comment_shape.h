#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/model/book.h"
#include "host/excel/shape.h"

namespace mirelo::workbook {

// A comment, and where a client found it. The comment may have moved with its cell since then, or be gone.
struct CommentPlace {
  std::shared_ptr<Book> book;
  std::shared_ptr<Sheet> sheet;
  CellPlace cell;
  std::shared_ptr<Comment> comment;

  // The cell on which it lies now. Error 1004 when it is gone.
  CellPlace Cell() const;
};

// A comment's box.
class CommentShape final : public host::excel::Shape {
 public:
  explicit CommentShape(CommentPlace place) : place_(std::move(place)) {}

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

 private:
  // Error 1004 when the comment is gone.
  Comment& Get() const;

  CommentPlace place_;
};

}  // namespace mirelo::workbook
