#pragma once

#include "com/system.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"
#include "com/held.h"

namespace mirelo::com {

// An object of another program or of a script, as the classes hold it. Who does not know what it is can only
// pass it on. Each holds a counted reference. There may be several of one object, so objects are compared by
// these references.
class Foreign : public Object {
 public:
  explicit Foreign(Held<IDispatch> reference) : reference_(std::move(reference)) {}

  // What its type information calls its class, "Object" where it has none. A program that refuses to tell,
  // being busy, is asked again as calls.h says, and an error when it goes on refusing.
  std::string_view TypeName() const override;
  // Whether it has a member of that name. Errors as above.
  bool Has(std::string_view member) const;
  const Held<IDispatch>& reference() const { return reference_; }

  // Reads a property or calls a method; assigns a property. Error 438 where it has no such member. What the
  // object raises is its error. A program that refuses the call, being busy, is asked again as calls.h says.
  Variant Get(std::string_view member, std::span<const Variant> arguments = {});
  void Let(std::string_view member, const Variant& value, std::span<const Variant> arguments = {});

 private:
  Held<IDispatch> reference_;
  mutable std::string type_name_;  // empty until it was told
};

// How foreign objects map to ours, where they are more than something to pass on.
struct ForeignMeaning {
  // Our object for a foreign one that a client passes in; null where it stays as it is.
  std::function<std::shared_ptr<Object>(const std::shared_ptr<Foreign>&)> entering;
  // The foreign object behind one of ours that a client is given; null where there is none.
  std::function<std::shared_ptr<Foreign>(const Object&)> leaving;
};
// Until this is called, all foreign objects stay as they are.
void TakeForeignObjectsFor(ForeignMeaning meaning);

// A value that a client passes in, with its object mapped to ours; and one that a client is given, with ours
// mapped back.
Variant Entering(Variant value);
Variant Leaving(Variant value);

}  // namespace mirelo::com
