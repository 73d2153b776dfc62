#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "host/excel/constants.h"

namespace mirelo::workbook {

inline constexpr std::size_t kLongestFontName = 63;  // bytes

// The words of the file format for parts of a style. The index of a word in its list is the number by which
// the model knows it.

inline constexpr std::array<std::string_view, 19> kPatternNames{
    "none",           "solid",           "mediumGray",    "darkGray",  "lightGray",
    "darkHorizontal", "darkVertical",    "darkDown",      "darkUp",    "darkGrid",
    "darkTrellis",    "lightHorizontal", "lightVertical", "lightDown", "lightUp",
    "lightGrid",      "lightTrellis",    "gray125",       "gray0625"};

inline constexpr std::array<std::string_view, 14> kLineNames{"none",
                                                             "thin",
                                                             "medium",
                                                             "dashed",
                                                             "dotted",
                                                             "thick",
                                                             "double",
                                                             "hair",
                                                             "mediumDashed",
                                                             "dashDot",
                                                             "mediumDashDot",
                                                             "dashDotDot",
                                                             "mediumDashDotDot",
                                                             "slantDashDot"};

// In the order of Edge.
inline constexpr std::array<std::string_view, 5> kEdgeNames{"left", "right", "top", "bottom", "diagonal"};

inline constexpr std::array<std::string_view, 5> kVerticalNames{"bottom", "top", "center", "justify",
                                                                "distributed"};

inline constexpr std::array<std::pair<std::string_view, std::int32_t>, 8> kHorizontalNames{{
    {"general", host::excel::xlHAlignGeneral},
    {"left", host::excel::xlHAlignLeft},
    {"center", host::excel::xlHAlignCenter},
    {"right", host::excel::xlHAlignRight},
    {"fill", host::excel::xlHAlignFill},
    {"justify", host::excel::xlHAlignJustify},
    {"centerContinuous", host::excel::xlHAlignCenterAcrossSelection},
    {"distributed", host::excel::xlHAlignDistributed},
}};

inline constexpr std::array<std::pair<std::string_view, host::excel::XlFormatConditionOperator>, 8>
    kOperatorNames{{
        {"between", host::excel::xlBetween},
        {"notBetween", host::excel::xlNotBetween},
        {"equal", host::excel::xlEqual},
        {"notEqual", host::excel::xlNotEqual},
        {"greaterThan", host::excel::xlGreater},
        {"lessThan", host::excel::xlLess},
        {"greaterThanOrEqual", host::excel::xlGreaterEqual},
        {"lessThanOrEqual", host::excel::xlLessEqual},
    }};

inline constexpr std::array<std::pair<std::string_view, std::uint8_t>, 5> kUnderlineNames{
    {{"none", 0}, {"single", 1}, {"double", 2}, {"singleAccounting", 3}, {"doubleAccounting", 4}}};

// The place of a word in a list; nothing when it is not one of it.
template <std::size_t N>
constexpr std::optional<std::uint8_t> PlaceOf(const std::array<std::string_view, N>& names,
                                              std::string_view word) {
  for (std::size_t i = 0; i < N; ++i) {
    if (names[i] == word) return static_cast<std::uint8_t>(i);
  }
  return std::nullopt;
}

// The number that belongs to a word.
template <class Number, std::size_t N>
constexpr std::optional<Number> NumberOf(const std::array<std::pair<std::string_view, Number>, N>& names,
                                         std::string_view word) {
  for (const auto& [name, number] : names) {
    if (name == word) return number;
  }
  return std::nullopt;
}

}  // namespace mirelo::workbook
