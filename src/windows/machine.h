#pragma once

#include <exception>
#include <optional>

#include "adapters/poll/poll_winsock_library.h"
#include "adapters/windows/machine_registry.h"
#include "adapters/windows/system_clock.h"
#include "adapters/windows/user_vault.h"
#include "adapters/windows/views/native_desktop.h"
#include "adapters/windows/window_loop.h"
#include "adapters/windows/windows_system.h"
#include "adapters/windows/wininet_client.h"
#include "host/host.h"
#include "person/attending_desktop.h"
#include "person/dialog_attendant.h"
#include "person/script_person.h"

namespace mirelo::windows {

// The machine that the classes work on in a client's process: the thread's messages are its loop, and what
// is asked of Windows is asked there.
class Machine : public host::Host {
 public:
  // The first call puts it in place, on the thread that all calls of clients are taken on. It stays until the
  // process ends, since clients may hold objects as long, and so does the library that it is in.
  static Machine& Installed();

  host::MessageLoop& loop() override { return loop_; }
  host::Clock& clock() override { return clock_; }
  host::Registry& registry() override { return registry_; }
  host::WinInetApi& internet() override { return internet_; }
  host::WinsockLibrary& sockets() override { return sockets_; }
  host::Desktop& desktop() override { return stands_in_ ? stands_in_->desktop() : attended_; }
  host::OperatingSystem& system() override { return system_; }
  UserVault& vault() override { return vault_; }

  // Who stands in for the person at this desktop, if anybody. May change only while no form or box is open.
  std::optional<ScriptPerson>& stands_in() { return stands_in_; }

 private:
  Machine();
  void TakeFailure(const std::exception_ptr& failure);

  SystemClock clock_;
  WindowsSystem system_;
  MachineRegistry registry_;
  UserVault vault_{registry_};
  WindowLoop loop_{[this](const std::exception_ptr& failure) { TakeFailure(failure); }};
  poll::PollWinsockLibrary sockets_{loop_};
  WinInetClient internet_{loop_};
  NativeDesktop desktop_{loop_};
  AttendingDesktop attended_{desktop_, {nullptr, AskWhetherToGoOn}};
  std::optional<ScriptPerson> stands_in_;
  host::HostScope installed_{*this};
};

}  // namespace mirelo::windows
