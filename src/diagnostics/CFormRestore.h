#pragma once

#include <cstdint>
#include <string>

#include "automation/runtime_error.h"
#include "host/window_placement.h"

namespace mirelo {

namespace forms {
class Form;
}
class CAppSettings;

// Keeps a form's place on the screen between runs: saves it into the settings store, and puts it back when
// the form opens. The section is KeyName, a backslash and the form's name; the values are the numbers of the
// window's placement.
class CFormRestore {
 public:
  // Error 0x8004449A, "Invalid AppSettings object", for no store. The store must outlive this object.
  void Init(CAppSettings* AppSettings, bool CenteredByDefault);

  CAppSettings* AppSettings() const { return AppSettings_; }
  void AppSettings(CAppSettings* settings) { AppSettings_ = settings; }

  // Whether a form without a saved place is put into the middle of the screen.
  bool CenteredByDefault() const { return CenteredByDefault_; }
  void CenteredByDefault(bool value) { CenteredByDefault_ = value; }

  // "Windows settings" at first. Error 0x8004449B, "Invalid KeyName value", for an empty one.
  const std::string& KeyName() const { return KeyName_; }
  void KeyName(std::string value);

  // Whether a form that was minimised opens at its normal size. False at first.
  bool NeverStartMinimized() const { return NeverStartMinimized_; }
  void NeverStartMinimized(bool value) { NeverStartMinimized_ = value; }

  // Puts the form where it was saved, or into the middle of the screen when that is wanted and nothing was
  // saved. A form that is not shown stays hidden and gets the window state to open in; one of fixed size
  // keeps its size. Saved texts that are no numbers count as 0.
  //
  // Error 0x80044499, "Object not properly initialized", without a store; the errors of store and desktop; 6
  // for saved numbers that no window has.
  void GetPosition(forms::Form& form);

  // Saves the form's place; nothing when the desktop does not know it. Errors as for GetPosition, but for 6.
  void SavePosition(forms::Form& form);

 private:
  CAppSettings& Settings() const;
  std::string SectionOf(const forms::Form& form) const;
  host::WindowPlacement SavedPlacement(forms::Form& form, std::int32_t state) const;
  std::int32_t StateToRestore(forms::Form& form, std::int32_t state) const;
  static void Center(forms::Form& form);

  CAppSettings* AppSettings_ = nullptr;
  bool CenteredByDefault_ = false;
  bool NeverStartMinimized_ = false;
  std::string KeyName_ = "Windows settings";
};

// What CFormRestore raises, with the source "Mirelo.CFormRestore".
namespace Errors {
RuntimeError FormRestoreNotInitialized();  // 0x80044499, "Object not properly initialized"
RuntimeError InvalidAppSettings();         // 0x8004449A, "Invalid AppSettings object"
RuntimeError InvalidKeyName();             // 0x8004449B, "Invalid KeyName value"
}  // namespace Errors

}  // namespace mirelo
