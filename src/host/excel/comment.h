#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Shape;

// The note on a cell. It goes with its cell when cells are moved.
class Comment : public Object {
 public:
  std::string_view TypeName() const override { return "Comment"; }

  // Error 1004 once the comment was deleted.
  virtual std::string Text() = 0;
  // The box that shows the text: 96 by 55.5 points at the start.
  virtual std::shared_ptr<excel::Shape> Shape() = 0;
};

}  // namespace mirelo::host::excel
