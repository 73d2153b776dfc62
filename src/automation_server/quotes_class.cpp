#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/cQTDatas.h"

namespace mirelo::automation_server {

Class QuotesClass() {
  using Self = cQTDatas;
  return Creatable<Self>("cQTDatas", {
                                         METHOD(Add, "CLeItem", Optional("VarKey")),
                                         METHOD(Remove, "VarIndex"),
                                         DEFAULT_METHOD(Item, "VarIndex"),
                                         METHOD(ItemAdd, "VarIndex"),
                                         GET(Count),
                                         METHOD(Clear),
                                         ENUMERATION(NewEnum),
                                     });
}

}  // namespace mirelo::automation_server
