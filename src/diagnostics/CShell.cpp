#include "diagnostics/CShell.h"

#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

namespace {

// Results that are not listed, such as that there is no program for an address, pass for success.
void RaiseErrorOf(int result) {
  switch (result) {
    case host::Desktop::kShellOutOfMemory:
      throw Errors::ShellOutOfMemory();
    case host::Desktop::kShellSharingViolation:
      throw Errors::ShellSharingViolation();
    case host::Desktop::kShellDdeTimeout:
      throw Errors::ShellDdeTimeout();
    case host::Desktop::kShellDdeTransactionFailed:
      throw Errors::ShellDdeTransactionFailed();
    case host::Desktop::kShellDdeBusy:
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
