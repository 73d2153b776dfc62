#pragma once

#include <cstdint>

namespace mirelo::host {

// Pixels; right and bottom lie just outside.
struct WindowRectangle {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  friend bool operator==(const WindowRectangle&, const WindowRectangle&) = default;
};

// How and where a window is shown, as desktops keep it.
struct WindowPlacement {
  // Values of `state`. Others that a desktop may be given: 8 shown as it is without focus, 10 as the program
  // was started.
  static constexpr std::int32_t kHidden = 0;
  static constexpr std::int32_t kNormal = 1;
  static constexpr std::int32_t kMinimized = 2;
  static constexpr std::int32_t kMaximized = 3;
  static constexpr std::int32_t kShownWithoutFocus = 4;
  static constexpr std::int32_t kShown = 5;             // as it is
  static constexpr std::int32_t kMinimizedForNext = 6;  // with the next window in front
  static constexpr std::int32_t kMinimizedWithoutFocus = 7;
  static constexpr std::int32_t kRestored = 9;

  std::int32_t state = kNormal;
  std::int32_t min_x = -1;  // left and top of the window's symbol; -1 where the desktop has none
  std::int32_t min_y = -1;
  std::int32_t max_x = -1;  // left and top of the window at its largest
  std::int32_t max_y = -1;
  WindowRectangle normal;  // where it is when it is neither minimised nor maximised
  friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

// Forms are designed in twips, 1440 to the inch, for a screen of 96 pixels to the inch.
inline constexpr std::int32_t kTwipsPerPixel = 15;

}  // namespace mirelo::host
