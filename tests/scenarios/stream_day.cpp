#include "scenarios/stream_day.h"

namespace mirelo::testing {

StreamDay::StreamDay() {
  wishes.tickers = {"MSFT", "IBM"};
  wishes.columns = {"Ticker", "Last", "Bid", "Volume", "LastVolume", "Date", "Time"};
  wishes.settings = {{"UpdateEvery", "1"},
                     {"Seconds", "0"},
                     {"ComQuoteSource", "Alpstein Finance (delayed)"},
                     {"VerticalTable", "1"},
                     {"RowsLimit", "4"}};
  wishes.ticks = {{"MSFT", "Last"}, {"MSFT", "LastVolume"}};
}

void StreamDay::Converse() {
  Deliver("OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
  Deliver("LO<STATUSCODE>0</STATUSCODE>");
  Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
}

void StreamDay::BeginStreaming() {
  constexpr std::int32_t kStreamed = 77;
  ASSERT_EQ(Begin(), kStreamed);
  Converse();
}

void StreamDay::Quote(const Level1Wire& record) {
  Deliver(record.Bytes());
  Pass(kWritePause);
}

}  // namespace mirelo::testing
