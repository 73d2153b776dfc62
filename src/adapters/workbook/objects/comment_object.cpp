#include "adapters/workbook/objects/comment_object.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "adapters/workbook/errors.h"
#include "host/excel/shape.h"

namespace mirelo::workbook {

namespace {

constexpr double kPointsPerPixel = 0.75;

// A comment's box.
class CommentShape final : public host::excel::Shape {
 public:
  explicit CommentShape(std::shared_ptr<Comment> comment) : comment_(std::move(comment)) {}

  double Height() override { return comment_->height * kPointsPerPixel; }
  double Width() override { return comment_->width * kPointsPerPixel; }
  void ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) override {
    Scale(comment_->height, factor, relative_to_original_size);
  }
  void ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) override {
    Scale(comment_->width, factor, relative_to_original_size);
  }

 private:
  static void Scale(std::int32_t& pixels, double factor, host::excel::MsoTriState relative_to_original_size) {
    if (relative_to_original_size != host::excel::msoFalse)
      throw Refused("Only pictures have an original size.");
    const double scaled = std::round(pixels * factor);
    if (!(factor > 0) || scaled > Comment::kGreatestSize) throw Refused("A shape cannot be scaled so.");
    pixels = std::max(static_cast<std::int32_t>(scaled), 1);
  }

  std::shared_ptr<Comment> comment_;
};

}  // namespace

std::shared_ptr<host::excel::Shape> CommentObject::Shape() {
  return std::make_shared<CommentShape>(comment_);
}

}  // namespace mirelo::workbook
