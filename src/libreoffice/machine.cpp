#include "libreoffice/machine.h"

#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XTerminateListener.hpp>
#include <cppuhelper/implbase1.hxx>
#include <memory>
#include <optional>
#include <utility>

#include "adapters/calc/views/calc_desktop.h"
#include "adapters/headless/console_desktop.h"
#include "app/dialog/guiding_desktop.h"
#include "app/link_trouble.h"
#include "automation/runtime_error.h"
#include "core/mGlobal.h"
#include "libreoffice/office_process.h"
#include "libreoffice/screen.h"
#include "person/dialog_attendant.h"
#include "terminal/standard_streams.h"
#include "uno/errors.h"
#include "wire/asked_server.h"
#include "wire/mended_replies.h"

namespace mirelo::libreoffice {

namespace {

using Context = css::uno::Reference<css::uno::XComponentContext>;

std::optional<Machine::Borrowed>& BorrowedForOf() {
  static std::optional<Machine::Borrowed> borrowed;
  return borrowed;
}

std::optional<std::filesystem::path> RegistryFile() {
  const auto& borrowed = BorrowedForOf();
  if (!borrowed) return std::nullopt;
  return borrowed->folder / "registry.db";
}

// It ends with the office.
Machine*& TheMachine() {
  static Machine* machine = nullptr;
  return machine;
}

class HushedDesktop final : public host::DesktopWrapper {
 public:
  HushedDesktop(std::unique_ptr<host::Desktop> inner, std::function<bool()> hushes)
      : DesktopWrapper(*inner), own_(std::move(inner)), hushes_(std::move(hushes)) {}

  Answer MessageBox(const std::string& text, int style, const std::string& title) override {
    if (hushes_()) return MostCarefulAnswer(style);
    return DesktopWrapper::MessageBox(text, style, title);
  }

 private:
  std::unique_ptr<host::Desktop> own_;
  std::function<bool()> hushes_;
};

class AtTheEnd final : public cppu::WeakImplHelper1<css::frame::XTerminateListener> {
 public:
  explicit AtTheEnd(std::function<void()> act) : act_(std::move(act)) {}

  void SAL_CALL queryTermination(const css::lang::EventObject&) override {}
  void SAL_CALL notifyTermination(const css::lang::EventObject&) override { Act(); }
  void SAL_CALL disposing(const css::lang::EventObject&) override { Act(); }

 private:
  void Act() {
    uno::AtTheBorder([&] {
      if (const auto act = std::exchange(act_, nullptr)) act();
    });
  }

  std::function<void()> act_;
};

}  // namespace

void Machine::Borrow(Borrowed borrowed) { BorrowedForOf() = std::move(borrowed); }

void Machine::Lend(LinuxHost& host, calc::OfficeLoop& loop) {
  if (TheMachine() == nullptr) TheMachine() = new Machine(host, loop);
}

Machine& Machine::Of(const Context& context) {
  if (TheMachine() == nullptr) TheMachine() = new Machine(context);
  return *TheMachine();
}

Machine::Machine(LinuxHost& host, calc::OfficeLoop& loop) : host_(host), loop_(&loop) {
  mGlobal::ShareServices(true);  // a day and cells hold a facade each
}

Machine::Machine(const Context& context)
    : own_(std::make_unique<LinuxHost>(RegistryFile())), host_(*own_), installed_(std::in_place, host_) {
  auto loop = std::make_unique<calc::OfficeLoop>(
      OfficeOf(context), [this](const std::exception_ptr& failure) { TakeFailure(failure); });
  loop_ = loop.get();
  host_.RunOn(std::move(loop));
  if (OfficeShowsWindows()) {
    auto desktop = std::make_unique<calc::CalcDesktop>(
        context, *loop_, [this] { return css::uno::Reference<css::frame::XFrame>(below_); });
    desktop->form_ended = [this] {
      host_.HangUp();
      FormEnded.Raise();
    };
    own_desktop_ = std::move(desktop);
  } else {
    own_desktop_ = std::make_unique<headless::ConsoleDesktop>();
  }
  auto shown_on = std::make_unique<host::DesktopWrapper>(*own_desktop_);
  shown_on_ = shown_on.get();
  host_.ShowOn(std::move(shown_on));
  mGlobal::ShareServices(true);  // macros, a day and cells may each hold a facade
  accept_costs = AskWhetherToGoOn;
  host_.ShowThrough([this](host::Desktop& inner) {
    auto guiding = std::make_unique<app::GuidingDesktop>(
        inner, [this] { return WhyNoAnswer(); }, OfficeShowsWindows(),
        GoGuard{nullptr, [this](const std::vector<std::string>& costs) { return accept_costs(costs); }});
    return std::make_unique<HushedDesktop>(std::move(guiding), [this] { return hushes && hushes(); });
  });
  host_.FetchThrough([this](host::WinInetApi& inner) {
    auto asked = std::make_unique<wire::AskedServer>(inner);
    asked_ = asked.get();
    return asked;
  });
  if (const auto& borrowed = BorrowedForOf()) {
    host_.KeepCredentialsIn(borrowed->folder);
    host_.OverrideHttpPort(borrowed->http_port);
    host_.Override("SocketPort", std::to_string(borrowed->stream_port));
  }
  const auto tell = [this](const std::string& text) { Told.Raise(text); };
  host_.FetchThrough([this, tell](host::WinInetApi& inner) {
    auto mended = std::make_unique<wire::MendedReplies>(inner);
    mended->Refused.Subscribe(tell);
    replies_ = mended.get();
    return mended;
  });
  host_.WaitForWholeReplies();
  host_.ReplyBrokenOff.Subscribe(tell);
  css::frame::Desktop::create(context)->addTerminateListener(new AtTheEnd([this] { End(); }));
}

std::string Machine::WhyNoAnswer() {
  host_.internet();
  return app::LinkTrouble(host_, *asked_, {});
}

wire::MendedReplies& Machine::replies() {
  host_.internet();
  return *replies_;
}

// What fails outside of every call of a macro, such as a handler of its own in which it set nobody to catch
// errors.
void Machine::TakeFailure(const std::exception_ptr& failure) const {
  if (take_failure && take_failure(failure)) return;
  try {
    std::rethrow_exception(failure);
  } catch (...) {
    terminal::Err() << "mirelo: " << uno::ErrorInHand().Description() << "\n";
  }
}

Machine::Above::Above(Machine& machine, const css::uno::Reference<css::frame::XFrame>& frame)
    : machine_(machine), before_(machine.below_) {
  machine_.below_ = frame;
}

Machine::Above::~Above() { machine_.below_ = before_; }

void Machine::End() {
  Ends.Raise();
  loop_->End();
}

}  // namespace mirelo::libreoffice
