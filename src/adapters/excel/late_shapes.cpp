#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/excel/late.h"
#include "automation/variant.h"
#include "host/excel/chart.h"
#include "host/excel/comment.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"

namespace mirelo::excel {

namespace {

class LateComment : public LateOf<host::excel::Comment> {
 public:
  using LateOf::LateOf;

  std::string Text() override { return Get("Text"); }
  std::shared_ptr<host::excel::Shape> Shape() override { return Get("Shape"); }
};

class LateShape : public LateOf<host::excel::Shape> {
 public:
  using LateOf::LateOf;

  host::excel::MsoShapeType Type() override { return Get("Type"); }
  std::string Name() override { return Get("Name"); }
  std::shared_ptr<host::excel::Chart> Chart() override { return Get("Chart"); }
  std::int32_t ZOrderPosition() override { return Get("ZOrderPosition"); }
  void Select() override { Get("Select"); }
  void Delete() override { Get("Delete"); }
  double Left() override { return Get("Left"); }
  void Left(double points) override { Let("Left", points); }
  double Top() override { return Get("Top"); }
  void Top(double points) override { Let("Top", points); }
  double Height() override { return Get("Height"); }
  void Height(double points) override { Let("Height", points); }
  double Width() override { return Get("Width"); }
  void Width(double points) override { Let("Width", points); }
  void ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) override {
    Get("ScaleHeight", factor, relative_to_original_size);
  }
  void ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) override {
    Get("ScaleWidth", factor, relative_to_original_size);
  }
};

class LateShapes : public LateOf<host::excel::Shapes> {
 public:
  using LateOf::LateOf;

  std::int32_t Count() override { return Get("Count"); }
  std::shared_ptr<host::excel::Shape> Item(std::int32_t index) override { return Get("Item", index); }
  std::shared_ptr<host::excel::Shape> Item(std::string_view name) override { return Get("Item", name); }
};

}  // namespace

template <>
std::shared_ptr<host::excel::Comment> As(const Variant& result) {
  return LateObject<LateComment>(result);
}
template <>
std::shared_ptr<host::excel::Shape> As(const Variant& result) {
  return LateObject<LateShape>(result);
}
template <>
std::shared_ptr<host::excel::Shapes> As(const Variant& result) {
  return LateObject<LateShapes>(result);
}

}  // namespace mirelo::excel
