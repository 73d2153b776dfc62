#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/xlsx/workbook_reader.h"

namespace mirelo::workbook {

// The file that a workbook was loaded from, kept for what the workbook cannot hold. As long as that can be,
// sheets that nobody changed are saved as they stand in the file, and so is what belongs to no sheet.
class Origin {
 public:
  Origin(std::vector<char> file, const LoadLimits& limits, const LoadedBook& loaded);

  const std::vector<char>& file() const { return file_; }
  const LoadLimits& limits() const { return limits_; }
  const std::vector<LoadedBook::Entry>& entries() const { return entries_; }

  // The sheets that can be saved as they stand in the file: those that nobody changed, which is found out by
  // reading the file again and comparing. Nothing when all of the workbook has to be written anew: when the
  // file is not fit for keeping sheets, when a sheet has another name than in the file, by which formulas
  // know it, when one was changed that other parts refer to, or when there are other chart sheets.
  using Kept = std::set<const Sheet*>;
  std::optional<Kept> KeptSheets(const Book& book) const;

  // From now on everything is written anew.
  void GiveUp() { std::vector<char>().swap(file_); }

  // What is lost when the workbook is saved with these sheets kept.
  std::vector<Loss> Losses(const std::optional<Kept>& kept) const;

 private:
  bool AreChartSheetsUnchanged(const Book& book, const LoadedBook& again) const;

  std::vector<char> file_;  // empty when nothing of it can be carried over
  LoadLimits limits_;
  std::vector<LoadedBook::Entry> entries_;
  std::vector<Loss> losses_;
};

}  // namespace mirelo::workbook
