#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mirelo::host::excel {
class Worksheet;
}

namespace mirelo::day {

// Where the columns of a table stand on a sheet, by the captions above them: a person who works on the sheet
// moves, deletes and inserts rows and columns.
struct CaptionRow {
  // Captions that follow each other on the sheet as they do in the table.
  struct Run {
    std::size_t first = 0;  // of the table's columns
    std::size_t count = 0;
    std::int32_t column = 0;  // on the sheet
  };

  std::int32_t row = 0;
  std::vector<std::int32_t> columns;  // by the caption; 0 for one that does not stand in that row

  // From this caption on, without those that do not stand there.
  std::vector<Run> Runs(std::size_t first) const;

  bool operator==(const CaptionRow&) const = default;
};

// As a table is built: from the left, without a gap.
CaptionRow CaptionsFromTheLeft(std::int32_t row, std::size_t count);

// The row of `before` while any of the captions stands there, otherwise the one that has most of them; of the
// same caption several times, each has its own cell. Row 0 where there is none.
CaptionRow FindCaptions(host::excel::Worksheet& sheet, const std::vector<std::string>& captions,
                        const CaptionRow& before);

}  // namespace mirelo::day
