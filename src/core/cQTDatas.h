#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/cQTData.h"
#include "core/record_collection.h"

namespace mirelo {

inline void Identify(cQTData& quote, std::string_view key) { quote.NameID(std::string(key)); }

extern template class RecordCollection<cQTData>;

// Quotes by their NameID.
class cQTDatas : public RecordCollection<cQTData> {
 public:
  // The sources of this class's errors carry a prefix of their own.
  cQTDatas();

  // Appends all quotes to `target`, in order, and leaves none here. Where `target` has a quote of that NameID
  // already, that one takes the values. A failure ends the move; what was moved until then stays moved.
  void MoveTo(cQTDatas& target);
};

}  // namespace mirelo
