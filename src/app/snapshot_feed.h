#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/quote_rows.h"

namespace mirelo {
class cMirelo;
}

namespace mirelo::app {

// The macros' part of the snapshot route: it gives the facade its column order and the volume table, and asks
// it for quotes, once for each Fetch.
class SnapshotFeed {
 public:
  // `facade` must outlive the feed. `tickers` is not empty.
  SnapshotFeed(cMirelo& facade, std::vector<std::string> tickers);

  const std::vector<std::string>& Tickers() const { return tickers_; }
  // The visible columns, in table order, as the settings name them.
  const std::vector<std::string>& Columns() const { return columns_; }

  // A row per ticker, a text per column of Columns(); a text is empty when the column is unknown or
  // QuoteTracker sent no line for the ticker. Nothing when QuoteTracker could not be asked or did not answer
  // as it should; the person has been told by then.
  std::optional<QuoteRows> Fetch();

 private:
  cMirelo& facade_;
  std::vector<std::string> tickers_;
  std::vector<std::string> asked_;
  std::vector<std::string> columns_;
};

}  // namespace mirelo::app
