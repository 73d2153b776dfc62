#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/cTickerDateTimes.h"

namespace mirelo::automation_server {

Class TickerStatesClass() {
  using Self = cTickerDateTimes;
  return Creatable<Self>("cTickerDateTimes", {
                                                 METHOD(Add, "CTiItem", Optional("VarKey")),
                                                 METHOD(Remove, "VarIndex"),
                                                 DEFAULT_METHOD(Item, "VarIndex"),
                                                 METHOD(ItemAdd, "VarIndex"),
                                                 GET(Count),
                                                 METHOD(Clear),
                                                 ENUMERATION(NewEnum),
                                             });
}

}  // namespace mirelo::automation_server
