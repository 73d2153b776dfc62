#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::workbook {

// The indexes that the formats of one style part have got in another: element i is the new index of the
// format that had index i.
struct StyleIndexes {
  std::vector<std::size_t> cells;         // of the formats of cells ("xf")
  std::vector<std::size_t> differential;  // of differential formats ("dxf")
};

// Adds to a style part (named for errors) the formats of one that the file writer wrote, those that it does
// not have yet. `merged` becomes the text of the whole.
StyleIndexes MergeStyles(const std::string& part, std::string_view into, std::string_view from,
                         std::string& merged);

}  // namespace mirelo::workbook
