#include "adapters/workbook/model/cell_column.h"

#include <iterator>
#include <utility>

namespace mirelo::workbook {

namespace {

// Bits `first` to `last`.
constexpr std::uint64_t Bits(int first, int last) {
  return (~std::uint64_t{0} << first) & (~std::uint64_t{0} >> (63 - last));
}

}  // namespace

std::size_t CellColumn::Count() const {
  std::size_t count = 0;
  for (const auto& [index, block] : blocks_) count += block.values.size();
  return count;
}

const CellValue* CellColumn::Find(std::int32_t row) const {
  const auto found = blocks_.find(BlockOf(row));
  if (found == blocks_.end()) return nullptr;
  const Block& block = found->second;
  const int bit = BitOf(row);
  return (block.filled >> bit & 1) != 0 ? &block.values[block.Place(bit)] : nullptr;
}

void CellColumn::Set(std::int32_t row, CellValue value) {
  if (value.IsEmpty()) return ClearCell(row);
  Block& block = BlockFor(BlockOf(row));
  const int bit = BitOf(row);
  const std::size_t place = block.Place(bit);
  if ((block.filled >> bit & 1) != 0) {
    block.values[place] = std::move(value);
    return;
  }
  block.values.insert(block.values.begin() + static_cast<std::ptrdiff_t>(place), std::move(value));
  block.filled |= std::uint64_t{1} << bit;
}

CellColumn::Block& CellColumn::BlockFor(std::int32_t index) {
  if (index != latest_index_) {
    latest_ = &blocks_.try_emplace(blocks_.end(), index)->second;  // at once where it is the new last one
    latest_index_ = index;
  }
  return *latest_;
}

void CellColumn::ClearCell(std::int32_t row) { Clear(row, row); }

void CellColumn::Clear(std::int32_t first_row, std::int32_t last_row) {
  auto it = blocks_.lower_bound(BlockOf(first_row));
  while (it != blocks_.end() && it->first <= BlockOf(last_row)) {
    auto& [index, block] = *it;
    const int first = index == BlockOf(first_row) ? BitOf(first_row) : 0;
    const int last = index == BlockOf(last_row) ? BitOf(last_row) : kBlockRows - 1;
    const auto begin = block.values.begin();
    const auto from = static_cast<std::ptrdiff_t>(block.Place(first));
    const std::uint64_t going = block.filled & Bits(first, last);
    block.values.erase(begin + from, begin + from + std::popcount(going));
    block.filled &= ~going;
    it = block.filled == 0 ? blocks_.erase(it) : std::next(it);
  }
  latest_ = nullptr;
  latest_index_ = -1;
}

void CellColumn::Delete(std::int32_t first_row, std::int32_t last_row) {
  Clear(first_row, last_row);
  std::vector<std::pair<std::int32_t, CellValue>> moving;
  for (auto it = blocks_.lower_bound(BlockOf(last_row)); it != blocks_.end(); ++it) {
    auto& [index, block] = *it;
    std::size_t place = 0;
    for (std::uint64_t left = block.filled; left != 0; left &= left - 1, ++place) {
      const std::int32_t row = RowOf(index, std::countr_zero(left));
      if (row > last_row) moving.emplace_back(row, std::move(block.values[place]));
    }
  }
  if (moving.empty()) return;
  Clear(moving.front().first, moving.back().first);
  for (auto& [row, value] : moving) Set(row - (last_row - first_row + 1), std::move(value));
}

std::int32_t CellColumn::NextFilled(std::int32_t row) const {
  for (auto it = blocks_.lower_bound(BlockOf(row)); it != blocks_.end(); ++it) {
    const int from = it->first == BlockOf(row) ? BitOf(row) : 0;
    const std::uint64_t ahead = it->second.filled & Bits(from, kBlockRows - 1);
    if (ahead != 0) return RowOf(it->first, std::countr_zero(ahead));
  }
  return 0;
}

std::int32_t CellColumn::PreviousFilled(std::int32_t row) const {
  for (auto it = blocks_.upper_bound(BlockOf(row)); it != blocks_.begin();) {
    --it;
    const int to = it->first == BlockOf(row) ? BitOf(row) : kBlockRows - 1;
    const std::uint64_t behind = it->second.filled & Bits(0, to);
    if (behind != 0) return RowOf(it->first, 63 - std::countl_zero(behind));
  }
  return 0;
}

std::int32_t CellColumn::EndOfRun(std::int32_t row) const {
  std::int32_t index = BlockOf(row);
  int from = BitOf(row);
  for (auto it = blocks_.find(index); it != blocks_.end() && it->first == index; ++it, ++index, from = 0) {
    const std::uint64_t gaps = ~it->second.filled & Bits(from, kBlockRows - 1);
    if (gaps != 0) return RowOf(index, std::countr_zero(gaps)) - 1;
  }
  return index * kBlockRows;  // the run filled the block before `index` to its foot
}

std::int32_t CellColumn::StartOfRun(std::int32_t row) const {
  std::int32_t index = BlockOf(row);
  int to = BitOf(row);
  for (auto it = blocks_.upper_bound(index); it != blocks_.begin(); --index, to = kBlockRows - 1) {
    --it;
    if (it->first != index) break;
    const std::uint64_t gaps = ~it->second.filled & Bits(0, to);
    if (gaps != 0) return RowOf(index, 63 - std::countl_zero(gaps)) + 1;
  }
  return (index + 1) * kBlockRows + 1;
}

}  // namespace mirelo::workbook
