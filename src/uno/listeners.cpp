#include "uno/listeners.h"

#include <algorithm>
#include <com/sun/star/uno/XInterface.hpp>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "uno/errors.h"
#include "uno/text.h"
#include "uno/values.h"

namespace mirelo::uno {

namespace {

constexpr std::string_view kAddListener = "addListener";
constexpr std::string_view kRemoveListener = "removeListener";

}  // namespace

bool Listeners::HasMethod(std::string_view name) const {
  if (door_.table().events().empty()) return false;
  return EqualText(name, kAddListener) || EqualText(name, kRemoveListener);
}

void Listeners::Call(std::string_view name, const css::uno::Sequence<css::uno::Any>& given) {
  if (given.getLength() == 0) throw Errors::ArgumentNotOptional();
  if (given.getLength() > 1) throw Errors::WrongNumberOfArguments();
  const Listener listener(given[0], css::uno::UNO_QUERY);
  if (!listener.is()) throw Errors::TypeMismatch();

  const auto known = std::ranges::find(listeners_, listener);
  if (EqualText(name, kAddListener)) {
    if (known == listeners_.end()) listeners_.push_back(listener);
  } else if (known != listeners_.end()) {
    listeners_.erase(known);
  }
  if (listeners_.empty()) {
    subscription_.End();
  } else if (listeners_.size() == 1) {
    subscription_ = door_.Subscribe([this](const automation_server::EventMember& event,
                                           std::span<const Variant> arguments) { Tell(event, arguments); });
  }
}

void Listeners::Tell(const automation_server::EventMember& event, std::span<const Variant> arguments) {
  const css::uno::Reference<css::uno::XInterface> itself(&owner_);
  css::script::AllEventObject told;
  told.Source = itself;
  told.ListenerType = cppu::UnoType<css::script::XAllListener>::get();
  told.MethodName = OfficeText(event.name);
  told.Arguments.realloc(static_cast<sal_Int32>(arguments.size()));
  std::ranges::transform(arguments, told.Arguments.getArray(),
                         [](const Variant& argument) { return ToOffice(argument); });
  // Listeners may come and go meanwhile.
  const std::vector<Listener> listeners = listeners_;
  for (const Listener& listener : listeners) {
    try {
      listener->firing(told);
    } catch (const css::uno::Exception& failure) {
      throw FromOffice(failure);
    }
  }
}

}  // namespace mirelo::uno
