#include "day/stream_feed.h"

#include <algorithm>
#include <utility>

#include "automation/ansi.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "core/cQTDatas.h"
#include "core/status_run_query.h"
#include "day/meanwhile.h"
#include "day/quote_board.h"
#include "day/quote_trail.h"
#include "day/unknown_ticker.h"
#include "snapshot/column_vocabulary.h"
#include "streaming/cQTStreaming.h"

namespace mirelo::day {

namespace {

// The text between a tag and its closing tag; empty when one is missing.
std::string TextOf(std::string_view reply, std::string_view tag, std::string_view closing) {
  const auto begin = reply.find(tag);
  const auto end = reply.find(closing);
  if (begin == std::string_view::npos || end == std::string_view::npos || end < begin) return {};
  return std::string(reply.substr(begin + tag.size(), end - begin - tag.size()));
}

// What the decoder raises for bytes that it cannot follow. The stream goes on after them.
bool IsLossOfQuotes(const RuntimeError& error) {
  return error.Number() == cQTStreaming::kEndlessWalk || error.Number() == Errors::Overflow().Number() ||
         error.Number() == Errors::SubscriptOutOfRange().Number();
}

// Whether a quote has a last price of 0 and nothing else: that is how a server speaks of a ticker that it
// does not know.
bool IsOfNothing(const cQTData& quote) {
  if (!quote.Carries(QuoteField::Last_Price) || quote.Last_Price() != 0) return false;
  return std::ranges::all_of(kColumnVocabulary, [&](const ColumnRow& row) {
    const StreamedField& streamed = row.streamed;
    if (streamed.number != nullptr) return (quote.*streamed.number)() == 0;
    return streamed.quantity == nullptr || (quote.*streamed.quantity)() == 0;
  });
}

constexpr StreamFeed::Pause kSweepPause{2};

std::string InSeconds(StreamFeed::Pause pause) {
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(pause).count();
  return std::to_string(seconds) + (seconds == 1 ? " second" : " seconds");
}

}  // namespace

StreamFeed::StreamFeed(cMirelo& facade, host::MessageLoop& loop, wire::ObservedSockets& sockets,
                       std::vector<std::string> tickers, std::string streamer_file, Pause first_pause)
    : facade_(facade),
      loop_(loop),
      sockets_(sockets),
      tickers_(std::move(tickers)),
      streamer_file_(std::move(streamer_file)),
      first_pause_(first_pause),
      pause_(first_pause) {
  for (const std::string& ticker : tickers_) asked_.insert(UCase(ticker));
  received_ = sockets_.Received.Subscribe([this](std::span<const std::uint8_t>) { received_any_ = true; });
  delivered_ = sockets_.Delivered.Subscribe([this](std::span<const std::uint8_t> message) {
    heard_ = true;
    NoteLoginResult(message);
  });
  rested_ = sockets_.Rested.Subscribe([this] { Rest(); });
  dropped_ = sockets_.Dropped.Subscribe([this](const std::string& reason) { ReconnectLater(reason); });
  told_ = sockets_.Told.Subscribe([this](const std::string& line) { Status.Raise(line); });
}

StreamFeed::~StreamFeed() {
  Stop();
  sockets_.Received.Unsubscribe(received_);
  sockets_.Delivered.Unsubscribe(delivered_);
  sockets_.Rested.Unsubscribe(rested_);
  sockets_.Dropped.Unsubscribe(dropped_);
  sockets_.Told.Unsubscribe(told_);
}

void StreamFeed::Start() {
  running_ = true;
  Connect();
}

// Timers last: what is sent may fail in a message box, which serves the loop, and quotes are handed on.
void StreamFeed::Stop() {
  running_ = false;
  if (stream_) stream_->stop_sub();
  HangUp();
  for (auto* const timer : {&reconnect_, &sweep_, &listening_}) loop_.StopTimer(std::exchange(*timer, 0));
}

void StreamFeed::RunUntil(const std::function<bool()>& done) {
  const auto ended = [&] { return failure_.HasCome() || done(); };
  for (bool going_on = true; going_on;) {
    try {
      loop_.RunUntil(ended);
      going_on = false;
    } catch (const RuntimeError& error) {
      if (!IsLossOfQuotes(error)) throw;
      TellLoss(error);
    }
  }
  failure_.Raise();
}

void StreamFeed::TakeFailure(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const RuntimeError& error) {
    if (IsLossOfQuotes(error)) return TellLoss(error);
    failure_.Keep(failure);
  } catch (...) {
    failure_.Keep(failure);
  }
}

