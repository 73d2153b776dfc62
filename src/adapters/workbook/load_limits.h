#pragma once

#include <cstddef>
#include <cstdint>

namespace mirelo::workbook {

// What a file may ask for at most before it is refused: bounds of the memory and time that a hostile one can
// cost.
struct LoadLimits {
  std::uint64_t file_bytes = std::uint64_t{256} << 20;
  std::uint64_t part_bytes = std::uint64_t{128} << 20;   // one part, unpacked
  std::uint64_t total_bytes = std::uint64_t{768} << 20;  // all parts that are read, unpacked
  // A part that unpacks to more than this many times its packed size is a bomb, once it exceeds
  // `ratio_free_bytes`.
  std::uint64_t ratio = 200;
  std::uint64_t ratio_free_bytes = std::uint64_t{16} << 20;
  std::size_t parts = 10'000;
  std::size_t sheets = 4'096;
  std::size_t nodes = 24'000'000;                   // elements and attributes of one part
  std::size_t cells = 8'000'000;                    // with a value, all sheets together
  std::size_t blank_cells = 24'000'000;             // with nothing but a format, likewise
  std::size_t text_bytes = std::size_t{512} << 20;  // of all cells together
  std::size_t styles = 65'536;
  std::size_t charts = 4'000;            // all sheets together
  std::size_t chart_series = 16'000;     // of all charts together
  std::size_t chart_points = 1'000'000;  // up to the last with a look of its own, of all series together
  int depth = 64;                        // of nested elements
};

}  // namespace mirelo::workbook
