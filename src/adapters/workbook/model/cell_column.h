#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"
#include "spreadsheet/cell_value.h"

namespace mirelo::workbook {

// The filled cells of one column. Rows are kept in blocks of 64: a bit says that a row is filled, and the
// values of the filled rows stand packed behind it. So a table pays 16 bytes a cell, a lone cell a block of
// its own and an empty row nothing, and a search for the next filled or empty row passes 64 rows a step.
class CellColumn {
 public:
  CellColumn() = default;
  CellColumn(const CellColumn&) = delete;
  CellColumn& operator=(const CellColumn&) = delete;

  bool IsEmpty() const { return blocks_.empty(); }
  std::size_t Count() const;
  bool IsFilled(std::int32_t row) const { return Find(row) != nullptr; }
  // Null for an empty cell.
  const CellValue* Find(std::int32_t row) const;

  // An empty value clears the cell. Cheapest when rows are written downwards.
  void Set(std::int32_t row, CellValue value);
  void Clear(std::int32_t first_row, std::int32_t last_row);
  // Takes the rows out; those below move up.
  void Delete(std::int32_t first_row, std::int32_t last_row);

  // The nearest filled row from `row` on downwards (upwards), `row` included; 0 when there is none.
  std::int32_t NextFilled(std::int32_t row) const;
  std::int32_t PreviousFilled(std::int32_t row) const;
  // The last (first) row of the unbroken run of filled cells that `row`, which is filled, belongs to.
  std::int32_t EndOfRun(std::int32_t row) const;
  std::int32_t StartOfRun(std::int32_t row) const;

  // Calls visit(row, value) for the filled cells of these rows, downwards.
  template <class Visit>
  void ForEach(std::int32_t first_row, std::int32_t last_row, Visit&& visit) const {
    for (auto it = blocks_.lower_bound(BlockOf(first_row)); it != blocks_.end(); ++it) {
      const auto& [index, block] = *it;
      std::size_t place = 0;
      for (std::uint64_t left = block.filled; left != 0; left &= left - 1, ++place) {
        const std::int32_t row = index * kBlockRows + std::countr_zero(left) + 1;
        if (row > last_row) return;
        if (row >= first_row) visit(row, block.values[place]);
      }
    }
  }

 private:
  static constexpr std::int32_t kBlockRows = 64;

  struct Block {
    std::uint64_t filled = 0;  // bit i: row i of the block
    std::vector<CellValue> values;

    std::size_t Place(int bit) const {
      if (filled >> bit == 0) return values.size();  // below all others, where rows are mostly written
      return static_cast<std::size_t>(std::popcount(filled & ((std::uint64_t{1} << bit) - 1)));
    }
  };
  using Blocks = std::map<std::int32_t, Block>;

  static std::int32_t BlockOf(std::int32_t row) { return (row - 1) / kBlockRows; }
  static int BitOf(std::int32_t row) { return (row - 1) % kBlockRows; }
  static std::int32_t RowOf(std::int32_t block, int bit) { return block * kBlockRows + bit + 1; }

  Block& BlockFor(std::int32_t index);
  void ClearCell(std::int32_t row);

  Blocks blocks_;            // none of them empty
  Block* latest_ = nullptr;  // the block last written to, where the next write most likely goes
  std::int32_t latest_index_ = -1;
};

}  // namespace mirelo::workbook
