#pragma once

#include <optional>
#include <string>
#include <utility>

#include "person/dialog_wishes.h"

namespace mirelo {
class frmMirelo;
}

namespace mirelo {

class AttendedDesktop;

// Does in the settings dialog what was asked for on a command line or in a script, as a person would: with
// the dialog's controls only, and Go at the end. Cancels instead when something cannot be done as it was
// asked for, and when the dialog reports a failure, since nobody knows then what it holds.
class DialogPerson {
 public:
  // Attends to the dialog on the desktop. All three must outlive the dialog. Complaints speak of the wishes
  // as they are spelt.
  DialogPerson(const DialogWishes& wishes, AttendedDesktop& desktop, WishSpelling spelling = kAsOptions);

  // Why the last dialog was cancelled, if it was, and whether the wish is to blame.
  struct Complaint {
    std::string text;
    bool is_of_wish = false;  // it cannot be fulfilled; otherwise the dialog failed
  };
  const std::optional<Complaint>& Complained() const { return complaint_; }
  std::optional<Complaint> TakeComplaint() { return std::exchange(complaint_, std::nullopt); }

 private:
  void Work(frmMirelo& form);
  void Fulfil(frmMirelo& form);
  template <class Act>
  void For(const std::string& wish, Act act) const;
  std::string TextOf(const Unfulfilled& unfulfilled) const;
  void TickHistory(frmMirelo& form, const std::string& ticker);
  void FulfilSettings(frmMirelo& form, bool stored_at_once);

  const DialogWishes& wishes_;
  AttendedDesktop& desktop_;
  WishSpelling spelling_;
  std::optional<Complaint> complaint_;
};

}  // namespace mirelo
