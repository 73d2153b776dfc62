#pragma once

#include <string>

#include "core/cQTData.h"
#include "core/cQTDatas.h"
#include "core/record_items.h"
#include "streaming/quote_keys.h"

namespace mirelo {

// An empty quote under the next key of `keys`, for the decoder to fill. Nothing else may put quotes into
// `buffer`. It is a new quote until the keys start again. From then on the buffer may still have a quote
// under the key that nobody has taken; that one is emptied and used again.
inline cQTData& QuoteToFill(cQTDatas& buffer, QuoteKeys& keys) {
  const std::string key = keys.Next();
  if (!keys.HaveStartedAgain()) return *buffer.AddNew(key);
  cQTData& quote = *buffer.FindOrAdd(key);
  quote = cQTData();
  quote.NameID(key);
  return quote;
}

}  // namespace mirelo
