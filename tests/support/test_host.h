#pragma once

#include "automation/runtime_error.h"
#include "host/host.h"

namespace mirelo::testing {

// A host of the ports that a test has put in; they must outlive it. Asking for one that is not there is error
// 445.
//
//   MemoryRegistry registry;
//   TestHost host;
//   host.Use(registry).Use(clock);
//   host::HostScope scope(host);
class TestHost : public host::Host {
 public:
  TestHost& Use(host::MessageLoop& port) { return loop_ = &port, *this; }
  TestHost& Use(host::Clock& port) { return clock_ = &port, *this; }
  TestHost& Use(host::Registry& port) { return registry_ = &port, *this; }
  TestHost& Use(host::WinInetApi& port) { return internet_ = &port, *this; }
  TestHost& Use(host::WinsockLibrary& port) { return sockets_ = &port, *this; }
  TestHost& Use(host::Desktop& port) { return desktop_ = &port, *this; }
  TestHost& Use(host::OperatingSystem& port) { return system_ = &port, *this; }
  TestHost& Use(host::CredentialVault& port) { return vault_ = &port, *this; }

  host::MessageLoop& loop() override { return Present(loop_); }
  host::Clock& clock() override { return Present(clock_); }
  host::Registry& registry() override { return Present(registry_); }
  host::WinInetApi& internet() override { return Present(internet_); }
  host::WinsockLibrary& sockets() override { return Present(sockets_); }
  host::Desktop& desktop() override { return Present(desktop_); }
  host::OperatingSystem& system() override { return Present(system_); }
  host::CredentialVault& vault() override { return Present(vault_); }

 private:
  template <class Port>
  static Port& Present(Port* port) {
    if (port == nullptr) throw Errors::ActionNotSupported();
    return *port;
  }

  host::MessageLoop* loop_ = nullptr;
  host::Clock* clock_ = nullptr;
  host::Registry* registry_ = nullptr;
  host::WinInetApi* internet_ = nullptr;
  host::WinsockLibrary* sockets_ = nullptr;
  host::Desktop* desktop_ = nullptr;
  host::OperatingSystem* system_ = nullptr;
  host::CredentialVault* vault_ = nullptr;
};

}  // namespace mirelo::testing
