#pragma once

#include "com/system.h"

#include <memory>

#include "automation/variant.h"
#include "com/held.h"

namespace mirelo::com {

// An object as clients hold it; null for null. As long as somebody holds it, every call with that object
// answers the same one.
//
// Members are those of the class's table, by their places in it; the default one is DISPID_VALUE, what For
// Each walks by is DISPID_NEWENUM. Arguments may be named, left out, and passed by reference, which get back
// what the member left in them. Where the class has events, clients are told of them
//
//   through its connection point (EventsOf), by the places of the events in the table
//   AddListener(object)     by calls of the methods of that object that bear the events' names
//   RemoveListener(object)  and no more
//
// Foreign objects among the arguments and results are what they mean to the classes (foreign.h).
//
// What a listener raises leaves through the object's member, or is dropped, as the class tells of its event.
// The classes live on one thread: that which makes the first of these. Error 440 on any other.
Held<IDispatch> DispatchOf(const std::shared_ptr<Object>& object);

// The object that a client's reference stands for; null for what is none of ours.
std::shared_ptr<Object> ObjectBehind(IUnknown* reference);

// How many of these clients hold.
long HeldObjects();

}  // namespace mirelo::com
