#pragma once

#include "libreoffice/machine.h"
#include "person/attended_desktop.h"
#include "terminal/output.h"

namespace mirelo {

// The machine's, with settings and a credential that are nobody's, and the desktop at which a person attends
// to the settings dialog of each day.
struct BorrowedMachine {
  static BorrowedMachine& Get();

  libreoffice::Machine& machine;
  terminal::TextOutput printed;
  AttendedDesktop* desktop;  // the machine's

 private:
  BorrowedMachine();
};

}  // namespace mirelo
