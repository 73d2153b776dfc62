#pragma once

#include "adapters/windows/system_clock.h"
#include "adapters/windows/windows_system.h"
#include "host/host.h"

namespace mirelo::windows {

// The machine that the classes work on in a client's process: so far its clock, and Windows itself. Asking
// for another port is error 445.
class Machine : public host::Host {
 public:
  // The first call puts it in place. It stays until the process ends, since clients may hold objects as long.
  static Machine& Installed();

  host::MessageLoop& loop() override;
  host::Clock& clock() override { return clock_; }
  host::Registry& registry() override;
  host::WinInetApi& internet() override;
  host::WinsockLibrary& sockets() override;
  host::Desktop& desktop() override;
  host::OperatingSystem& system() override { return system_; }
  host::CredentialVault& vault() override;

 private:
  Machine() = default;

  SystemClock clock_;
  WindowsSystem system_;
  host::HostScope installed_{*this};
};

}  // namespace mirelo::windows
