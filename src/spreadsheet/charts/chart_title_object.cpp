#include "spreadsheet/charts/chart_title_object.h"

#include <cstdint>

#include "host/excel/interior.h"
#include "spreadsheet/charts/chart_border.h"
#include "spreadsheet/charts/chart_font.h"
#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/text_units.h"

namespace mirelo::spreadsheet {

namespace excel = host::excel;

namespace {

void SetText(const ChartPart<ChartTitle>& part, std::string_view text) {
  part.Get();
  if (Utf16Length(text) > kLongestTitle) throw Refusals::TitleTooLong();
  part.Change([&](ChartTitle& title) { title.text = CleanText(text); });
}

std::shared_ptr<excel::Font> FontOf(ChartPart<ChartTitle> title) {
  return std::make_shared<ChartFont<ChartTitle>>(ChartFontMembers<ChartTitle>{
      std::move(title), &ChartTitle::bold, &ChartTitle::size, &ChartTitle::color});
}

class TitleCharacters final : public excel::Characters {
 public:
  explicit TitleCharacters(ChartPart<ChartTitle> title) : title_(std::move(title)) {}

  std::string Text() override { return title_.Get().text; }
  void Text(std::string_view text) override { SetText(title_, text); }

 private:
  ChartPart<ChartTitle> title_;
};

class TitleInterior final : public excel::Interior {
 public:
  explicit TitleInterior(ChartPart<ChartTitle> title) : title_(std::move(title)) {}

  Variant ColorIndex() override {
    const ChartTitle& title = title_.Get();
    return title.fill == Look::Own ? IndexOfColor(title.interior) : std::int32_t{excel::xlColorIndexNone};
  }
  void ColorIndex(std::int32_t index) override {
    const spreadsheet::Color color = ColorOfIndex(index);
    title_.Change([color](ChartTitle& title) {
      title.interior = color;
      title.fill = color == kAutomatic ? Look::None : Look::Own;
    });
  }

  Variant Color() override {
    const ChartTitle& title = title_.Get();
    return NumberOfColor(title.fill == Look::Own ? title.interior : kAutomatic, kWhite);
  }

  Variant PatternColorIndex() override { return IndexOfColor(title_.Get().pattern_color); }
  void PatternColorIndex(std::int32_t index) override {
    title_.Change([color = ColorOfIndex(index)](ChartTitle& title) { title.pattern_color = color; });
  }

  Variant Pattern() override {
    const ChartTitle& title = title_.Get();
    return title.fill == Look::Own ? title.pattern : std::int32_t{excel::xlPatternNone};
  }
  void Pattern(std::int32_t pattern) override {
    title_.Change([pattern](ChartTitle& title) {
      switch (pattern) {
        case excel::xlPatternNone:
          title.fill = Look::None;
          return;
        case excel::xlPatternAutomatic:
          title.fill = Look::Automatic;
          return;
        case excel::xlPatternSolid:
          title.fill = Look::Own;
          title.pattern = pattern;
          return;
      }
      throw Refusals::NotAPattern();
    });
  }

 private:
  ChartPart<ChartTitle> title_;
};

}  // namespace

ChartTitleObject::ChartTitleObject(ChartPlace place)
    : place_(std::move(place)), title_(place_, [](Chart& chart) -> spreadsheet::ChartTitle& {
        if (!chart.title) throw Refusals::ChartWithoutTitle();
        return *chart.title;
      }) {}

void ChartTitleObject::Text(std::string_view text) { SetText(title_, text); }

std::shared_ptr<excel::Characters> ChartTitleObject::Characters() {
  Title();
  return std::make_shared<TitleCharacters>(title_);
}

std::shared_ptr<excel::Font> ChartTitleObject::Font() {
  Title();
  return FontOf(title_);
}

template <class Function>
void ChartTitleObject::Move(Function&& move) {
  Title();
  place_.Change([&](Chart& chart) {
    move(*chart.title);
    KeepTitleWithin(chart);
  });
}

double ChartTitleObject::Left() {
  Title();
  return TitleBox(place_.Get()).left;
}

void ChartTitleObject::Left(double points) {
  Move([left = CheckedPoints(points)](spreadsheet::ChartTitle& title) { title.left = left; });
}

double ChartTitleObject::Top() {
  Title();
  return TitleBox(place_.Get()).top;
}

void ChartTitleObject::Top(double points) {
  Move([top = CheckedPoints(points)](spreadsheet::ChartTitle& title) { title.top = top; });
}

std::shared_ptr<excel::Border> ChartTitleObject::Border() {
  Title();
  return std::make_shared<ChartBorder>(AccessTo(
      title_.Of<ChartLine>([](spreadsheet::ChartTitle& title) -> ChartLine& { return title.border; })));
}

std::shared_ptr<excel::Interior> ChartTitleObject::Interior() {
  Title();
  return std::make_shared<TitleInterior>(title_);
}

}  // namespace mirelo::spreadsheet
