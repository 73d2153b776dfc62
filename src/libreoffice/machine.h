#pragma once

#include <chrono>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/weakref.hxx>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/calc/office_loop.h"
#include "automation/event.h"
#include "host/desktop_wrapper.h"
#include "host/host.h"
#include "linux/linux_host.h"

namespace mirelo::wire {
class AskedServer;
class MendedReplies;
}  // namespace mirelo::wire

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// Who ends while a call waits hangs up again after so long, and so on: the call may make another one.
inline constexpr std::chrono::milliseconds kBetweenHangUps{20};

// The machine that the classes work on: the user's own settings and credentials, and the office's main thread
// as the message loop. There is one in the process. It stays until the office ends, since macros may hold
// objects as long.
class Machine {
 public:
  // What a demonstration has in place of the user's own.
  struct Borrowed {
    std::filesystem::path folder;  // of settings and credentials
    int http_port = 0;
    int stream_port = 0;
  };

  // To be called before Of is, or it does nothing.
  static void Borrow(Borrowed borrowed);
  // The same for an office that runs a command of the program: it has put a host of its own in place, on this
  // loop, and whatever else asks for the machine in this office gets these. Both must outlive all that does.
  static void Lend(LinuxHost& host, calc::OfficeLoop& loop);
  // The first call puts it in place.
  static Machine& Of(const css::uno::Reference<css::uno::XComponentContext>& context);

  LinuxHost& host() { return host_; }
  calc::OfficeLoop& loop() { return *loop_; }
  wire::MendedReplies& replies();
  // Until its end forms and boxes lie above this frame, as long as that is there; with null above the one in
  // front.
  class Above {
   public:
    Above(Machine& machine, const css::uno::Reference<css::frame::XFrame>& frame);
    ~Above();
    Above(const Above&) = delete;
    Above& operator=(const Above&) = delete;

   private:
    Machine& machine_;
    const css::uno::WeakReference<css::frame::XFrame> before_;
  };
  // Shows all on this desktop, which must stay there until it is taken back. Not for one that is lent.
  void ShowOn(host::Desktop& desktop) { shown_on_->PassTo(desktop); }
  // On the office's own again: its dialogs, where it has windows, else the terminal.
  void ShowOnOwn() { shown_on_->PassTo(*own_desktop_); }

  // A sentence about a reply that was given up.
  Event<const std::string&> Told;
  // The office ends.
  Event<> Ends;
  // A person has ended a form, which may wait for QuoteTracker. That was hung up once.
  Event<> FormEnded;
  // Is told what Go will cost, and answers whether to press it all the same; at first it asks the person.
  std::function<bool(const std::vector<std::string>& costs)> accept_costs;
  // Whether a box that is to be shown now is of no use to anybody any more. It is answered as carefully as
  // can be, unseen.
  std::function<bool()> hushes;
  // Is offered what fails outside of every call, and answers whether it has taken it.
  std::function<bool(const std::exception_ptr& failure)> take_failure;

 private:
  explicit Machine(const css::uno::Reference<css::uno::XComponentContext>& context);
  Machine(LinuxHost& host, calc::OfficeLoop& loop);

  std::string WhyNoAnswer();
  void TakeFailure(const std::exception_ptr& failure) const;
  void End();

  std::unique_ptr<LinuxHost> own_;  // unless it is lent
  LinuxHost& host_;
  std::unique_ptr<host::Desktop> own_desktop_;
  host::DesktopWrapper* shown_on_ = nullptr;  // the host's
  std::optional<host::HostScope> installed_;
  css::uno::WeakReference<css::frame::XFrame> below_;  // what forms and boxes are about
  calc::OfficeLoop* loop_ = nullptr;                   // the host's
  wire::MendedReplies* replies_ = nullptr;             // the host's, as soon as it is made
  wire::AskedServer* asked_ = nullptr;                 // the same
};

}  // namespace mirelo::libreoffice
