#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "automation/variant.h"
#include "day/quote_rows.h"

namespace mirelo {
class cMirelo;
}
namespace mirelo::host::excel {
class Application;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::day {

// The charts beside the vertical tables while their histories grow. For each ticker this keeps what its last
// two quotes said of the change, as the macros do: the facade colours charts by it.
class DayCharts {
 public:
  // Reads the settings of charts once, here. All arguments must outlive this.
  DayCharts(host::excel::Application& application, cMirelo& facade, const std::vector<std::string>& columns);

  // A vertical table; one without charts is passed over.
  void Add(std::size_t ticker, std::shared_ptr<host::excel::Worksheet> sheet);

  // Whether no table has charts.
  bool IsEmpty() const { return charted_.empty(); }

  // A new quote of the ticker.
  void Take(std::size_t ticker, const QuoteRow& row);
  // Has the charts show what the ticker's table holds. A table whose charts cannot be updated is left alone
  // from then on.
  void Update(std::size_t ticker);

  // Why the first table was left alone; empty while none was.
  const std::string& Failure() const { return failure_; }

 private:
  struct Charted {
    std::shared_ptr<host::excel::Worksheet> sheet;
    VariantArray rows;  // the last two quotes: whether there was one, and its change
    double price = 0;
  };
  double ChangeOf(const QuoteRow& row, double price_before) const;

  host::excel::Application& application_;
  cMirelo& facade_;
  std::size_t price_column_;
  std::size_t change_column_;
  bool wanted_;
  std::int32_t points_;
  std::string style_;
  std::int16_t color_points_;
  std::int16_t grey_out_;
  std::map<std::size_t, Charted> charted_;
  std::string failure_;
};

}  // namespace mirelo::day