void StreamFeed::TellLoss(const RuntimeError& error) {
  Status.Raise("Quotes were lost (" + error.Description() + "); going on");
}

void StreamFeed::Connect() {
  HangUp();
  if (!running_) return;
  ListenForSilence();
  facade_.StatusRunWorkQT(StatusRunQueryQT::Status_LEVEL_I_FULL_QUOTE);
  stream_ = NewStream();
  login_pending_ = streaming_pending_ = true;
  stream_->connect();
}

void StreamFeed::HangUp() {
  streaming_ = false;
  if (!stream_) return;
  TakeQuotes(stream_);
  Rest();
  stream_->DisConnect();
  stream_->Owner(nullptr);
  stream_.reset();
}

// Of what a stream raises while this feed lives. A chunk that is being read holds its stream, and a nested
// turn of the loop may end the feed meanwhile.
template <class Act>
auto StreamFeed::WhileAlive(Act act) const {
  return [life = std::weak_ptr(life_), act = std::move(act)](const auto&... arguments) {
    if (!life.expired()) act(arguments...);
  };
}

std::shared_ptr<cQTStreaming> StreamFeed::NewStream() {
  auto stream = std::make_shared<cQTStreaming>();
  stream->Owner(&facade_);
  stream->arrTickers(Variant(VariantArray::OfTexts(tickers_)));
  stream->st_StreamerFile(streamer_file_);
  stream->DovantaFormatUserDate(facade_.DovantaFormatUserDate());
  stream->StartStop(true);
  stream->StopEndlessWalks(true);
  stream->CountZeros(true);
  stream->OnStatusText.Subscribe(WhileAlive([this](const std::string& text) { Status.Raise(text); }));
  stream->PerformanceFollowingProcess.Subscribe(WhileAlive([this](std::int16_t) {
    pause_ = first_pause_;
    streaming_ = true;
    if (std::exchange(streaming_pending_, false)) Status.Raise("Streaming");
  }));
  if (trail_ != nullptr) {
    stream->Unchanged.Subscribe(WhileAlive([this](std::string_view symbol) {
      Note(AnsiToText(symbol), "its record changes nothing that counts, so it is no quote");
    }));
    stream->Lost.Subscribe(
        WhileAlive([this](std::span<const std::uint8_t> records) { trail_->NoteLost(records); }));
  }
  stream->QTDatas.Subscribe(WhileAlive([this, weak = std::weak_ptr(stream)] {
    TakeQuotes(weak.lock());
    if (stream_) SweepLater();
  }));
  return stream;
}

// One take at a time: the quotes that are being handed on lie in the collection that the next take would add
// to and free. The stream is held by a pointer of this call's own, since a handler of a quote may hang up.
void StreamFeed::TakeQuotes(
    std::shared_ptr<cQTStreaming> stream) {  // NOLINT(performance-unnecessary-value-param)
  if (!stream || taking_) return;
  const Meanwhile taking(taking_);
  TakeQuotesOf(*stream);
  if (stream == stream_) return;
  // A handler of a quote has hung up. What had come until then still lies in the stream, which gives nothing
  // when it is stopped.
  stream->StartStop(true);
  TakeQuotesOf(*stream);
  stream->StartStop(false);
}

void StreamFeed::TakeQuotesOf(cQTStreaming& stream) {
  const auto quotes = stream.GetQTData();
  if (quotes && quotes->Count() > 0) {
    took_ = handed_on_ = true;
    silence_ = kFirstSilence;
    for (const auto& quote : *quotes) HandOn(*quote);
  }
  stream.FreeQTDataBuffer();
}

// The stream drops in silence what its client raises. A quote that failed would come again with the next
// take.
void StreamFeed::HandOn(const cQTData& quote) noexcept {
  try {
    if (trail_ != nullptr) NoteCame(quote);
    if (!IsAskedFor(quote.Symbol())) return TellUnasked();
    if (IsOfNothing(quote)) return TellOfNothing(quote.Symbol());
    Quote.Raise(quote);
  } catch (...) {
    TellFailure(quote.Symbol());
  }
}

