#include "windows/machine.h"

#include "automation/runtime_error.h"

namespace mirelo::windows {

Machine& Machine::Installed() {
  static Machine& machine = *new Machine;
  return machine;
}

host::MessageLoop& Machine::loop() { throw Errors::ActionNotSupported(); }
host::Registry& Machine::registry() { throw Errors::ActionNotSupported(); }
host::WinInetApi& Machine::internet() { throw Errors::ActionNotSupported(); }
host::WinsockLibrary& Machine::sockets() { throw Errors::ActionNotSupported(); }
host::Desktop& Machine::desktop() { throw Errors::ActionNotSupported(); }
host::CredentialVault& Machine::vault() { throw Errors::ActionNotSupported(); }

}  // namespace mirelo::windows
