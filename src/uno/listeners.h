#pragma once

#include <com/sun/star/script/XAllListener.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <cppuhelper/weak.hxx>
#include <span>
#include <string_view>
#include <vector>

#include "automation/variant.h"
#include "automation_server/automation_object.h"

namespace mirelo::uno {

namespace css = com::sun::star;

// Who is told of one object's events, by the two methods that macros call for it. It belongs to the object's
// invocation, which is held meanwhile and is the source of what is told.
class Listeners {
 public:
  Listeners(cppu::OWeakObject& owner, automation_server::AutomationObject& door)
      : owner_(owner), door_(door) {}

  // Whether one of the two methods has this name, in letters of either case; an object without events has
  // neither.
  bool HasMethod(std::string_view name) const;
  // Calls it. Error 449 or 450 unless there is one argument, 13 for one that is no XAllListener.
  void Call(std::string_view name, const css::uno::Sequence<css::uno::Any>& given);

 private:
  using Listener = css::uno::Reference<css::script::XAllListener>;

  void Tell(const automation_server::EventMember& event, std::span<const Variant> arguments);

  cppu::OWeakObject& owner_;
  automation_server::AutomationObject& door_;
  std::vector<Listener> listeners_;
  automation_server::Subscription subscription_;
};

}  // namespace mirelo::uno
