#pragma once

#include <string>

#include "automation/runtime_error.h"

namespace mirelo {

// Launches what the desktop has programs for.
class CShell {
 public:
  // Opens an address: a page in the browser, "mailto:" in the mail program. Does not wait for the program. An
  // address that no program is there for shows nothing and is no error. Errors 0x8004467C to 0x80044682 as
  // below for what the shell reports; 0x80044687, "CShell component failure", for any other failure.
  void OpenUrl(const std::string& Url);
};

// What CShell raises, with the source "Mirelo.CShell".
namespace Errors {
RuntimeError ShellOutOfMemory();           // 0x8004467C, "Out of memory"
RuntimeError ShellSharingViolation();      // 0x8004467E, "A sharing violation occurred"
RuntimeError ShellDdeTimeout();            // 0x80044680, "DDE timeout"
RuntimeError ShellDdeTransactionFailed();  // 0x80044681, "DDE transaction failed"
RuntimeError ShellDdeBusy();               // 0x80044682, "DDE busy"
RuntimeError ShellFailure();               // 0x80044687, "CShell component failure"
}  // namespace Errors

}  // namespace mirelo
