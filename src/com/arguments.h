#pragma once

#include "com/system.h"

#include <vector>

#include "automation_server/automation_object.h"
#include "automation_server/member.h"

namespace mirelo::com {

// The arguments of a client's call, in the order of the member's parameters. The value of an assignment is
// none of them.
class ClientArguments {
 public:
  // Error 5 for what contradicts itself, 448 for a name that the member does not have, or that is given
  // twice. Both must outlive this.
  ClientArguments(const DISPPARAMS& passed, const automation_server::Member& member);

  automation_server::Arguments& values() { return values_; }
  // What the member has left in its references goes back to the caller.
  void GiveBack() const;

 private:
  const automation_server::Member& member_;
  std::vector<const VARIANT*> places_;  // where each came from; null for one that was left out
  automation_server::Arguments values_;
};

// The value that is assigned, which goes by a name of its own; clients that name nothing pass it first. Error
// 449 where there is none.
UINT PlaceOfAssigned(const DISPPARAMS& passed);

}  // namespace mirelo::com
