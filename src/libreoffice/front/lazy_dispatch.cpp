#include "libreoffice/front/lazy_dispatch.h"

#include <algorithm>
#include <com/sun/star/frame/FeatureStateEvent.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/RuntimeException.hpp>
#include <set>

#include "libreoffice/command_urls.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Any;
using css::uno::Reference;

// All that live; the office calls commands on its main thread.
std::set<LazyDispatch*>& Living() {
  static std::set<LazyDispatch*>& living = *new std::set<LazyDispatch*>;  // windows may outlive statics
  return living;
}

bool is_loaded = false;

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

LazyDispatch::LazyDispatch(Reference<css::uno::XComponentContext> context,
                           const Reference<css::frame::XFrame>& frame)
    : context_(std::move(context)), frame_(frame) {
  Living().insert(this);
}

LazyDispatch::~LazyDispatch() { Living().erase(this); }

void SAL_CALL LazyDispatch::dispatch(const css::util::URL& command,
                                     const css::uno::Sequence<css::beans::PropertyValue>& arguments) {
  const Reference<css::frame::XDispatch> kept(this);  // a command may close the window
  Load();
  LoadAll();
  library_->dispatch(command, arguments);
}

void SAL_CALL LazyDispatch::addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                              const css::util::URL& command) {
  if (is_loaded) {
    Load();
    return library_->addStatusListener(listener, command);
  }
  listeners_.emplace_back(listener, command);
  listener->statusChanged(StateWithoutDay(command, static_cast<cppu::OWeakObject*>(this)));
}

void SAL_CALL LazyDispatch::removeStatusListener(const Reference<css::frame::XStatusListener>& listener,
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
  const std::set<LazyDispatch*> living = Living();
  for (LazyDispatch* const each : living) {
    if (!Living().contains(each) || each->listeners_.empty()) continue;
    const Reference<css::frame::XDispatch> kept(each);
    try {
      each->Load();
    } catch (const css::uno::Exception&) {  // its window is about to go
    }
  }
}

}  // namespace mirelo::libreoffice
