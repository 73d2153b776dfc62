#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "day/quote_board.h"
#include "day/quote_supply.h"
#include "day/quote_value.h"
#include "day/worked_time.h"
#include "host/message_loop.h"

namespace mirelo::wire {
class SideHost;
}

namespace mirelo::day {

// What somebody wants to know of a ticker. Tickers and columns are named in letters of either case.
struct QuoteQuestion {
  enum class About : std::uint8_t {
    Value,   // the value of a column
    Status,  // a sentence: why there is no value, or how quotes come
    Age,     // how many whole seconds ago the last quote came
  };

  About about = About::Value;
  std::string ticker;
  std::optional<std::string> column;  // of Value and Status; none where several are named

  // The same question by its one spelling: capital letters, no blanks around them.
  QuoteQuestion InOneSpelling() const;
  auto operator<=>(const QuoteQuestion&) const = default;  // NOLINT(modernize-use-nullptr)
};

// Answers questions about quotes for as long as somebody asks, such as cells of a spreadsheet, and tells when
// answers change. Quotes of a ticker are subscribed while it is asked about: tickers that come together are
// subscribed together, and one that nobody asks about any more is left out a little later.
class QuoteWatch {
 public:
  using Clock = std::chrono::steady_clock;
  using Pause = std::chrono::milliseconds;
  // Tickers gather until none has come for so long, and at most for so long.
  static constexpr Pause kGather{200};
  static constexpr Pause kGatherAtMost{2000};
  // One that nobody asks about is kept for so long: who calculates anew asks again at once.
  static constexpr Pause kLinger{2000};
  // Answers are told together, so often at most, and never for more than a third of the time. At one time so
  // much of the processor's time is spent on it, and what the listener who is being told then still takes;
  // the others are told the next times, in their turn.
  static constexpr Pause kTellPause{100};
  static constexpr Pause kTellAtMost{15};
  // How often changes of the settings are looked for.
  static constexpr Pause kLook{5000};

  // `machine` must outlive the watch, which takes what fails in the handlers of its loop. `now` is the clock
  // of ages, `worked` that of how long telling takes.
  explicit QuoteWatch(wire::SideHost& machine, std::function<Clock::time_point()> now = Clock::now,
                      std::function<std::chrono::microseconds()> worked = TimeWorked);
  ~QuoteWatch();
  QuoteWatch(const QuoteWatch&) = delete;
  QuoteWatch& operator=(const QuoteWatch&) = delete;

  // A question that is being asked, until this is destroyed. The watch must outlive it.
  class Watched {
   public:
    virtual ~Watched() = default;
    // Nothing while there is none.
    virtual const QuoteValue& Answer() const = 0;
  };
  // `changed` is called when the answer has changed. It may ask, and end what was asked.
  std::unique_ptr<Watched> Ask(const QuoteQuestion& question, std::function<void()> changed);

  // Ends connections and timers for good: nothing comes any more. Questions may still be asked and ended.
  void HangUp();

  // How many questions are asked now.
  std::size_t Count() const { return count_; }

 private:
  struct Asked;
  class Handle;
  struct Ticker;
  using Tickers = std::map<std::string, std::unique_ptr<Ticker>>;

  void Detach(const std::shared_ptr<Asked>& asked);
  QuoteValue AnswerTo(const Asked& asked) const;
  std::string StatusOf(const Asked& asked) const;
  QuoteValue AgeOf(const Ticker& ticker) const;
  void TakeStreamed(const cQTData& quote);
  void TakeAsked(const std::string& ticker, const QuoteRow& row);
  void NoteUnknown(const std::string& ticker);
  void MarkAll();
  void Mark(Ticker& ticker);
  Ticker* Find(const std::string& ticker);
  void TellLater();
  void Tell();
  void NoteChanges();
  void TellOne();
  void GatherLater();
  void LeaveOutLater();
  void Bring();
  void LookLater();
  void Tick();

  wire::SideHost& machine_;
  host::MessageLoop& loop_;
  const std::function<Clock::time_point()> now_;
  const std::function<std::chrono::microseconds()> worked_;
  Tickers tickers_;
  std::set<Asked*> ages_;
  std::size_t count_ = 0;
  std::set<Ticker*> news_;
  std::deque<std::shared_ptr<Asked>> untold_;  // of those whose answers have changed
  Pause tell_pause_ = kTellPause;
  bool hung_up_ = false;
  std::optional<Clock::time_point> gathering_since_;
  host::MessageLoop::Token telling_ = 0;
  host::MessageLoop::Token gathering_ = 0;
  host::MessageLoop::Token leaving_out_ = 0;
  host::MessageLoop::Token looking_ = 0;
  host::MessageLoop::Token ticking_ = 0;
  QuoteSupply supply_;  // last: what it still brings at its end finds the tickers
};

}  // namespace mirelo::day
