#pragma once

// What some settings must be beyond a number or a text, as the catalogue names it (core/settings_table.h).

#include <array>
#include <cstddef>
#include <string_view>

#include "dialog/styles.h"
#include "dialog/time_zones.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::catalogue {

// The lists that the dialog offers, as names alone.

inline constexpr auto kStyleNames = [] {
  std::array<std::string_view, kStyles.size()> names;
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = kStyles[i];
  return names;
}();

inline constexpr auto kTimeZoneNames = [] {
  std::array<std::string_view, kTimeZones.size()> names;
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = kTimeZones[i].name;
  return names;
}();

inline constexpr auto kColumnNames = [] {
  std::array<std::string_view, kColumnVocabulary.size()> names;
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = kColumnVocabulary[i].name;
  return names;
}();

inline bool IsNotEmpty(std::string_view text) { return !text.empty(); }

// A name or an address of a machine, and nothing else: no port behind a colon, no URL. An address of IPv6,
// which has several colons, is one.
bool IsHost(std::string_view text);

// A port that the facade can hold, in 16 bits with a sign: those from 32768 on are negative in it.
bool IsHttpPort(std::string_view text);

// One of the offsets that the dialog offers: "1:30".
bool IsDisplayOffset(std::string_view text);

// A colour of the dialog's palette, or -4142 for none.
bool IsFillColor(std::string_view text);

// Tickers that requests can name, parted by commas. An empty text passes.
bool AreTickers(std::string_view text);

// The beginning of a sheet's name, with room behind it for a ticker in brackets.
bool IsSheetNameStart(std::string_view text);

}  // namespace mirelo::catalogue
