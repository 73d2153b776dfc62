#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::workbook {

// Where the formats of one style part have gone in another: by their old places, their new ones.
struct StylePlaces {
  std::vector<std::size_t> cells;
  std::vector<std::size_t> looks;  // of conditions
};

// Adds to a style part (named for errors) the formats of one that the file writer wrote, those that it does
// not have yet. `merged` becomes the text of the whole.
StylePlaces MergeStyles(const std::string& part, std::string_view into, std::string_view from,
                        std::string& merged);

}  // namespace mirelo::workbook
