#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/cTickerDateTime.h"

namespace mirelo::automation_server {

Class TickerStateClass() {
  using Self = cTickerDateTime;
  return Creatable<Self>("cTickerDateTime", {
                                                FIELD(DateQuoteTrecker),
                                                FIELD(OpenTicker),
                                                FIELD(Avg_Trade_Size),
                                                FIELD(Trades),
                                                FIELD(Tick),
                                                FIELD(Low),
                                                FIELD(High),
                                                FIELD(Last_Size),
                                                FIELD(Ask_Size),
                                                FIELD(Bid_Size),
                                                FIELD(Volume),
                                                FIELD(Change),
                                                FIELD(Last_Price),
                                                FIELD(Ask_Price),
                                                FIELD(Bid_Price),
                                                FIELD(PrevVolume),
                                                FIELD(LastVolume),
                                                FIELD(Week52Low),
                                                FIELD(Week52High),
                                                FIELD(Symbol),
                                            });
}

}  // namespace mirelo::automation_server
