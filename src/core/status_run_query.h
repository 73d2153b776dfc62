#pragma once

#include <cstdint>

namespace mirelo {

// What the stream conversation with QuoteTracker is for. The macros set it in cMirelo.StatusRunWorkQT before
// they connect.
enum StatusRunQueryQT : std::int32_t {
  Status_Null = 0,               // nothing is wanted
  Status_ENUMSOURCES_L1 = 1,     // the list of level I quote sources
  Status_LEVEL_I_FULL_QUOTE = 2  // quotes of the subscribed tickers
};

}  // namespace mirelo
