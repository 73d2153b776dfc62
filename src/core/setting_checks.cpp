#include "core/setting_checks.h"

#include <algorithm>
#include <cstdint>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "dialog/palette.h"
#include "dialog/sheet_names.h"
#include "host/excel/sheet_names.h"

namespace mirelo::catalogue {

namespace {

constexpr std::string_view kInNoHost = " \t\r\n/\\?#@\"<>,;()[]{}|^`";
constexpr std::int32_t kLongestSheetNameStart =
    host::excel::kLongestSheetName - 3;  // with brackets and a letter behind it

}  // namespace

bool IsHost(std::string_view text) {
  return !text.empty() && text.find_first_of(kInNoHost) == text.npos && std::ranges::count(text, ':') != 1;
}

bool IsHttpPort(std::string_view text) { return Variant(text).ToInt32() != 0; }

bool IsDisplayOffset(std::string_view text) {
  for (std::int32_t half_hours = kLowestHalfHour; half_hours <= kHighestHalfHour; ++half_hours) {
    if (DisplayOffsetText(half_hours) == text) return true;
  }
  return false;
}

bool IsFillColor(std::string_view text) {
  const std::int32_t color = Variant(text).ToInt32();
  return color == kNoFill || std::ranges::find(kPalette, color, &PaletteColor::color) != kPalette.end();
}

bool AreTickers(std::string_view text) { return text.find_first_of(" \t\r\n()<>") == text.npos; }

bool IsSheetNameStart(std::string_view text) {
  return text.find_first_of(kNotInSheetNames) == text.npos && Len(Trim(text)) <= kLongestSheetNameStart;
}

}  // namespace mirelo::catalogue
