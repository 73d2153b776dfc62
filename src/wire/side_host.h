#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "host/host.h"
#include "host/message_loop.h"
#include "host/wininet_api.h"
#include "host/winsock_library.h"
#include "wire/mended_replies.h"
#include "wire/observed_sockets.h"
#include "wire/overriding_registry.h"
#include "wire/quiet_desktop.h"

namespace mirelo::wire {

// A machine beside the installed one, for a part of the process that works by itself: its connections are its
// own, so that what it hears is not what others hear; some settings may read otherwise; and it shows nothing.
// Clock, credentials and the rest are those of the installed host.
//
// It is the installed host for as long as something of this part runs: within Run, and within the handlers of
// its own loop. That is the installed host's loop with these handlers wrapped. Whatever else that loop
// handles meanwhile, nested, finds the installed host as it was.
//
//   SideHost side(host::Host::Current(), {.sockets = ..., .internet = ...});
//   side.Run([&] { feed.Start(); });
class SideHost : public host::Host {
 public:
  // The technologies of its connections, made over its loop.
  struct Parts {
    std::function<std::unique_ptr<host::WinsockLibrary>(host::MessageLoop& loop)> sockets;
    std::function<std::unique_ptr<host::WinInetApi>(host::MessageLoop& loop)> internet;
  };

  // `outer` must outlive this, and what was made with it.
  SideHost(host::Host& outer, const Parts& parts);
  ~SideHost() override;
  SideHost(const SideHost&) = delete;
  SideHost& operator=(const SideHost&) = delete;

  // Where errors go that leave a handler of this loop: they do not leave the installed host's loop, whose
  // callers they do not concern. Until it is called, and where `failed` raises itself, they are dropped.
  void OnFailure(std::function<void(std::exception_ptr)> failed) { failed_ = std::move(failed); }

  // What `act` returns, with this as the installed host.
  template <class Act>
  decltype(auto) Run(Act&& act) {
    const host::HostScope scope(*this);
    return std::forward<Act>(act)();
  }

  // Gives a setting another text for this part.
  void Override(const std::string& name, const std::string& text) { registry_.Override(name, text); }

  host::MessageLoop& loop() override;
  host::Clock& clock() override { return outer_.clock(); }
  host::Registry& registry() override { return registry_; }
  MendedReplies& internet() override { return *internet_; }
  ObservedSockets& sockets() override { return *sockets_; }
  QuietDesktop& desktop() override { return desktop_; }
  host::OperatingSystem& system() override { return outer_.system(); }
  host::CredentialVault& vault() override { return outer_.vault(); }

 private:
  class Loop;

  void Guard(const std::function<void()>& handler) noexcept;

  host::Host& outer_;
  std::function<void(std::exception_ptr)> failed_;
  const std::unique_ptr<Loop> loop_;
  OverridingRegistry registry_;
  QuietDesktop desktop_;
  const std::unique_ptr<host::WinsockLibrary> plain_sockets_;
  const std::unique_ptr<ObservedSockets> sockets_;
  const std::unique_ptr<host::WinInetApi> plain_internet_;
  const std::unique_ptr<MendedReplies> internet_;
};

}  // namespace mirelo::wire
