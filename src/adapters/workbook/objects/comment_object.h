#pragma once

#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/model/comment.h"
#include "host/excel/comment.h"

namespace mirelo::workbook {

class CommentObject final : public host::excel::Comment {
 public:
  explicit CommentObject(std::shared_ptr<workbook::Comment> comment) : comment_(std::move(comment)) {}

  std::string Text() override { return comment_->text; }
  std::shared_ptr<host::excel::Shape> Shape() override;

 private:
  std::shared_ptr<workbook::Comment> comment_;
};

}  // namespace mirelo::workbook
