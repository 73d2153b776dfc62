#include "diagnostics/CShell.h"

#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

namespace {

// Results that are not listed, such as 31 for an address without a program, pass for success.
void RaiseErrorOf(int result) {
  switch (result) {
    case 8:
      throw Errors::ShellOutOfMemory();
    case 26:
      throw Errors::ShellSharingViolation();
    case 28:
      throw Errors::ShellDdeTimeout();
    case 29:
      throw Errors::ShellDdeTransactionFailed();
    case 30:
      throw Errors::ShellDdeBusy();
    default:
      return;
  }
}

}  // namespace

void CShell::OpenUrl(const std::string& Url) {
  RaiseErrorOf(AnyFailureAs(Errors::ShellFailure,
                            [&] { return host::Host::Current().desktop().ShellExecuteA("open", Url); }));
}

namespace Errors {

namespace {
RuntimeError ShellError(std::uint32_t number, const char* description) {
  return RuntimeError(ErrorNumber(number), description, "Mirelo.CShell");
}
}  // namespace

RuntimeError ShellOutOfMemory() { return ShellError(0x8004467C, "Out of memory"); }
RuntimeError ShellSharingViolation() { return ShellError(0x8004467E, "A sharing violation occurred"); }
RuntimeError ShellDdeTimeout() { return ShellError(0x80044680, "DDE timeout"); }
RuntimeError ShellDdeTransactionFailed() { return ShellError(0x80044681, "DDE transaction failed"); }
RuntimeError ShellDdeBusy() { return ShellError(0x80044682, "DDE busy"); }
RuntimeError ShellFailure() { return ShellError(0x80044687, "CShell component failure"); }

}  // namespace Errors

}  // namespace mirelo
