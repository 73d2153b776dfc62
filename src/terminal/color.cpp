#include "terminal/color.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

#include "terminal/standard_streams.h"

namespace mirelo::terminal {

namespace {

// The palette's fixed part: a cube of six steps of each colour, and a ramp of greys.
constexpr int kFirstOfCube = 16;
constexpr int kFirstGrey = 232;
constexpr int kGreys = 24;
constexpr std::array<int, 6> kSteps{0, 95, 135, 175, 215, 255};

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

int NearestStep(int value) {
  const auto nearest = std::min_element(
      kSteps.begin(), kSteps.end(), [&](int a, int b) { return std::abs(a - value) < std::abs(b - value); });
  return static_cast<int>(nearest - kSteps.begin());
}

int Square(int x) { return x * x; }

int Distance(Rgb color, int red, int green, int blue) {
  return Square(color.red - red) + Square(color.green - green) + Square(color.blue - blue);
}

// The parameters that select a colour, behind 38 for letters and 48 for the ground.
std::string Selection(Rgb color, ColorDepth depth) {
  if (depth == ColorDepth::Palette) return ";5;" + std::to_string(PaletteIndex(color));
  return ";2;" + std::to_string(color.red) + ';' + std::to_string(color.green) + ';' +
         std::to_string(color.blue);
}

}  // namespace

ColorDepth DepthOfOutput() {
  const std::string_view terminal = Environment("TERM");
  if (!Out().IsTerminal() || !Environment("NO_COLOR").empty() || terminal.empty() || terminal == "dumb") {
    return ColorDepth::None;
  }
  const std::string_view colors = Environment("COLORTERM");
  return colors == "truecolor" || colors == "24bit" ? ColorDepth::Full : ColorDepth::Palette;
}

ShownText Painted(const ShownText& text, const Paint& paint, ColorDepth depth) {
  if (depth == ColorDepth::None || paint == Paint() || text.Bytes().empty()) return text;
  std::string parameters;
  const auto add = [&](const std::string& parameter) {
    parameters += (parameters.empty() ? "" : ";") + parameter;
  };
  if (paint.bold) add("1");
  if (paint.dim) add("2");
  if (paint.letters) add("38" + Selection(*paint.letters, depth));
  if (paint.ground) add("48" + Selection(*paint.ground, depth));
  return Painted(text, parameters);
}

int PaletteIndex(Rgb color) {
  const int red = NearestStep(color.red);
  const int green = NearestStep(color.green);
  const int blue = NearestStep(color.blue);
  const auto step = [](int index) { return kSteps[static_cast<std::size_t>(index)]; };

  const int mean = (color.red + color.green + color.blue) / 3;
  const int grey = std::clamp((mean - 3) / 10, 0, kGreys - 1);
  const int level = 8 + 10 * grey;
  if (Distance(color, level, level, level) < Distance(color, step(red), step(green), step(blue))) {
    return kFirstGrey + grey;
  }
  return kFirstOfCube + 36 * red + 6 * green + blue;
}

}  // namespace mirelo::terminal
