#pragma once

#include <com/sun/star/script/XInvocation.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XInterface.hpp>
#include <memory>

#include "automation/variant.h"

namespace mirelo::uno {

namespace css = com::sun::star;

// An object as macros and scripts hold it; null for null. As long as somebody holds it, every call with that
// object answers the same one.
//
// Properties and methods are those of the class's table, in letters of either case. A property that takes
// arguments is a method there. Optional arguments are left out at the end, or empty. Where the class has
// events, there are two methods more:
//
//   addListener(listener)     has an XAllListener (Basic's CreateUnoListener) told of each event: its name
//                             is the MethodName, its arguments are the Arguments
//   removeListener(listener)  and no more
//
// The default member is where XDefaultMethod or XDefaultProperty say; collections are XEnumerationAccess, for
// For Each. The classes live on one thread: that which makes the first of these (own_thread.h).
css::uno::Reference<css::script::XInvocation> InvocationOf(const std::shared_ptr<Object>& object);

// The object that an invocation stands for; null for what is none of ours.
std::shared_ptr<Object> ObjectBehind(const css::uno::Reference<css::uno::XInterface>& invocation);

}  // namespace mirelo::uno
