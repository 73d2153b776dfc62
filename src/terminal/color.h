#pragma once

#include <cstdint>
#include <optional>

#include "terminal/shown_text.h"

namespace mirelo::terminal {

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

// How many colours a terminal shows.
enum class ColorDepth { None, Palette, Full };  // 256 of a fixed palette; all

// What can be shown on the standard output: no colours when it is no terminal, or the environment asks for
// none (NO_COLOR, TERM=dumb); all when COLORTERM says so.
ColorDepth DepthOfOutput();

// How a piece of text is painted; what is not given is the terminal's own.
struct Paint {
  std::optional<Rgb> letters;
  std::optional<Rgb> ground;
  bool bold = false;
  bool dim = false;
  friend bool operator==(const Paint&, const Paint&) = default;
};

// The text between the sequences that paint it.
ShownText Painted(const ShownText& text, const Paint& paint, ColorDepth depth);

// The nearest colour of the palette's fixed part, 16 to 255.
int PaletteIndex(Rgb color);

}  // namespace mirelo::terminal
