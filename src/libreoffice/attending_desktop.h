#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "forms/form.h"
#include "host/desktop_wrapper.h"
#include "person/dialog_attendant.h"

namespace mirelo::libreoffice {

// A desktop whose settings dialog is attended to (person/dialog_attendant.h).
class AttendingDesktop final : public host::DesktopWrapper {
 public:
  // `accept` is told what Go will cost, and answers whether to press it all the same.
  using Accept = std::function<bool(const std::vector<std::string>& costs)>;
  AttendingDesktop(host::Desktop& inner, Accept accept) : DesktopWrapper(inner), accept_(std::move(accept)) {}

  void ShowModal(forms::Form& form) override {
    AttendTo(form, {nullptr, accept_});
    DesktopWrapper::ShowModal(form);
  }

 private:
  Accept accept_;
};

}  // namespace mirelo::libreoffice
