#pragma once

#include <utility>

#include "host/desktop_wrapper.h"
#include "person/dialog_attendant.h"

namespace mirelo {

// A desktop on which the settings dialog is attended to (dialog_attendant.h).
class AttendingDesktop : public host::DesktopWrapper {
 public:
  explicit AttendingDesktop(host::Desktop& inner, GoGuard guard = {})
      : DesktopWrapper(inner), guard_(std::move(guard)) {}

  void ShowModal(forms::Form& form) override {
    AttendTo(form, guard_);
    DesktopWrapper::ShowModal(form);
  }

 private:
  GoGuard guard_;
};

}  // namespace mirelo
