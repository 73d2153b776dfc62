#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/variant.h"
#include "automation_server/class.h"
#include "automation_server/enumeration.h"
#include "automation_server/member.h"
#include "automation_server/subscription.h"

namespace mirelo::automation_server {

// The arguments of a call in the order of the parameters; nothing stands for one that the caller left out.
using Arguments = std::vector<std::optional<Variant>>;

// The door through which automation clients reach one object: names become numbers, numbers are called. It
// stands below whatever carries the calls and knows nothing of that.
//
// Every failure is a RuntimeError. Beside what the class raises these are
//
//   9    an index that an array does not have
//   13   a value that has no conversion to what the parameter takes (6: a number too large for it)
//   91   an element of a reference that refers to nothing
//   424  a value where an object is wanted
//   438  no such member, or none that can be read, assigned, set or called, as the client tries
//   448  no parameter of that name
//   449  an argument left out that may not be
//   450  too many arguments
//
// One thread, as the classes. An object is kept alive by its door, and while it is being called, so a client
// may let go of it from an event that the call raises.
class AutomationObject {
  struct Key {};

 public:
  // The door of an object; null for null. As long as somebody holds it, every call with that object answers
  // the same one, so clients that compare doors compare objects.
  static std::shared_ptr<AutomationObject> Of(const std::shared_ptr<Object>& object);

  AutomationObject(Key, std::shared_ptr<Object> object);
  ~AutomationObject();
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;

  const std::shared_ptr<Object>& object() const { return object_; }
  // What this object's clients can call.
  const Class& table() const { return class_; }

  // The number of the member of that name, in letters of either case. Error 438 when there is none.
  MemberId IdOf(std::string_view name) const;
  // The place of the parameter of that name, for clients that name their arguments. Error 448.
  std::size_t PlaceOf(MemberId member, std::string_view parameter) const;

  // Calls a method, or reads a property, since many clients write both alike. Arguments that the member takes
  // by reference have changed then, in part also when it fails.
  //
  // Arguments to a property that takes none are the indexes of the array that it holds, or go to the default
  // member of the object that it holds.
  Variant Call(MemberId member, Arguments& arguments);
  Variant Call(MemberId member, Arguments&& arguments = {}) { return Call(member, arguments); }
  // As Call, for properties alone.
  Variant Get(MemberId member, Arguments arguments = {});

  // Assigns a property, or sets its reference, for clients that write both alike, or assigns the default
  // member of the object that it always holds. With arguments to a property that takes none the element of
  // the array, or of the object, that it holds.
  void Let(MemberId member, const Variant& value, Arguments arguments = {});
  // Sets a property that holds a reference. Error 424 for a value that is none.
  void Set(MemberId member, const Variant& value, Arguments arguments = {});

  // What a client reads that names the object alone. Error 438 for a class that has no default member.
  Variant Value(Arguments arguments = {});
  // For a client's For Each. Error 438 for an object that is no collection.
  std::shared_ptr<Enumeration> NewEnum();

  // Has `sink` called with each event of the object, on whatever stack raises it, until the subscription
  // ends; an object without events never calls. What the sink raises leaves through the object's member, or
  // is dropped, as the class tells of its event.
  Subscription Subscribe(EventSink sink);

 private:
  std::shared_ptr<Object> object_;
  const Class& class_;
};

}  // namespace mirelo::automation_server
