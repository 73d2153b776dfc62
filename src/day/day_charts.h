#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
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
  // How often the charts of one table may fail to follow; from then on they are left alone. Until then each
  // failure has them wait for twice as many updates as the one before, since what keeps them may go.
  static constexpr int kMostFailures = 8;

  // Reads the settings of charts once, here. All arguments must outlive this.
  DayCharts(host::excel::Application& application, cMirelo& facade, const std::vector<std::string>& columns);

  // A vertical table; one without charts is passed over.
  void Add(std::size_t ticker, std::shared_ptr<host::excel::Worksheet> sheet);

  // Whether no table has charts.
  bool IsEmpty() const { return charted_.empty(); }

  // A new quote of the ticker.
  void Take(std::size_t ticker, const QuoteRow& row);

  // Has the charts show what the ticker's table holds, unless they wait.
  void Update(std::size_t ticker);

  // Sentences for a person, since the last call: that charts stand still and why, of one table at a time;
  // that they follow again; and of each table whose charts are given up, that they are.
  std::vector<std::string> TellNews() { return std::exchange(untold_, {}); }

 private:
  struct Charted {
    std::shared_ptr<host::excel::Worksheet> sheet;
    VariantArray rows;  // the last two quotes: whether there was one, and its change
    double price = 0;
    int failures = 0;
    int waits = 0;  // for so many updates
  };
  void NoteFailure(std::size_t ticker, Charted& charted, const std::string& why);
  void GiveUp(std::size_t ticker, const std::string& why);
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
  std::vector<std::string> untold_;
  std::optional<std::size_t> told_of_;  // the ticker whose charts stand still
};

}  // namespace mirelo::day
