#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "core/property.h"

namespace mirelo {

// The last state known of one ticker, against which the stream compares each record. Properties stand in the
// order of the public interface.
class cTickerDateTime : public Object {
 public:
  std::string_view TypeName() const override { return "cTickerDateTime"; }

  Property<std::string> DateQuoteTrecker;  // stamp of the quote that PrevVolume is from, in the user's format
  Property<double> OpenTicker;
  Property<std::int32_t> Avg_Trade_Size;
  Property<std::int32_t> Trades;  // number of trades
  Property<std::string> Tick;     // tick direction
  Property<double> Low;
  Property<double> High;
  Property<std::int32_t> Last_Size;
  Property<std::int32_t> Ask_Size;
  Property<std::int32_t> Bid_Size;
  Property<std::int32_t> Volume;  // since the day began
  Property<double> Change;
  Property<double> Last_Price;
  Property<double> Ask_Price;
  Property<double> Bid_Price;
  Property<std::int32_t> PrevVolume;  // the volume that the next one is compared with
  Property<std::int32_t> LastVolume;  // how far it rose last; 0 for a stamp's first
  Property<double> Week52Low;
  Property<double> Week52High;
  Property<std::string> Symbol;  // the collection key given at creation

  // The whole volume and the stamp of the last quote with one that PrevVolume has no room for; 0 where the
  // last volume was another.
  std::int64_t great_volume = 0;
  std::string great_stamp;
};

}  // namespace mirelo
