#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace mirelo {
class frmMirelo;
}

namespace mirelo {

class AttendedDesktop;

// The settings dialog while it is shown, and the desktop on which it shows its palette.
struct OpenDialog {
  frmMirelo& form;
  AttendedDesktop& desktop;
};

// How one setting is set in the dialog: on which of its tabs, and by which acts of a person.
struct DialogControl {
  std::string_view key;
  std::int32_t tab;
  // Sets the control to a value, which is one that the setting allows. Throws Unfulfilled when the control is
  // switched off, does not offer the value, or makes another one of it.
  void (*act)(const OpenDialog& dialog, const std::string& value);
  // The dialog stores the setting then, without waiting for Go.
  bool stores_at_once = false;
};

// The settings of the section "Settings" that the dialog has controls for, and the quote source. To be set in
// this order: a control that switches others on stands before them.
std::span<const DialogControl> DialogControls();

// Null for a setting without a control. Found by its own spelling.
const DialogControl* FindDialogControl(std::string_view key);

}  // namespace mirelo
