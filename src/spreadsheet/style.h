#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace mirelo::spreadsheet {

// A colour as 0xRRGGBB, or automatic.
using Color = std::int32_t;
inline constexpr Color kAutomatic = -1;

struct FontStyle {
  std::string name = "Calibri";
  double size = 11;  // points
  bool bold = false;
  bool italic = false;
  bool strikeout = false;
  std::uint8_t underline = 0;  // 0 none, 1 single, 2 double, 3 and 4 their accounting forms
  Color color = kAutomatic;
  friend bool operator==(const FontStyle&, const FontStyle&) = default;
};

// A pattern of the foreground colour on the background colour. Pattern 0 is no fill, 1 is solid foreground;
// the others are numbered in the order in which the file format names them.
struct FillStyle {
  std::uint8_t pattern = 0;
  Color foreground = kAutomatic;
  Color background = kAutomatic;
  friend bool operator==(const FillStyle&, const FillStyle&) = default;
};

struct BorderLine {
  std::uint8_t line = 0;  // 0 none; numbered in the order in which the file format names them
  Color color = kAutomatic;
  friend bool operator==(const BorderLine&, const BorderLine&) = default;
};

enum class Edge : std::uint8_t { Left, Right, Top, Bottom, Diagonal };
inline constexpr std::size_t kEdges = 5;

struct BorderStyle {
  std::array<BorderLine, kEdges> edges;
  std::uint8_t diagonals = 0;  // bit 0 upwards, bit 1 downwards
  friend bool operator==(const BorderStyle&, const BorderStyle&) = default;
};

struct Alignment {
  std::int32_t horizontal = 1;  // host::excel::XlHAlign
  std::uint8_t vertical = 0;    // 0 bottom, 1 top, 2 centre, 3 justify, 4 distributed
  std::uint8_t indent = 0;
  std::int16_t rotation = 0;  // degrees, -90 to 90, or 270 for letters one below the other
  bool wrap = false;
  bool shrink = false;
  friend bool operator==(const Alignment&, const Alignment&) = default;
};

// Everything about how a cell is shown.
struct Style {
  std::string number_format = "General";
  FontStyle font;
  FillStyle fill;
  BorderStyle border;
  Alignment alignment;
  friend bool operator==(const Style&, const Style&) = default;
};

std::size_t Hash(const Style& style);

}  // namespace mirelo::spreadsheet
