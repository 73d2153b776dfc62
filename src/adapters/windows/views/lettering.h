#pragma once

#include "adapters/windows/views/native.h"

#include <cstdint>
#include <map>
#include <string>
#include <tuple>

#include "forms/layout/boxes.h"

namespace mirelo::windows {

// The letters of a window: the user's font for messages, at the size of the window's screen. All measures are
// pixels of that screen.
class Lettering {
 public:
  explicit Lettering(unsigned dots_per_inch);
  ~Lettering();
  Lettering(const Lettering&) = delete;
  Lettering& operator=(const Lettering&) = delete;

  HFONT font() const { return font_; }
  HFONT bold_font() const { return bold_font_; }

  // On average, and the height of a box with one line of text.
  std::int32_t LetterWidth() const { return letter_width_; }
  std::int32_t LineHeight() const { return letter_height_ + Scaled(8); }
  std::int32_t LetterHeight() const { return letter_height_; }
  // What is so long on a screen of 96 dots to the inch.
  std::int32_t Scaled(std::int32_t pixels) const;
  // Forms are designed in twips, for letters of six pixels.
  std::int32_t PixelsOf(std::int32_t twips) const;
  std::int32_t TwipsOf(std::int32_t pixels) const;

  // The room that a text of one or more lines takes. "&" counts as a letter, unless it marks one.
  forms::layout::Extent ExtentOf(const std::string& text, bool bold = false, bool marks = false) const;

 private:
  double PixelsToTheTwip() const;
  forms::layout::Extent Measure(const std::string& text, bool bold, bool marks) const;

  unsigned dots_per_inch_;
  HFONT font_ = nullptr;
  HFONT bold_font_ = nullptr;
  std::int32_t letter_width_ = 0;
  std::int32_t letter_height_ = 0;
  // A layout asks for the same texts again and again.
  mutable std::map<std::tuple<std::string, bool, bool>, forms::layout::Extent> known_;
};

// Of the screen that a window is on.
unsigned DotsPerInch(HWND window);

}  // namespace mirelo::windows
