#include "adapters/workbook/objects/display_format_object.h"

#include <cstdint>
#include <utility>

#include "adapters/workbook/display/displayed_style.h"
#include "adapters/workbook/rules.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

namespace {

class ShownFont final : public host::excel::Font {
 public:
  explicit ShownFont(const FontStyle& font) : bold_(font.bold), size_(font.size), color_(font.color) {}

  Variant Bold() override { return bold_; }
  void Bold(bool) override { throw Refusals::DisplayFormatSet(); }
  Variant Size() override { return size_; }
  void Size(double) override { throw Refusals::DisplayFormatSet(); }
  Variant ColorIndex() override { return IndexOfColor(color_); }
  void ColorIndex(std::int32_t) override { throw Refusals::DisplayFormatSet(); }
  Variant Color() override { return NumberOfColor(color_, kBlack); }

 private:
  bool bold_;
  double size_;
  workbook::Color color_;
};

class ShownInterior final : public host::excel::Interior {
 public:
  explicit ShownInterior(const FillStyle& fill) : fill_(fill) {}

  Variant ColorIndex() override { return IndexOfFill(fill_); }
  void ColorIndex(std::int32_t) override { throw Refusals::DisplayFormatSet(); }
  Variant Color() override { return NumberOfColor(ColorOfFill(fill_), kWhite); }
  Variant PatternColorIndex() override { return IndexOfColor(PatternColorOf(fill_)); }
  void PatternColorIndex(std::int32_t) override { throw Refusals::DisplayFormatSet(); }
  Variant Pattern() override { return PatternOf(fill_); }
  void Pattern(std::int32_t) override { throw Refusals::DisplayFormatSet(); }

 private:
  FillStyle fill_;
};

class DisplayFormatObject final : public host::excel::DisplayFormat {
 public:
  explicit DisplayFormatObject(Style style) : style_(std::move(style)) {}

  std::shared_ptr<host::excel::Font> Font() override { return std::make_shared<ShownFont>(style_.font); }
  std::shared_ptr<host::excel::Interior> Interior() override {
    return std::make_shared<ShownInterior>(style_.fill);
  }

 private:
  Style style_;
};

}  // namespace

std::shared_ptr<host::excel::DisplayFormat> LookOf(const CellBlock& block) {
  return std::make_shared<DisplayFormatObject>(
      DisplayedStyle(*block.book, *block.sheet, block.area.first_row, block.area.first_column));
}

}  // namespace mirelo::workbook
