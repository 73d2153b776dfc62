#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "core/message_box.h"
#include "diagnostics/routine.h"
#include "host/clock.h"
#include "host/desktop.h"
#include "host/host.h"
#include "snapshot/column_vocabulary.h"
#include "snapshot/messages.h"
#include "snapshot/quote_line.h"
#include "snapshot/tickers_per_request.h"

namespace mirelo {

namespace {

// Second index of masPrevVolume.
constexpr std::int32_t kPreviousVolume = 1;
constexpr std::int32_t kPreviousDate = 2;

void ShowFailure(const char* text) { ShowMessage(text, host::Desktop::kCritical); }

double ToNumber(std::string_view text) {
  if (const std::optional<double> number = ParseNumber(text)) return *number;
  throw Errors::TypeMismatch();
}

// Whether the value is this text, without regard to case.
bool EqualsText(const Variant& value, std::string_view text) {
  const std::string* const held = value.IfText();
  return held != nullptr ? EqualText(*held, text) : EqualText(value.ToText(), text);
}

Bounds BoundsOf(const VariantArray& array) { return {array.LBound(), array.UBound()}; }
Bounds BoundsOf(const Array<std::int16_t>& array) { return {array.LBound(), array.UBound()}; }

}  // namespace

// One call of GetLastQuote: the routine's variables, and its statements in the order in which they run. The
// variables live as long as the call, since a statement that is skipped leaves its variable as it was.
struct cMirelo::LastQuoteRun {
  // All that the texts of a moment depend on.
  struct Stamp {
    std::int64_t second = 0;
    std::int32_t displacement_hour = 0;
    std::int32_t displacement_minute = 0;
    std::string format;
    bool operator==(const Stamp&) const = default;
  };

  LastQuoteRun(Frame& frame, cMirelo& facade, const Variant& tickers)
      : frame(frame), facade(facade), tickers(tickers) {}

  Frame& frame;
  cMirelo& facade;
  const Variant& tickers;

  std::int16_t port = 0;
  std::string address;
  Bounds bounds{0, 0};             // of the tickers
  Variant table = VariantArray();  // the result, until it is handed over
  std::string batch;               // the tickers of the next request
  std::int32_t batch_count = 0;
  std::int32_t row = 1;                 // of the table, for the next line of a reply
  Variant reply;                        // a text, or empty
  std::vector<std::string_view> lines;  // of the reply
  QuoteLine line;                       // one of them
  std::optional<Stamp> stamped;         // what `date` and `time` were made of
  std::string date;                     // of the batch
  std::string time;
  std::int16_t position = 0;  // code of the column that is filled

  void Run(Variant& result);
  void AppendTicker(std::int32_t index);
  bool ProcessBatch();
  void Fetch();
  void StampBatch();
  void TrackVolume();
  void FillColumns();

