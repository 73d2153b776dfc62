#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/excel/late.h"
#include "automation/variant.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/display_format.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"

namespace mirelo::excel {

namespace {

// How the program searches: what stands in cells, and parts of it.
constexpr std::int32_t kInFormulas = -4123;
constexpr std::int32_t kMatchPart = 2;

class LateRange : public LateOf<host::excel::Range> {
 public:
  using LateOf::LateOf;

  Variant Value() override { return Get("Value"); }
  void Value(const Variant& value) override { Let("Value", value); }
  std::string Text() override { return Get("Text"); }
  std::shared_ptr<host::excel::Range> Cells() override { return Get("Cells"); }
  std::shared_ptr<host::excel::Range> Cells(std::int32_t row, std::int32_t column) override {
    return Get("Item", row, column);
  }
  std::shared_ptr<host::excel::Range> Item(std::int32_t row, std::int32_t column) override {
    return Get("Item", row, column);
  }
  std::shared_ptr<host::excel::Range> Item(std::int32_t index) override { return Get("Item", index); }
  std::shared_ptr<host::excel::Range> Resize(std::int32_t rows, std::int32_t columns) override {
    return Get("Resize", rows, columns);
  }
  std::int32_t Row() override { return Get("Row"); }
  std::int32_t Column() override { return Get("Column"); }
  std::shared_ptr<host::excel::Range> Rows() override { return Get("Rows"); }
  std::shared_ptr<host::excel::Range> Columns() override { return Get("Columns"); }
  std::int32_t Count() override { return Get("Count"); }
  std::string Address(bool row_absolute, bool column_absolute) override {
    return Get("Address", row_absolute, column_absolute);
  }
  std::shared_ptr<host::excel::Worksheet> Worksheet() override { return Get("Worksheet"); }
  std::shared_ptr<host::excel::Range> End(host::excel::XlDirection direction) override {
    return Get("End", direction);
  }
  std::shared_ptr<host::excel::Range> SpecialCells(host::excel::XlCellType type) override {
    return Get("SpecialCells", type);
  }
  std::shared_ptr<host::excel::Range> Find(std::string_view what, host::excel::Range& after,
                                           host::excel::XlSearchOrder order,
                                           host::excel::XlSearchDirection direction) override {
    return Get("Find", what, after, kInFormulas, kMatchPart, order, direction);
  }
  void Select() override { Get("Select"); }
  double Left() override { return Get("Left"); }
  double Top() override { return Get("Top"); }
  double Width() override { return Get("Width"); }
  double Height() override { return Get("Height"); }
  std::shared_ptr<host::excel::Range> EntireColumn() override { return Get("EntireColumn"); }
  std::shared_ptr<host::excel::Range> EntireRow() override { return Get("EntireRow"); }
  Variant ColumnWidth() override { return Get("ColumnWidth"); }
  void ColumnWidth(double digits) override { Let("ColumnWidth", digits); }
  void AutoFit() override { Get("AutoFit"); }
  void Clear() override { Get("Clear"); }
  void ClearContents() override { Get("ClearContents"); }
  void Delete(host::excel::XlDeleteShiftDirection shift) override { Get("Delete", shift); }
  std::shared_ptr<host::excel::Comment> Comment() override { return Get("Comment"); }
  std::shared_ptr<host::excel::Comment> AddComment(std::string_view text) override {
    return Get("AddComment", text);
  }
  void ClearComments() override { Get("ClearComments"); }
  Variant NumberFormat() override { return Get("NumberFormat"); }
  void NumberFormat(std::string_view format) override { Let("NumberFormat", format); }
  Variant HorizontalAlignment() override { return Get("HorizontalAlignment"); }
  void HorizontalAlignment(std::int32_t alignment) override { Let("HorizontalAlignment", alignment); }
  std::shared_ptr<host::excel::Font> Font() override { return Get("Font"); }
  std::shared_ptr<host::excel::Interior> Interior() override { return Get("Interior"); }
  std::shared_ptr<host::excel::Border> Borders(host::excel::XlBordersIndex index) override {
    return Get("Borders", index);
  }
  std::shared_ptr<host::excel::FormatConditions> FormatConditions() override {
    return Get("FormatConditions");
  }
  std::shared_ptr<host::excel::DisplayFormat> DisplayFormat() override { return Get("DisplayFormat"); }
};

}  // namespace

template <>
std::shared_ptr<host::excel::Range> As(const Variant& result) {
  return LateObject<LateRange>(result);
}

}  // namespace mirelo::excel
