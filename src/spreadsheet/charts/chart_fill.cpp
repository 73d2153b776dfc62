#include "spreadsheet/charts/chart_fill.h"

#include "spreadsheet/errors.h"
#include "spreadsheet/palette.h"

namespace mirelo::spreadsheet {

using namespace host::excel;

namespace {

constexpr std::int32_t kVariants = 4;
constexpr std::int32_t kWhiteIndex = 2;  // what a fill looks like that nobody coloured

class FillColor final : public ChartColorFormat {
 public:
  FillColor(ChartPart<ChartFill> fill, Color ChartFill::*color) : fill_(std::move(fill)), color_(color) {}

  std::int32_t SchemeColor() override {
    const Color color = fill_.Get().*color_;
    return color == kAutomatic ? kWhiteIndex : NearestIndex(color);
  }
  void SchemeColor(std::int32_t index) override {
    fill_.Get();
    if (index < 1 || index > kPaletteSize) throw Refused("This is no colour of the palette.");
    fill_.Change([&](ChartFill& fill) {
      fill.*color_ = PaletteColor(index);
      if (fill.look == Look::Automatic) fill.look = Look::Own;
    });
  }

 private:
  ChartPart<ChartFill> fill_;
  Color ChartFill::*color_;
};

}  // namespace

void ChartFillObject::TwoColorGradient(MsoGradientStyle style, std::int32_t variant) {
  fill_.Get();
  if (style != msoGradientHorizontal && style != msoGradientVertical)
    throw Refused("This is no style of gradients.");
  if (variant < 1 || variant > kVariants) throw Refused("This is no variant of gradients.");
  fill_.Change([&](ChartFill& fill) {
    fill.look = Look::Own;
    fill.gradient = static_cast<std::uint8_t>(style);
    fill.variant = static_cast<std::uint8_t>(variant);
  });
}

MsoTriState ChartFillObject::Visible() { return fill_.Get().look == Look::None ? msoFalse : msoTrue; }

void ChartFillObject::Visible(MsoTriState visible) {
  fill_.Change([visible](ChartFill& fill) {
    if (visible == msoFalse) {
      fill.look = Look::None;
    } else if (fill.look == Look::None) {
      const bool was_told = fill.gradient != 0 || fill.fore != kAutomatic;
      fill.look = was_told ? Look::Own : Look::Automatic;
    }
  });
}

std::shared_ptr<ChartColorFormat> ChartFillObject::ForeColor() {
  fill_.Get();
  return std::make_shared<FillColor>(fill_, &ChartFill::fore);
}

std::shared_ptr<ChartColorFormat> ChartFillObject::BackColor() {
  fill_.Get();
  return std::make_shared<FillColor>(fill_, &ChartFill::back);
}

}  // namespace mirelo::spreadsheet
