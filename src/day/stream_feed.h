#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "automation/event.h"
#include "core/cQTData.h"
#include "host/message_loop.h"
#include "wire/kept_failure.h"
#include "wire/observed_sockets.h"

namespace mirelo {
class RuntimeError;
class cMirelo;
class cQTStreaming;
}  // namespace mirelo

namespace mirelo::day {

class QuoteTrail;

// The macros' part of the stream: it subscribes tickers and hands over their quotes. It reconnects, after
// pauses that grow, when the peer drops; and when no message of it comes for long, after silences that
// grow too, since a quiet market sounds the same as a peer that hangs.
class StreamFeed {
 public:
  using Pause = std::chrono::milliseconds;
  static constexpr Pause kFirstPause{1000};
  static constexpr Pause kLongestPause{60000};
  static constexpr Pause kFirstSilence{60000};
  static constexpr Pause kLongestSilence{3600000};
  static constexpr std::size_t kMostToldFailures = 20;

  // `facade`, `loop` and `sockets` must outlive the feed; `sockets` is the installed host's library.
  StreamFeed(cMirelo& facade, host::MessageLoop& loop, wire::ObservedSockets& sockets,
             std::vector<std::string> tickers, std::string streamer_file, Pause first_pause = kFirstPause);
  ~StreamFeed();

  // Notes there what becomes of quotes, from the next connection on. It must outlive the feed.
  void Follow(const QuoteTrail& trail) { trail_ = &trail; }

  // Connects to QuoteTracker. Raises the error that a missing credential is.
  void Start();
  // Ends the subscriptions and the connection, and does not reconnect.
  void Stop();

  // Whether QuoteTracker has taken the subscription and the connection stands, as far as is known.
  bool IsStreaming() const { return streaming_; }

  // How often it has reconnected.
  int Reconnects() const { return reconnects_; }

  // Runs the loop until `done`. What the stream cannot follow is told as a loss, and it goes on after it;
  // other errors leave.
  void RunUntil(const std::function<bool()>& done);

  // In place of RunUntil where somebody else's loop runs: takes what left a handler of it, and tells of a
  // loss or keeps what failed.
  void TakeFailure(const std::exception_ptr& failure);
  // A failure was kept (wire::KeptFailure::Came).
  Event<>& Failed() { return failure_.Came; }
  // Raises it.
  void RaiseFailure() { failure_.Raise(); }

  // A line for a person.
  Event<const std::string&> Status;
  // The same line as by Status where QuoteTracker has refused the credentials.
  Event<const std::string&> LoginRefused;
  // Each quote once, in the order in which they came; those of other tickers, and of none, are left out,
  // which is told as a Status once. A handler that fails costs this quote alone: the failure is told as a
  // Status, once for each of its texts and for so many texts at most, and the next quotes follow.
  Event<const cQTData&> Quote;
  // A ticker that QuoteTracker sends nothing but zeros of, each time that it does.
  Event<const std::string&> Unknown;
  // Quotes were handed on, and all that has come until now is among them.
  Event<> Rested;

 private:
  void Connect();
  void HangUp();
  void TellLoss(const RuntimeError& error);
  void TakeQuotes(std::shared_ptr<cQTStreaming> stream);
  void TakeQuotesOf(cQTStreaming& stream);
  void HandOn(const cQTData& quote) noexcept;
  bool IsAskedFor(const std::string& symbol) const;
  void TellUnasked();
  void TellOfNothing(const std::string& ticker);
  void TellFailure(const std::string& ticker) noexcept;
  void NoteCame(const cQTData& quote) const;
  void Note(const std::string& ticker, const std::string& what) const;
  void Rest();
  void SweepLater();
  void ListenForSilence();
  void NoteLoginResult(std::span<const std::uint8_t> message);
  void Reconnect();
  void ReconnectLater(const std::string& reason);
  template <class Act>
  auto WhileAlive(Act act) const;
  std::shared_ptr<cQTStreaming> NewStream();

  cMirelo& facade_;
  host::MessageLoop& loop_;
  wire::ObservedSockets& sockets_;
  std::vector<std::string> tickers_;
  std::unordered_set<std::string> asked_;  // the same in capital letters
  std::string streamer_file_;
  const QuoteTrail* trail_ = nullptr;
  Pause first_pause_;
  Pause pause_;
  std::shared_ptr<cQTStreaming> stream_;
  Pause silence_ = kFirstSilence;
  int reconnects_ = 0;
  bool running_ = false;            // between Start and Stop
  bool heard_ = false;              // a message, since silence was last listened for
  bool received_any_ = false;       // bytes, since then
  bool login_pending_ = false;      // its result is told once a connection
  bool streaming_pending_ = false;  // the same of the acceptance of the streamer
  bool streaming_ = false;
  bool taking_ = false;     // quotes are being handed on
  bool took_ = false;       // quotes, since the last sweep
  bool handed_on_ = false;  // quotes, since it last rested
  bool told_unasked_ = false;
  std::set<std::string> told_failures_;
  std::set<std::string> told_of_nothing_;  // tickers of which it was told that there is no quote
  wire::KeptFailure failure_;              // of reconnecting
  const std::shared_ptr<bool> life_ = std::make_shared<bool>();  // ends with this
  host::MessageLoop::Token reconnect_ = 0;
  host::MessageLoop::Token sweep_ = 0;
  host::MessageLoop::Token listening_ = 0;
  Event<std::span<const std::uint8_t>>::Cookie received_ = 0;
  Event<std::span<const std::uint8_t>>::Cookie delivered_ = 0;
  Event<>::Cookie rested_ = 0;
  Event<const std::string&>::Cookie dropped_ = 0;
  Event<const std::string&>::Cookie told_ = 0;
};

}  // namespace mirelo::day
