#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// An index of areas on one sheet, each with somebody who looks at it: it finds those who look at a given
// cell. All areas are added first, then cells are asked for. What a question costs depends on how many
// different sizes the areas have, not on how many areas there are; after very many questions the answer is
// everybody.
class AreaWatch {
 public:
  using Who = std::uint32_t;

  // An area whose bounds would take many pieces (see Run) is taken for a somewhat larger one.
  void Add(const Area& area, Who who);
  // How many pieces all the areas take, a measure of the memory.
  std::size_t Size() const { return entries_.size(); }

  // Those who look at the cell, one entry for each area. An area is in one answer at most, so that whoever
  // follows formulas from cell to cell does not meet it twice.
  std::vector<Who> Take(const CellPlace& cell);
  std::vector<Who> TakeAll();

 private:
  static constexpr std::size_t kRowLevels = 21;  // pieces of 1, 2, 4 ... 2^20 rows
  static constexpr std::size_t kColumnLevels = 15;
  static constexpr Who kTaken = 0xFFFF'FFFF;
  static constexpr std::size_t kMostQuestions = std::size_t{1} << 26;

  struct Entry {
    std::uint64_t piece;
    Who who;
  };
  // A run of rows, or of columns, that begins at a multiple of its own length.
  struct Run {
    std::uint32_t level;
    std::uint32_t index;
  };

  static std::vector<Run> RunsOf(std::int32_t first, std::int32_t last);
  static Run RunAround(std::int32_t first, std::int32_t last);
  static std::uint64_t PieceOf(const Run& rows, const Run& columns);
  void Sort();

  std::vector<Entry> entries_;
  std::array<std::array<bool, kColumnLevels>, kRowLevels> is_used_{};
  bool is_sorted_ = true;
  std::size_t questions_ = 0;
};

}  // namespace mirelo::workbook
