// The way out: decoded quotes wait in a buffer until the client takes them, and the client is told.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/ansi.h"
#include "core/cMirelo.h"
#include "core/cQTData.h"
#include "core/mGlobal.h"
#include "core/status_run_query.h"
#include "host/host.h"
#include "host/message_loop.h"
#include "streaming/level1_record.h"
#include "streaming/quote_to_fill.h"
#include "streaming/stream_internals.h"

namespace mirelo {

namespace {

// One for all streams of the process: while one of them tells its client, the events of the others would nest
// in that client's handler just as its own.
bool RaisingQuotes = false;

// Most records carry the symbol alone of the texts.
void LetText(Property<std::string>& property, std::string_view wire_bytes) {
  if (!wire_bytes.empty()) property(AnsiToText(wire_bytes));
}

}  // namespace

void cQTStreaming::Internals::AddQuoteToBuffer(const Level1Record& record, const std::string& date_time,
                                               std::int32_t last_volume, std::int64_t whole_last_volume) {
  cQTData& quote = QuoteToFill(QuoteBuffer, QuoteCounter);
  quote.Carry(record.carried);
  quote.WholeVolumes({record.volume.Whole(), whole_last_volume});
  quote.Ask_Price(record.ask_price);
  quote.Ask_Size(record.ask_size);
  quote.Average_Volume(record.average_volume.low);
  quote.Avg_Trade_Size(record.average_trade_size);
  quote.Bid_Price(record.bid_price);
  quote.Bid_Size(record.bid_size);
  quote.Change(record.change);
  quote.CloseTicker(record.close);
  LetText(quote.Company_Name, record.company_name);
  quote.Date_Time(date_time);
  if (!record.stamp.empty()) {
    const auto& [date, time] = arrival.GetDisplacedDateTime(stream.DovantaFormatUserDate_);
    quote.DateQT(date);
    quote.TimeQT(time);
  }
  quote.Dividend(record.dividend);
  quote.Earnings(record.earnings);
  LetText(quote.Exchange, record.exchange);
  quote.High(record.high);
  quote.Last_Price(record.last_price);
  quote.Last_Size(record.last_size);
  quote.Low(record.low);
  LetText(quote.Market_Cap, record.market_cap);
  quote.Open_Interest(record.open_interest);
  quote.OpenTicker(record.open);
  quote.PE(record.price_to_earnings);
  quote.Prev_Close(record.previous_close);
  quote.Prev_Volume(record.previous_volume.low);
  LetText(quote.Symbol, record.symbol);
  quote.Trades(record.trades);  // the tick and the UPC field are read and dropped
  quote.Volume(record.volume.low);
  quote.Last_Volume(last_volume);
  quote.Week_52_High(record.week_52_high);
  quote.Week_52_Low(record.week_52_low);
  quote.Yield(record.yield);
  RaiseQTDatas();
}

// The yield lets more records arrive while the client is at work; they find the event being raised, and wait
// in the buffer for the client's next take.
void cQTStreaming::Internals::RaiseQTDatas() {
  if (RaisingQuotes) return;
  RaisingQuotes = true;
  try {
    stream.QTDatas.Raise();
    host::Host::Current().loop().Yield();
  } catch (...) {  // the client's failures are its own
  }
  RaisingQuotes = false;
}

std::shared_ptr<cQTDatas> cQTStreaming::GetQTData() { return GetCurrentData(); }

std::shared_ptr<cQTDatas> cQTStreaming::GetCurrentData() {
  if (!StartStop_) return nullptr;
  try {
    if (copy_cQTDatas_ == nullptr) throw Errors::ObjectNotSet();
    internals_->QuoteBuffer.MoveTo(*copy_cQTDatas_);
  } catch (...) {  // what was not moved waits for the next take
  }
  return copy_cQTDatas_;
}

void cQTStreaming::FreeQTDataBuffer() {
  try {
    if (QTConteiner_) QTConteiner_->Clear();
  } catch (...) {  // FreeQTDataBuffer raises nothing
  }
}

void cQTStreaming::RaiseEventTimerProc() {
  host::Host::Current().loop().StopTimer(internals_->TimerID);
  // The stop has no result to keep, and a timer that was stopped has no token any more.
  internals_->TimerID = 0;
  if (internals_->StatusCode != "0") return OnStatusText.Raise("Off. " + internals_->StatusDesc);

  OnStatusText.Raise("Connected");
  if (Owner_ == nullptr) throw Errors::ObjectNotSet();
  if (Owner_->StatusRunWorkQT() == Status_ENUMSOURCES_L1) internals_->SendEnumSources("L1");
}

// A timer may fall due when its stream is gone.
void mGlobal::StreamTimerProc() {
  if (const auto stream = StreamingObject()) stream->RaiseEventTimerProc();
}

}  // namespace mirelo
