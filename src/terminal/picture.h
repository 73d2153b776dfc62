#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "terminal/shown_text.h"

namespace mirelo::terminal {

// What stands on a screen, line by line.

enum class Tone { Plain, Up, Down };  // up is green, down is red

struct TextStyle {
  Tone tone = Tone::Plain;
  bool bold = false;
  bool dim = false;
  bool reverse = false;
  friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

struct Piece {
  ShownText text;
  TextStyle style;
  friend bool operator==(const Piece&, const Piece&) = default;
};

using PictureLine = std::vector<Piece>;
using Picture = std::vector<PictureLine>;

struct ScreenSize {
  std::size_t lines = 0;
  std::size_t columns = 0;
  friend bool operator==(const ScreenSize&, const ScreenSize&) = default;
};

// The text of a line alone.
inline std::string TextOf(const PictureLine& line) {
  std::string text;
  for (const Piece& piece : line) text += piece.text.Bytes();
  return text;
}

}  // namespace mirelo::terminal
