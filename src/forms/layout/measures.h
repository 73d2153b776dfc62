#pragma once

#include <algorithm>

namespace mirelo::forms::layout {

// How large the parts of a form are, whichever toolkit shows it.

// In pixels of a screen of 96 to the inch.
inline constexpr int kSmallPicture = 16;  // of buttons and images
inline constexpr int kLargePicture = 40;  // of headings
inline constexpr int kRuleHeight = 8;

// In letters and lines that are seen at least. Entries that are longer are seen whole in the list that drops
// down.
inline constexpr int kLettersOfTextBox = 12;
inline constexpr int kLettersOfReport = 72;  // a text of several lines
inline constexpr int kLinesOfReport = 12;
inline constexpr int kLettersOfCombo = 16;
inline constexpr int kLinesOfDroppedList = 18;
inline constexpr int kLettersOfList = 20;
inline constexpr int kLinesOfList = 9;
inline constexpr int kLinesOfGrid = 11;
inline constexpr int kLinesOfScrollBar = 4;

// How many times a length of a form's design grows where letters are so wide, in pixels on average: forms
// were designed for letters of 6. It never shrinks.
constexpr double GrowthFor(double letter_width) {
  constexpr double kDesignedLetter = 6;
  return std::max(1.0, letter_width / kDesignedLetter);
}

}  // namespace mirelo::forms::layout
