#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/cTickerDateTime.h"
#include "core/record_collection.h"

namespace mirelo {

inline void Identify(cTickerDateTime& state, std::string_view key) { state.Symbol(std::string(key)); }

extern template class RecordCollection<cTickerDateTime>;

// States of tickers by their symbol.
class cTickerDateTimes : public RecordCollection<cTickerDateTime> {
 public:
  cTickerDateTimes();
};

}  // namespace mirelo
