#include "adapters/workbook/xlsx/saved_check.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/errors.h"
#include "adapters/workbook/xlsx/workbook_reader.h"

namespace mirelo::workbook {

namespace {

constexpr double kPrecision = 1e-15;  // of the 16 digits that files hold of a number

LoadLimits NoLimits() {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  LoadLimits limits;
  limits.file_bytes = limits.part_bytes = limits.total_bytes = limits.ratio_free_bytes = kMost;
  limits.sheets = limits.parts = limits.cells = limits.text_bytes = limits.styles = kMost;
  return limits;
}

bool IsSame(const CellValue& a, const CellValue& b) {
  const double* number = a.IfNumber();
  const double* other = b.IfNumber();
  if (number == nullptr || other == nullptr) return a == b;
  return std::fabs(*number - *other) <= std::fabs(*number) * kPrecision;
}

bool IsSame(const Sheet& a, const Sheet& b) {
  if (a.name != b.name || a.cells.Count() != b.cells.Count()) return false;
  bool is_same = true;
  a.cells.ForEach(Area::Sheet(), [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    if (!is_same) return;
    const CellValue* other = b.cells.Find(row, column);
    is_same = other != nullptr && IsSame(value, *other);
  });
  return is_same;
}

bool IsSame(const Book& a, const Book& b) {
  if (a.sheets.size() != b.sheets.size()) return false;
  for (std::size_t i = 0; i < a.sheets.size(); ++i) {
    if (!IsSame(*a.sheets[i], *b.sheets[i])) return false;
  }
  return true;
}

bool ReadsBack(const Book& book, const std::filesystem::path& file) {
  const LoadLimits limits = NoLimits();
  const std::vector<char> bytes = ReadWholeFile(file, limits.file_bytes);
  try {
    return IsSame(book, *ReadWorkbook(bytes, limits).book);
  } catch (const RuntimeError&) {
    return false;  // damaged
  }
}

}  // namespace

void CheckSaved(const Book& book, const std::filesystem::path& file) {
  if (ReadsBack(book, file)) return;
  throw DiskFull("Cannot save the workbook: what was written does not read back; the disk may be full.");
}

}  // namespace mirelo::workbook
