#pragma once

#include <cstdint>
#include <string_view>

#include "core/cQTData.h"

namespace mirelo {

// A volume by the halves of the 64 bits that are sent. The classes of the public interface have room for the
// low one.
struct LongVolume {
  std::int32_t low = 0;
  std::int32_t high = 0;

  std::int64_t Whole() const {
    return std::int64_t{high} * (std::int64_t{1} << 32) + static_cast<std::uint32_t>(low);
  }
};

// A Level I record as it stands on the wire: numbers are read, texts are still bytes of the ANSI code page
// that lie in the chunk. What the record did not carry is 0 or empty.
struct Level1Record {
  CarriedFields carried;  // those whose values came whole; id 0 for unknown ones
  double bid_price = 0;
  double ask_price = 0;
  double last_price = 0;
  double change = 0;
  double open = 0;
  double previous_close = 0;
  double high = 0;
  double low = 0;
  double week_52_high = 0;
  double week_52_low = 0;
  double dividend = 0;
  double earnings = 0;
  double price_to_earnings = 0;
  double yield = 0;
  double close = 0;
  LongVolume volume;
  LongVolume previous_volume;
  LongVolume average_volume;
  std::int32_t bid_size = 0;
  std::int32_t ask_size = 0;
  std::int32_t last_size = 0;
  std::int32_t trades = 0;
  std::int32_t average_trade_size = 0;
  std::int32_t open_interest = 0;
  std::string_view symbol;
  std::string_view company_name;
  std::string_view exchange;
  std::string_view market_cap;
  std::string_view stamp;  // 14 bytes, MMDDYYYYHHMMSS, or none
};

}  // namespace mirelo
