// The service mirelo.Commands: what the menu's commands do in one window, and how they look there.

#include "libreoffice/commands.h"

#include <sal/types.h>

#include <algorithm>
#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/frame/FeatureStateEvent.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>
#include <com/sun/star/system/SystemShellExecuteFlags.hpp>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "host/desktop.h"
#include "libreoffice/command_urls.h"
#include "libreoffice/machine.h"
#include "libreoffice/office_day.h"
#include "libreoffice/office_process.h"
#include "libreoffice/own_folder.h"
#include "terminal/standard_streams.h"
#include "uno/errors.h"
#include "uno/text.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;
using Document = Reference<css::frame::XModel>;

Document DocumentIn(const Reference<css::frame::XFrame>& frame) {
  if (!frame.is()) return {};
  const Reference<css::frame::XController> controller = frame->getController();
  return controller.is() ? controller->getModel() : Document();
}

void ShowGuide(const Reference<css::uno::XComponentContext>& context) {
  const std::string address = uno::TextOf(OwnFolder()) + "/docs/guide.md";
  try {
    css::system::SystemShellExecute::create(context)->execute(
        uno::OfficeText(address), "", css::system::SystemShellExecuteFlags::URIS_ONLY);
  } catch (const css::uno::Exception&) {
    throw RuntimeError(53, "No program of this desktop shows the guide. It is the file " + address);
  }
}

}  // namespace

Commands::Commands(const Reference<css::uno::XComponentContext>& context,
                   const Reference<css::frame::XFrame>& frame)
    : context_(context), frame_(frame) {}

// Of the last hold, which may be another process's, on a thread of its own.
Commands::~Commands() {
  if (changed_ == 0) return;
  const auto unsubscribe = [context = context_, cookie = changed_] {
    OfficeDay::Of(context).Changed.Unsubscribe(cookie);
  };
  try {
    if (IsMainThread()) {
      unsubscribe();
    } else {
      OfficeOf(context_)->Post(unsubscribe);
    }
  } catch (const css::uno::Exception&) {  // the office is ending, and tells nobody any more
  }
}

// Commands come from other threads where another process sends them.
void SAL_CALL Commands::dispatch(const css::util::URL& command,
                                 const css::uno::Sequence<css::beans::PropertyValue>&) {
  uno::AtTheBorder([&] {
    if (IsMainThread()) {
      Run(command.Complete);
      return;
    }
    OfficeOf(context_)->Post(
        [kept = rtl::Reference<Commands>(this), name = command.Complete] { kept->Run(name); });
  });
}

void SAL_CALL Commands::addStatusListener(const Listener& listener, const css::util::URL& command) {
  if (!listener.is()) return;
  uno::AtTheBorder([&] {
    Follow();
    listeners_.emplace_back(listener, command);
    Tell(listener, command);
  });
}

void SAL_CALL Commands::removeStatusListener(const Listener& listener, const css::util::URL& command) {
  uno::AtTheBorder([&] {
    std::erase_if(listeners_, [&](const auto& each) {
      return each.first == listener && each.second.Complete == command.Complete;
    });
  });
}

// What fails is told in a box: nobody waits for a command's outcome.
void Commands::Run(const rtl::OUString& command) {
  const rtl::Reference<Commands> kept(this);  // a command may close the window
  try {
    const Machine::Above above(Machine::Of(context_), frame_);
    Act(command);
  } catch (...) {
    Complain(uno::ErrorInHand());
  }
}

void Commands::Act(const rtl::OUString& command) {
  OfficeDay& day = OfficeDay::Of(context_);
  const Document document = DocumentIn(frame_);
  if (command == kSettingsCommand) return void(day.ShowSettings(document));
  if (command == kStartCommand) return day.Start(document);
  if (command == kStopCommand) return day.Stop();
  if (command == kHelpCommand) return ShowGuide(context_);
  if (command == kStatusCommand) {
    Machine::Of(context_).host().desktop().MessageBox(day.Report(), host::Desktop::kInformation,
                                                      host::Desktop::kDefaultTitle);
  }
}

// There may be no box, as when the office ends just now.
void Commands::Complain(const RuntimeError& error) {
  try {
    const Machine::Above above(Machine::Of(context_), frame_);
    Machine::Of(context_).host().desktop().MessageBox(error.Description(), host::Desktop::kExclamation,
                                                      host::Desktop::kDefaultTitle);
  } catch (...) {
    terminal::Err() << "mirelo: " << error.Description() << "\n";
  }
}

// Whoever raises it may outlive this, but for as long as this is being told.
void Commands::Follow() {
  if (changed_ != 0) return;
  const css::uno::WeakReference<css::frame::XDispatch> self(this);
  changed_ = OfficeDay::Of(context_).Changed.Subscribe([self] {
    const Reference<css::frame::XDispatch> living(self);
    if (living.is()) static_cast<Commands*>(living.get())->TellAll();
  });
}

void Commands::TellAll() {
  const rtl::Reference<Commands> kept(this);
  const auto listeners = listeners_;
  for (const auto& [listener, command] : listeners) Tell(listener, command);
}

void Commands::Tell(const Listener& listener, const css::util::URL& command) {
  const OfficeDay& day = OfficeDay::Of(context_);
  css::frame::FeatureStateEvent state;
  state.Source = static_cast<cppu::OWeakObject*>(this);
  state.FeatureURL = command;
  state.IsEnabled = true;
  const rtl::OUString& name = command.Complete;
  if (name == kSettingsCommand || name == kStartCommand) state.IsEnabled = !day.IsBusy();
  if (name == kStopCommand) state.IsEnabled = day.IsRunning();
  try {
    if (name == kStatusCommand) state.State <<= uno::OfficeText(day.StatusLine(DocumentIn(frame_)));
    listener->statusChanged(state);
  } catch (const css::uno::RuntimeException&) {  // its window is gone
  }
}

}  // namespace mirelo::libreoffice

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_Commands(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& arguments) {
  using mirelo::libreoffice::Commands;
  return mirelo::uno::AtTheBorder([&]() -> com::sun::star::uno::XInterface* {
    com::sun::star::uno::Reference<com::sun::star::frame::XFrame> frame;
    if (arguments.hasElements()) arguments[0] >>= frame;
    return cppu::acquire(new Commands(context, frame));
  });
}
