#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "automation/variant.h"
#include "snapshot/quote_replies.h"
#include "support/facade_test.h"

namespace mirelo::testing {

// A facade that asks QuoteReplies for last quotes.
class LastQuoteTest : public FacadeTest {
 protected:
  LastQuoteTest() {
    internet.answer = [this](const AnsweringInternet::Request& request) {
      return market.Reply(request.resource);
    };
  }

  // Makes these the visible columns.
  void Show(const char* columns) {
    Save("ListRight", columns);
    facade->LoadMasPosition();
  }
  // An array of tickers "T1" to "Tn", from index `lower` on.
  static Variant Tickers(std::int32_t count, std::int32_t lower = 0) {
    VariantArray tickers(lower, lower + count - 1);
    for (std::int32_t i = 0; i < count; ++i) tickers(lower + i) = "T" + std::to_string(i + 1);
    return tickers;
  }
  static Variant TickersOf(const std::vector<std::string>& tickers) { return VariantArray::OfTexts(tickers); }

  // Gives the tracking of volumes a table for so many tickers, with nothing in it.
  void TrackVolumes(std::int32_t count) { facade->masPrevVolume(VariantArray(1, count, 1, 2)); }
  std::string Tracked(std::int32_t row, std::int32_t index) const {
    return facade->masPrevVolume().AsArray()(row, index).ToText();
  }

  QuoteReplies market;
};

// Row `row` of a result, a text for each column, "<empty>" for an empty cell.
inline std::vector<std::string> RowOf(const Variant& result, std::int32_t row) {
  std::vector<std::string> cells;
  const VariantArray& table = result.AsArray();
  for (std::int32_t c = table.LBound(2); c <= table.UBound(2); ++c) {
    cells.push_back(table(row, c).IsEmpty() ? "<empty>" : table(row, c).ToText());
  }
  return cells;
}

// The empty text is GetLastQuote's only other result.
inline bool IsEmptyText(const Variant& result) {
  return result.IfText() != nullptr && result.IfText()->empty();
}

}  // namespace mirelo::testing
