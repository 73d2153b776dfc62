#include "automation_server/excel/items.h"
#include "automation_server/excel/tables.h"
#include "automation_server/rows.h"
#include "host/excel/chart.h"
#include "host/excel/comment.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"

namespace mirelo::automation_server::excel {

using host::excel::Comment;
using host::excel::Shape;
using host::excel::Shapes;

namespace {

Class CommentClass() {
  using Self = Comment;
  return HandedOut<Self>("Comment", {METHOD(Text), GET(Shape)});
}

Class ShapesClass() {
  using Self = Shapes;
  return HandedOut<Self>("Shapes",
                         {GET(Count), AsDefault(ItemRow<Self>()), NumberedItemsRow<Self>("_NewEnum")});
}

Class ShapeClass() {
  using Self = Shape;
  return HandedOut<Self>("Shape", {
                                      GET(Type),
                                      GET(Name),
                                      GET(Chart),
                                      GET(ZOrderPosition),
                                      METHOD(Select),
                                      METHOD(Delete),
                                      GET_LET(Left),
                                      GET_LET(Top),
                                      GET_LET(Height),
                                      GET_LET(Width),
                                      METHOD(ScaleHeight, "Factor", "RelativeToOriginalSize"),
                                      METHOD(ScaleWidth, "Factor", "RelativeToOriginalSize"),
                                  });
}

}  // namespace

void AddShapeClasses(std::vector<Class>& classes) {
  classes.push_back(CommentClass());
  classes.push_back(ShapesClass());
  classes.push_back(ShapeClass());
}

}  // namespace mirelo::automation_server::excel
