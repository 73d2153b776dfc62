#include "libreoffice/front/lazy_dispatch.h"

#include <algorithm>
#include <com/sun/star/frame/FeatureStateEvent.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/RuntimeException.hpp>
#include <mutex>

#include "libreoffice/command_urls.h"
#include "libreoffice/front/border.h"
#include "libreoffice/front/main_thread.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Any;
using css::uno::Reference;

// All that live, and others that are gone: the last hold may be another process's, on a thread of its own.
class All {
 public:
  void Add(const Reference<css::frame::XDispatch>& dispatch) {
    const std::lock_guard lock(mutex_);
    std::erase_if(known_, [](const Known& each) { return !Reference<css::frame::XDispatch>(each).is(); });
    known_.emplace_back(dispatch);
  }
  std::vector<Reference<css::frame::XDispatch>> Living() {
    const std::lock_guard lock(mutex_);
    return {known_.begin(), known_.end()};
  }

 private:
  using Known = css::uno::WeakReference<css::frame::XDispatch>;

  std::mutex mutex_;
  std::vector<Known> known_;
};

All& OfThisOffice() {
  static All& all = *new All;  // windows may outlive statics
  return all;
}

bool is_loaded = false;  // a matter of the main thread

css::frame::FeatureStateEvent StateWithoutDay(const css::util::URL& command,
                                              const Reference<css::uno::XInterface>& source) {
  css::frame::FeatureStateEvent state;
  state.Source = source;
  state.FeatureURL = command;
  state.IsEnabled = command.Complete != kStopCommand;
  if (command.Complete == kStatusCommand) state.State <<= rtl::OUString();
  return state;
}

}  // namespace

LazyDispatch::LazyDispatch(const Reference<css::uno::XComponentContext>& context,
                           const Reference<css::frame::XFrame>& frame)
    : context_(context), frame_(frame) {}

rtl::Reference<LazyDispatch> LazyDispatch::Of(const Reference<css::uno::XComponentContext>& context,
                                              const Reference<css::frame::XFrame>& frame) {
  rtl::Reference<LazyDispatch> made(new LazyDispatch(context, frame));
  OfThisOffice().Add(made.get());
  return made;
}

void SAL_CALL LazyDispatch::dispatch(const css::util::URL& command,
                                     const css::uno::Sequence<css::beans::PropertyValue>& arguments) {
  AtTheBorder([&] {
    // A command may close the window.
    OnMainThread(context_, [kept = rtl::Reference<LazyDispatch>(this), command, arguments] {
      kept->Load();
      LoadAll();
      kept->library_->dispatch(command, arguments);
    });
  });
}

void SAL_CALL LazyDispatch::addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                              const css::util::URL& command) {
  if (!listener.is()) return;
  AtTheBorder([&] {
    OnMainThread(context_, [kept = rtl::Reference<LazyDispatch>(this), listener, command] {
      kept->Add(listener, command);
    });
  });
}

void SAL_CALL LazyDispatch::removeStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                                 const css::util::URL& command) {
  AtTheBorder([&] {
    OnMainThread(context_, [kept = rtl::Reference<LazyDispatch>(this), listener, command] {
      kept->Remove(listener, command);
    });
  });
}

void LazyDispatch::Add(const Reference<css::frame::XStatusListener>& listener,
                       const css::util::URL& command) {
  if (is_loaded) {
    Load();
    return library_->addStatusListener(listener, command);
  }
  listeners_.emplace_back(listener, command);
  listener->statusChanged(StateWithoutDay(command, static_cast<cppu::OWeakObject*>(this)));
}

void LazyDispatch::Remove(const Reference<css::frame::XStatusListener>& listener,
                          const css::util::URL& command) {
  if (library_.is()) return library_->removeStatusListener(listener, command);
  std::erase_if(listeners_, [&](const Listener& each) {
    return each.first == listener && each.second.Complete == command.Complete;
  });
}

void LazyDispatch::Load() {
  if (library_.is()) return;
  const Any frame(Reference<css::frame::XFrame>{frame_});
  const css::uno::Sequence<Any> arguments(&frame, 1);
  const Reference<css::frame::XDispatch> library(
      context_->getServiceManager()->createInstanceWithArgumentsAndContext(
          rtl::OUString::createFromAscii(kCommandsService), arguments, context_),
      css::uno::UNO_QUERY);
  if (!library.is()) throw css::uno::RuntimeException("Mirelo's library cannot be loaded", {});
  library_ = library;
  is_loaded = true;
  const std::vector<Listener> waiting = std::exchange(listeners_, {});
  for (const auto& [listener, command] : waiting) library_->addStatusListener(listener, command);
}

// The states of the commands in the other windows change with the first use, too.
void LazyDispatch::LoadAll() {
  for (const auto& living : OfThisOffice().Living()) {
    auto* const each = static_cast<LazyDispatch*>(living.get());
    if (each == nullptr || each->listeners_.empty()) continue;
    try {
      each->Load();
    } catch (const css::uno::Exception&) {  // its window is about to go
    }
  }
}

}  // namespace mirelo::libreoffice