// Most symbols come as they were asked for, in capital letters.
bool StreamFeed::IsAskedFor(const std::string& symbol) const {
  return asked_.contains(symbol) || asked_.contains(UCase(symbol));
}

void StreamFeed::TellUnasked() {
  if (std::exchange(told_unasked_, true)) return;
  Status.Raise(
      "QuoteTracker sends quotes that were not asked for, of other tickers or of none; they are left out");
}

// Tickers are those that were asked for, so these texts are no more than they.
void StreamFeed::TellOfNothing(const std::string& ticker) {
  Note(ticker, "all its values are 0, so it is no quote and left out");
  Unknown.Raise(ticker);
  if (!told_of_nothing_.insert(UCase(ticker)).second) return;
  Status.Raise(std::string(kKnowsNoQuoteOf) + ticker);
}

// Of the error that is being handled.
void StreamFeed::TellFailure(const std::string& ticker) noexcept {
  try {
    const std::string reason = CurrentError().Description();
    Note(ticker, "the quote could not be used: " + reason);
    if (told_failures_.size() == kMostToldFailures || !told_failures_.insert(reason).second) return;
    Status.Raise("A quote of " + ticker + " could not be used (" + reason +
                 "); going on, and not telling of this again");
  } catch (...) {  // nobody is left to tell
  }
}

void StreamFeed::NoteCame(const cQTData& quote) const {
  if (!trail_->Follows(quote.Symbol())) return;
  Note(quote.Symbol(),
       "quote " + quote.NameID() + ":" + ValuesText(QuoteBoard::AllColumns(), QuoteFields(quote)));
  if (!IsAskedFor(quote.Symbol()))
    Note(quote.Symbol(), "nobody has asked for this ticker; the quote is left out");
}

void StreamFeed::Note(const std::string& ticker, const std::string& what) const {
  if (trail_ != nullptr) trail_->Note(ticker, what);
}

void StreamFeed::Rest() {
  if (std::exchange(handed_on_, false)) Rested.Raise();
}

// Quotes that arrive while the stream tells of others wait in its buffer without an event of their own. So
// the buffer is looked into once more, until nothing was taken between two looks.
void StreamFeed::SweepLater() {
  if (sweep_ != 0 || !running_) return;
  sweep_ = loop_.StartTimer(kSweepPause, [this] {
    sweep_ = 0;
    TakeQuotes(stream_);
    Rest();
    if (!std::exchange(took_, false)) return;
    SweepLater();
  });
}

void StreamFeed::ListenForSilence() {
  loop_.StopTimer(listening_);
  heard_ = received_any_ = false;
  listening_ = loop_.StartTimer(silence_, [this] {
    if (heard_) return ListenForSilence();
    const std::string silence = InSeconds(silence_);
    silence_ = std::min(2 * silence_, kLongestSilence);
    ReconnectLater(received_any_ ? "QuoteTracker has sent nothing that can be understood for " + silence
                                 : "QuoteTracker has said nothing for " + silence);
  });
}

void StreamFeed::NoteLoginResult(std::span<const std::uint8_t> message) {
  if (!login_pending_ || message.size() < 3 || message[0] != 'L' || message[1] != 'O') return;
  login_pending_ = false;
  const std::string reply = AnsiToText(message);
  const std::string text = UCase(reply);
  if (TextOf(text, "<STATUSCODE>", "</STATUSCODE>") == "0") {
    Status.Raise("Logged in");
  } else {
    const std::string refusal =
        "QuoteTracker refused the login: " + TextOf(text, "<STATUSDESC>", "</STATUSDESC>") +
        ". Check the credentials with: mirelo credentials show-name";
    Status.Raise(refusal);
    LoginRefused.Raise(refusal);
  }
}

void StreamFeed::Reconnect() {
  ++reconnects_;
  failure_.Guard([this] { Connect(); });
}

void StreamFeed::ReconnectLater(const std::string& reason) {
  streaming_ = false;
  if (!running_) return;
  const Pause pause = std::exchange(pause_, std::min(2 * pause_, kLongestPause));
  for (const auto timer : {reconnect_, listening_}) loop_.StopTimer(timer);
  reconnect_ = loop_.StartTimer(pause, [this] { Reconnect(); });
  Status.Raise(reason + "; reconnecting in " + InSeconds(pause));
}

}  // namespace mirelo::day
