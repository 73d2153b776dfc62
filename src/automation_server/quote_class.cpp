#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/cQTData.h"

namespace mirelo::automation_server {

Class QuoteClass() {
  using Self = cQTData;
  return Creatable<Self>("cQTData", {
                                        FIELD(Last_Volume),
                                        FIELD(TimeQT),
                                        FIELD(DateQT),
                                        FIELD(NameID),
                                        FIELD(Tick),
                                        FIELD(UPC),
                                        FIELD(CloseTicker),
                                        FIELD(Yield),
                                        FIELD(Open_Interest),
                                        FIELD(PE),
                                        FIELD(Market_Cap),
                                        FIELD(Exchange),
                                        FIELD(Earnings),
                                        FIELD(Dividend),
                                        FIELD(Average_Volume),
                                        FIELD(Avg_Trade_Size),
                                        FIELD(Trades),
                                        FIELD(Prev_Volume),
                                        FIELD(Company_Name),
                                        FIELD(Week_52_Low),
                                        FIELD(Week_52_High),
                                        FIELD(Date_Time),
                                        FIELD(Low),
                                        FIELD(High),
                                        FIELD(Last_Size),
                                        FIELD(Ask_Size),
                                        FIELD(Bid_Size),
                                        FIELD(Prev_Close),
                                        FIELD(OpenTicker),
                                        FIELD(Volume),
                                        FIELD(Change),
                                        FIELD(Last_Price),
                                        FIELD(Ask_Price),
                                        FIELD(Bid_Price),
                                        FIELD(Symbol),
                                    });
}

}  // namespace mirelo::automation_server
