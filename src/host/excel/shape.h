#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/excel/constants.h"
#include "host/excel/selectable.h"

namespace mirelo::host::excel {

class Chart;

// Something that floats over the cells of a sheet. A chart stays where it is when cells move or grow; a
// comment's box goes with its cell.
class Shape : public Selectable {
 public:
  std::string_view TypeName() const override { return "Shape"; }

  virtual MsoShapeType Type() = 0;
  // "Chart 1": names count all charts that the sheet ever had. A comment's box has its cell's, "Comment B2".
  virtual std::string Name() = 0;
  // Error 1004 for a shape that is no chart.
  virtual std::shared_ptr<excel::Chart> Chart() = 0;
  // The place among the sheet's shapes, from 1 at the bottom.
  virtual std::int32_t ZOrderPosition() = 0;

  // Selects the shape; its sheet comes to the front. Error 1004 on a hidden sheet.
  void Select() override = 0;
  // Takes the shape off its sheet, a comment with its box. Error 1004 for one that is gone already, here and
  // in all other members.
  virtual void Delete() = 0;

  // Points, from the sheet's top left corner. Places and sizes are whole pixels of a 96 dpi screen, three
  // quarters of a point each: others are rounded to them, and a place beyond the sheet's end is moved back to
  // it. Error 1004 for places below 0, for sizes of 0, below 0 or above 32767 pixels, and for setting the
  // place of a comment.
  virtual double Left() = 0;
  virtual void Left(double points) = 0;
  virtual double Top() = 0;
  virtual void Top(double points) = 0;
  virtual double Height() = 0;
  virtual void Height(double points) = 0;
  virtual double Width() = 0;
  virtual void Width(double points) = 0;

  // Multiplies the present height (width) by a factor above 0; error 1004 for other factors.
  // `relative_to_original_size` must be msoFalse: only pictures have an original size, so anything else is
  // error 1004.
  virtual void ScaleHeight(double factor, MsoTriState relative_to_original_size) = 0;
  virtual void ScaleWidth(double factor, MsoTriState relative_to_original_size) = 0;
};

}  // namespace mirelo::host::excel
