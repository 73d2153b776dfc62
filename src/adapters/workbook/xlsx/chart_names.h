#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "host/excel/constants.h"

namespace mirelo::workbook {

// The words and measures of the file format for the lines and fills of charts.

inline constexpr std::int64_t kEmuPerPixel = 9'525;  // the unit of lengths in drawings
inline constexpr double kSizesPerPoint = 100;        // the unit of font sizes

// A line is 1, 2 or 3 pixels wide, or as thin as can be.
inline constexpr std::array<std::pair<std::int64_t, std::int32_t>, 4> kLineWidths{
    {{3'175, host::excel::xlHairline},
     {kEmuPerPixel, host::excel::xlThin},
     {2 * kEmuPerPixel, host::excel::xlMedium},
     {3 * kEmuPerPixel, host::excel::xlThick}}};

// Words for dashes; of several words for one style the first is written. The slanted dashes of cells have no
// word of their own.
inline constexpr std::array<std::pair<std::string_view, std::int32_t>, 9> kDashNames{{
    {"solid", host::excel::xlContinuous},
    {"dash", host::excel::xlDash},
    {"sysDot", host::excel::xlDot},
    {"dashDot", host::excel::xlDashDot},
    {"lgDashDot", host::excel::xlSlantDashDot},
    {"lgDashDotDot", host::excel::xlDashDotDot},
    {"dot", host::excel::xlDot},
    {"sysDash", host::excel::xlDash},
    {"lgDash", host::excel::xlDash},
}};

// Words for markers. Some of them no client can set: only a file brings them in.
inline constexpr std::array<std::pair<std::string_view, std::int32_t>, 11> kMarkerNames{{
    {"auto", host::excel::xlMarkerStyleAutomatic},
    {"none", host::excel::xlMarkerStyleNone},
    {"square", host::excel::xlMarkerStyleSquare},
    {"diamond", host::excel::xlMarkerStyleDiamond},
    {"triangle", host::excel::xlMarkerStyleTriangle},
    {"star", 5},
    {"circle", host::excel::xlMarkerStyleCircle},
    {"plus", 9},
    {"dash", -4115},
    {"dot", -4118},
    {"x", -4168},
}};

// How charts move and grow with the cells beneath them, by XlPlacement.
inline constexpr std::array<std::pair<std::string_view, std::int32_t>, 3> kPlacementNames{
    {{"twoCell", 1}, {"oneCell", 2}, {"absolute", 3}}};

// What the format has no words for stands in extensions of this name, which other programs pass over.
inline constexpr const char* kExtension = "{6D2B8C0E-5B0F-4E0C-9C57-3B1D6F0A91E4}";
inline constexpr const char* kExtensionSpace = "urn:mirelo:chart:1";

// The word that belongs to a number; empty when none does.
template <class Word, std::size_t N>
constexpr Word WordOf(const std::array<std::pair<Word, std::int32_t>, N>& words, std::int32_t number) {
  for (const auto& [word, of] : words) {
    if (of == number) return word;
  }
  return {};
}

}  // namespace mirelo::workbook
