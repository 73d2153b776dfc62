#pragma once

#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/objects/comment_shape.h"
#include "host/excel/comment.h"

namespace mirelo::workbook {

class CommentObject final : public host::excel::Comment {
 public:
  explicit CommentObject(CommentPlace place) : place_(std::move(place)) {}

  std::string Text() override {
    place_.Cell();
    return place_.comment->text;
  }
  std::shared_ptr<host::excel::Shape> Shape() override { return std::make_shared<CommentShape>(place_); }

 private:
  CommentPlace place_;
};

}  // namespace mirelo::workbook
