#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "adapters/workbook/model/area.h"

namespace mirelo::workbook {

// Who looks at which areas of one sheet: asked for a cell, it tells everyone who looks at it. All are entered
// first, then asked for. Each question takes about as long as the areas have different sizes, however many
// there are; after very many questions everyone is told.
class AreaWatch {
 public:
  using Who = std::uint32_t;

  // An area of odd bounds may be taken for a somewhat larger one.
  void Add(const Area& area, Who who);
  // How much all that was added takes.
  std::size_t Size() const { return entries_.size(); }

  // Those who look at the cell. Who was told of for one area is not told of for it again.
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
