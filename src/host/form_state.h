#pragma once

#include <cstdint>
#include <optional>

#include "forms/form.h"
#include "host/window_placement.h"

namespace mirelo::host {

// The state of a placement in which a form's window is.
constexpr std::int32_t PlacementState(forms::Form::State state) {
  switch (state) {
    case forms::Form::State::Minimized:
      return WindowPlacement::kMinimized;
    case forms::Form::State::Maximized:
      return WindowPlacement::kMaximized;
    default:
      return WindowPlacement::kNormal;
  }
}

// What a placement's state makes of a form's window. Nothing for the states that leave a window as it is. No
// state hides it: that is the form's to say.
constexpr std::optional<forms::Form::State> FormState(std::int32_t state) {
  switch (state) {
    case WindowPlacement::kNormal:
    case WindowPlacement::kShownWithoutFocus:
    case WindowPlacement::kRestored:
      return forms::Form::State::Normal;
    case WindowPlacement::kMinimized:
    case WindowPlacement::kMinimizedForNext:
    case WindowPlacement::kMinimizedWithoutFocus:
      return forms::Form::State::Minimized;
    case WindowPlacement::kMaximized:
      return forms::Form::State::Maximized;
    default:
      return std::nullopt;
  }
}

}  // namespace mirelo::host
