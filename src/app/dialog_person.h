#pragma once

#include <optional>
#include <string>

#include "app/dialog_wishes.h"
#include "app/exit_code.h"

namespace mirelo {
class frmMirelo;
}

namespace mirelo::app {

class AttendedDesktop;

// Somebody who does in the settings dialog what was asked for, with the dialog's controls only, and presses
// Go. What cannot be done as it was asked for makes the person cancel instead, and so does a report of a
// failure, which leaves it open what the dialog holds.
class DialogPerson {
 public:
  // Attends to the dialog on the desktop. All three must outlive the dialog.
  DialogPerson(const DialogWishes& wishes, AttendedDesktop& desktop);

  // Why the dialog was cancelled, if it was, and whose fault that is.
  struct Complaint {
    std::string text;
    ExitCode code = kFailed;
  };
  const std::optional<Complaint>& Complained() const { return complaint_; }

 private:
  void Work(frmMirelo& form);
  void Fulfil(frmMirelo& form);
  void FulfilSettings(frmMirelo& form, bool stored_at_once);

  const DialogWishes& wishes_;
  AttendedDesktop& desktop_;
  std::optional<Complaint> complaint_;
};

}  // namespace mirelo::app