  std::string_view ReplyText() const;
  std::string_view StatusLine() const;
  const Variant& Previous(std::int32_t index) const;
  void StorePrevious(std::int32_t index, Column column);
  std::string_view CellText() const;
};

Variant cMirelo::GetLastQuote(const Variant& Tickers) {
  // The macros test for the empty text, so that is what an aborted call gives as well, in place of an empty
  // variant.
  const Variant no_quotes("");
  return Function("Mirelo.cMirelo.GetLastQuote", no_quotes, no_quotes,
                  [&](Frame& frame, Variant& result) { LastQuoteRun(frame, *this, Tickers).Run(result); });
}

void cMirelo::LastQuoteRun::Run(Variant& result) {
  STEP(facade.GetPortWebAddress(port, address));
  STEP(facade.GetDisplacementHourMinute(facade.displacement_hour_, facade.displacement_minute_));
  if (address.empty() || port == 0) {
    STEP(ShowFailure(kAdjustPort));
    return;
  }

  STEP(bounds = BoundsOf(tickers.AsArray()));
  STEP(const Bounds columns = BoundsOf(facade.mas_position_);
       table = VariantArray(1, bounds.last - bounds.first + 1, columns.first, columns.last));
  for (const std::int32_t i : bounds) {
    if (batch_count < kTickersPerRequest - 1) {
      STEP(AppendTicker(i));
      if (i != bounds.last) STEP(batch += ',');
      ++batch_count;
    } else {
      STEP(AppendTicker(i));
      if (!ProcessBatch()) return;
      batch_count = 0;
      batch.clear();
    }
  }
  // The table is handed over only behind a batch that is left over here: tickers that fill their last request
  // give no result.
  if (!batch.empty()) {
    if (!ProcessBatch()) return;
    STEP(result = std::move(table));
  }
  frame.pop();
}

void cMirelo::LastQuoteRun::AppendTicker(std::int32_t index) {
  const Variant& ticker = tickers.AsArray()(index);
  if (const std::string* const text = ticker.IfText()) {
    batch += *text;
  } else {
    batch += ticker.ToText();
  }
}

// False when the user was told of a failure, which leaves the routine at once.
bool cMirelo::LastQuoteRun::ProcessBatch() {
  STEP(Fetch());
  if (ReplyText().empty()) {
    STEP(ShowFailure(kRetrievalError));
    return false;
  }
  STEP(Split(ReplyText(), "\r\n", lines));
  if (frame.test([&] { return !EqualText(StatusLine(), "OK"); })) {
    STEP(ShowFailure(kRetrievalError));
    return false;
  }
  STEP(StampBatch());
  for (std::size_t l = 1; l < lines.size(); ++l) {
    STEP(line.Assign(lines[l]));
    TrackVolume();
    FillColumns();
    ++row;
  }
  return true;
}

// The views into the old reply go with it.
void cMirelo::LastQuoteRun::Fetch() {
  Variant fetched = facade.DownloadURL("/req?GetLastQuote(" + batch + ")", address, port, "GET", "");
  lines.clear();
  line.Clear();
  reply = std::move(fetched);
}

std::string_view cMirelo::LastQuoteRun::ReplyText() const {
  const std::string* const text = reply.IfText();
  return text == nullptr ? std::string_view() : *text;
}

// Batches follow each other within a second, and a moment costs more to write than a batch to split.
void cMirelo::LastQuoteRun::StampBatch() {
  Stamp now{host::Host::Current().clock().Second(), facade.displacement_hour_, facade.displacement_minute_,
            facade.format_user_date_};
  if (now == stamped) return;
  facade.GetDisplacedDateTime(date, time);
  stamped = std::move(now);
}

// A split whose failure was ignored may have left no lines.
std::string_view cMirelo::LastQuoteRun::StatusLine() const {
  if (lines.empty()) throw Errors::SubscriptOutOfRange();
  return lines.front();
}

// LASTVOLUME becomes the volume since the call before: nothing on the first call of a day.
void cMirelo::LastQuoteRun::TrackVolume() {
  double previous = 0;
  if (facade.prev_volume_.IsEmpty()) {
    STEP(line.StoreLastVolume(0));
  } else if (frame.test([&] { return (previous = Previous(kPreviousVolume).ToDouble()) == 0; })) {
    STEP(line.StoreLastVolume(0));
    STEP(StorePrevious(kPreviousVolume, Column::Volume));
    STEP(StorePrevious(kPreviousDate, Column::Date));
  } else if (frame.test([&] { return EqualsText(Previous(kPreviousDate), line(Column::Date)); })) {
    STEP(line.StoreLastVolume(ToNumber(line(Column::Volume)) - previous));
    STEP(StorePrevious(kPreviousVolume, Column::Volume));
  } else {
    STEP(line.StoreLastVolume(0));
    STEP(StorePrevious(kPreviousVolume, Column::Volume));
    STEP(StorePrevious(kPreviousDate, Column::Date));
  }
}

const Variant& cMirelo::LastQuoteRun::Previous(std::int32_t index) const {
  return std::as_const(facade.prev_volume_).AsArray()(row, index);
}

void cMirelo::LastQuoteRun::StorePrevious(std::int32_t index, Column column) {
  facade.prev_volume_.AsArray()(row, index) = line(column);
}

void cMirelo::LastQuoteRun::FillColumns() {
  VariantArray& cells = table.AsArray();
  for (const std::int32_t c : frame.loop([&] { return BoundsOf(facade.mas_position_); })) {
    STEP(position = facade.mas_position_(c));
    if (position >= 0) STEP(cells(row, c) = CellText());
  }
}

// Date and time are those of the retrieval, not the reply's.
std::string_view cMirelo::LastQuoteRun::CellText() const {
  if (position == CodeOf(Column::Date)) return date;
  if (position == CodeOf(Column::Time)) return time;
  return line(position);
}

}  // namespace mirelo
