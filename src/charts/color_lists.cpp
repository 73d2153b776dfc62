#include "charts/color_lists.h"

#include <array>
#include <optional>

namespace mirelo {

namespace {

// The nine lists of a style. Their order: the change of the day above, below, equal to 0; within each the
// last change above, below, equal to 0.
struct StyleColors {
  std::string_view style;
  std::array<std::string_view, 9> lists;
};

constexpr std::array<StyleColors, 3> kColorsOfStyles{{
    {"Blue",
     {
         "47,47,17,24,10,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,10,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,10,6,16,15,16,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,53,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,53,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,53,6,16,15,16,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,16,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,16,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "47,47,17,24,16,6,16,15,16,10,53,16,4,3,15,10,53,16",
     }},
    {"Green",
     {
         "10,10,50,35,10,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,10,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,10,6,16,15,16,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,53,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,53,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,53,6,16,15,16,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,16,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,16,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "10,10,50,35,16,6,16,15,16,10,53,16,4,3,15,10,53,16",
     }},
    {"Yellow",
     {
         "16,16,48,36,10,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,10,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,10,6,16,15,16,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,53,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,53,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,53,6,16,15,16,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,16,6,10,4,10,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,16,6,53,3,53,10,53,16,4,3,15,10,53,16",
         "16,16,48,36,16,6,16,15,16,10,53,16,4,3,15,10,53,16",
     }},
}};

constexpr std::size_t kSigns = 3;

// The place of a change among above, below and equal to 0.
std::optional<std::size_t> PlaceOfSign(double change) {
  if (change > 0.0) return 0;
  if (change < 0.0) return 1;
  if (change == 0.0) return 2;
  return std::nullopt;
}

}  // namespace

std::string_view ChartColorList(double change_now, double change_today, std::string_view style) {
  const auto now = PlaceOfSign(change_now);
  const auto today = PlaceOfSign(change_today);
  if (!now || !today) return {};
  for (const StyleColors& colors : kColorsOfStyles) {
    if (colors.style == style) return colors.lists[*today * kSigns + *now];
  }
  return {};
}

}  // namespace mirelo
