#include "adapters/workbook/objects/chart_title_object.h"

#include <cstddef>
#include <cstdint>

#include "adapters/workbook/display/chart_layout.h"
#include "adapters/workbook/objects/chart_border.h"
#include "adapters/workbook/objects/chart_font.h"
#include "adapters/workbook/rules.h"
#include "host/excel/interior.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace excel = host::excel;

namespace {

constexpr std::size_t kLongestTitle = 255;  // UTF-16 units

void SetText(ChartTitle& title, std::string_view text) {
  if (Utf16Length(text) > kLongestTitle) throw Refused("The title is longer than 255 characters.");
  title.text = CleanText(text);
}

std::shared_ptr<excel::Font> FontOf(ChartPart<ChartTitle> title) {
  return std::make_shared<ChartFont<ChartTitle>>(
      ChartLetters<ChartTitle>{std::move(title), &ChartTitle::bold, &ChartTitle::size, &ChartTitle::color});
}

class TitleCharacters final : public excel::Characters {
 public:
  explicit TitleCharacters(ChartPart<ChartTitle> title) : title_(std::move(title)) {}

  std::string Text() override { return title_().text; }
  void Text(std::string_view text) override { SetText(title_(), text); }

 private:
  ChartPart<ChartTitle> title_;
};

class TitleInterior final : public excel::Interior {
 public:
  explicit TitleInterior(ChartPart<ChartTitle> title) : title_(std::move(title)) {}

  Variant ColorIndex() override {
    const ChartTitle& title = title_();
    return title.ground == Look::Own ? IndexOfColor(title.interior) : std::int32_t{excel::xlColorIndexNone};
  }
  void ColorIndex(std::int32_t index) override {
    ChartTitle& title = title_();
    title.interior = ColorOfIndex(index);
    title.ground = title.interior == kAutomatic ? Look::None : Look::Own;
  }

  Variant Color() override {
    const ChartTitle& title = title_();
    return NumberOfColor(title.ground == Look::Own ? title.interior : kAutomatic, kWhite);
  }

  Variant PatternColorIndex() override { return IndexOfColor(title_().pattern_color); }
  void PatternColorIndex(std::int32_t index) override { title_().pattern_color = ColorOfIndex(index); }

  Variant Pattern() override {
    const ChartTitle& title = title_();
    return title.ground == Look::Own ? title.pattern : std::int32_t{excel::xlPatternNone};
  }
  void Pattern(std::int32_t pattern) override {
    ChartTitle& title = title_();
    switch (pattern) {
      case excel::xlPatternNone:
        title.ground = Look::None;
        return;
      case excel::xlPatternAutomatic:
        title.ground = Look::Automatic;
        return;
      case excel::xlPatternSolid:
        title.ground = Look::Own;
        title.pattern = pattern;
        return;
    }
    throw Refused("This is no pattern.");
  }

 private:
  ChartPart<ChartTitle> title_;
};

}  // namespace

ChartTitle& ChartTitleObject::TitleOf(const ChartPlace& place) {
  Chart& chart = place.Get();
  if (!chart.title) throw Refused("This chart has no title.");
  return *chart.title;
}

ChartPart<ChartTitle> ChartTitleObject::Part() const {
  return [place = place_]() -> workbook::ChartTitle& { return TitleOf(place); };
}

void ChartTitleObject::Text(std::string_view text) { SetText(Title(), text); }

std::shared_ptr<excel::Characters> ChartTitleObject::Characters() {
  Title();
  return std::make_shared<TitleCharacters>(Part());
}

std::shared_ptr<excel::Font> ChartTitleObject::Font() {
  Title();
  return FontOf(Part());
}

double ChartTitleObject::Left() {
  Title();
  return TitleBox(*place_.chart).left;
}

void ChartTitleObject::Left(double points) {
  Title().left = CheckedPoints(points);
  KeepTitleWithin(*place_.chart);
}

double ChartTitleObject::Top() {
  Title();
  return TitleBox(*place_.chart).top;
}

void ChartTitleObject::Top(double points) {
  Title().top = CheckedPoints(points);
  KeepTitleWithin(*place_.chart);
}

std::shared_ptr<excel::Border> ChartTitleObject::Border() {
  Title();
  return std::make_shared<ChartBorder>(
      AccessTo([place = place_]() -> ChartLine& { return TitleOf(place).border; }));
}

std::shared_ptr<excel::Interior> ChartTitleObject::Interior() {
  Title();
  return std::make_shared<TitleInterior>(Part());
}

}  // namespace mirelo::workbook
