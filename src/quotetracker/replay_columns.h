#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "quotetracker/quote.h"

namespace mirelo::quotetracker {

// The columns of a replay file, as its first line names them.
class ReplayColumns {
 public:
  // Those that there are, joined by commas, in the order of a record's fields (AppendRecord).
  static std::string Names();

  // Raises std::invalid_argument for an unknown, repeated or missing column.
  explicit ReplayColumns(std::string_view header);

  // The quote of one further line. Raises std::invalid_argument that says which field is wrong.
  Quote Read(std::string_view line) const;

  // Whether the lines say how much was traded, or that is to be told from their cumulative volumes.
  bool HaveLastVolume() const;

 private:
  std::vector<std::size_t> columns_;  // for each field of a line: its column's place among the known ones
};

}  // namespace mirelo::quotetracker
