#include "core/cQTDatas.h"

#include <memory>

#include "core/record_items.h"

namespace mirelo {

template class RecordCollection<cQTData>;

namespace {

// All but the identity, which stays as it was given first.
void CopyValues(const cQTData& from, cQTData& to) {
  const std::string identity = to.NameID();
  to = from;
  to.NameID(identity);
}

}  // namespace

cQTDatas::cQTDatas() : RecordCollection({"cQTDatas", "DovantaDL."}) {}

void cQTDatas::MoveTo(cQTDatas& target) {
  if (target.Count() == 0 && TrySwap(target)) return;
  while (Count() > 0) {
    const Reference quote = items().Item(1);
    if (const Reference* present = target.items().Find(quote->NameID())) {
      CopyValues(*quote, **present);
    } else {
      target.items().Add(quote, quote->NameID());
    }
    items().Remove(1);
  }
}

}  // namespace mirelo
