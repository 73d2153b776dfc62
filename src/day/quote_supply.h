#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "automation/event.h"
#include "core/cMirelo.h"
#include "day/quote_rows.h"
#include "day/snapshot_feed.h"
#include "day/stream_feed.h"
#include "host/message_loop.h"

namespace mirelo {
class cQTData;
}

namespace mirelo::wire {
class SideHost;
}

namespace mirelo::day {

// Brings quotes of tickers that change while it runs, without a workbook or a dialog: streamed or asked for,
// at the pace, from the source and with the credentials of the settings, with all columns that there are. A
// change of the tickers is a new subscription, since the stream class knows no other way.
class QuoteSupply {
 public:
  // `machine` must outlive this; what leaves handlers of its loop is to be given to Fail.
  explicit QuoteSupply(wire::SideHost& machine);
  ~QuoteSupply();
  QuoteSupply(const QuoteSupply&) = delete;
  QuoteSupply& operator=(const QuoteSupply&) = delete;

  // From now on quotes of these tickers, which can be asked for; of none: connections are ended. Nothing
  // begins anew where the tickers and the settings are as before.
  void Bring(std::vector<std::string> tickers);
  // Begins anew if the settings have changed, or what was begun has failed for good. To be called now and
  // then.
  void Look() { Bring(tickers_); }

  // Notes an error that keeps quotes from coming, or has lost some.
  void Fail(const std::string& description);

  // Whether all goes well, as far as is known, and a sentence for a person about it.
  bool IsInOrder() const { return in_order_; }
  const std::string& State() const { return state_; }
  // Whether quotes are streamed, not asked for.
  bool Streams() const { return stream_.has_value(); }

  Event<const cQTData&> Streamed;
  // A ticker and its values in the order of QuoteBoard::AllColumns.
  Event<const std::string&, const QuoteRow&> Asked;
  // A ticker that QuoteTracker has no quote of.
  Event<const std::string&> Unknown;
  Event<> StateChanged;

 private:
  // The settings that are kept to until they change.
  struct Plan {
    std::int32_t seconds = 0;
    bool once = false;
    std::string source;
    std::vector<std::string> places;  // where QuoteTracker is
    bool operator==(const Plan&) const = default;
  };

  static Plan ReadPlan();
  void Begin();
  void Stream();
  void StartAsking();
  void Ask();
  void HandOn(const QuoteRows& rows);
  void End();
  bool HasFailed();
  void TakeStreamed(const cQTData& quote);
  void Say(bool in_order, const std::string& state);

  wire::SideHost& machine_;
  std::optional<cMirelo> facade_;
  Plan plan_;
  std::vector<std::string> tickers_;
  std::optional<StreamFeed> stream_;
  std::optional<SnapshotFeed> snapshot_;
  host::MessageLoop::Token asking_ = 0;
  bool fetching_ = false;                         // a request for quotes is under way, which serves the loop
  std::optional<std::vector<std::string>> next_;  // tickers that were given meanwhile
  bool in_order_ = false;
  std::string state_;
};

}  // namespace mirelo::day
