#pragma once

#include <string>

#include "core/cQTData.h"
#include "core/cQTDatas.h"
#include "streaming/quote_keys.h"

namespace mirelo {

// The quote of the next key in a buffer that is filled by this alone, without any values yet. Until the keys
// start again it is always a new one; afterwards one may still wait under the key, and loses its values.
inline cQTData& QuoteToFill(cQTDatas& buffer, QuoteKeys& keys) {
  const std::string key = keys.Next();
  if (!keys.HaveStartedAgain()) return *buffer.AddNew(key);
  cQTData& quote = *buffer.FindOrAdd(key);
  quote = cQTData();
  quote.NameID(key);
  return quote;
}

}  // namespace mirelo
