#include "adapters/workbook/xlsx/checked_writer.h"

#include "adapters/workbook/xlsx/carrying_writer.h"
#include "adapters/workbook/xlsx/saved_check.h"
#include "adapters/workbook/xlsx/workbook_writer.h"
#include "host/excel/constants.h"

namespace mirelo::workbook {

namespace {

std::string ProblemOfCarrying(const Book& book, const Origin& origin, const Origin::Kept& kept,
                              const NewSheets& fresh, const std::filesystem::path& file) {
  try {
    const StaleResults stale = FindStaleResults(book, origin, kept);
    WriteCarrying(book, origin, kept, stale, fresh, file);
    return ProblemOfSaved(book, kept, stale, file);
  } catch (const RuntimeError& error) {
    if (error.Number() != host::excel::kApplicationError) throw;
    return error.Description();
  }
}

}  // namespace

void WriteChecked(const Book& book, const std::filesystem::path& file) {
  WriteWorkbook(book, file);
  CheckSaved(book, file);
}

// The new sheets are looked at by themselves where something is wrong: they pass through helper files, and a
// disk that was full for a moment is no reason to give up the kept ones.
std::string WriteCheckedCarrying(const Book& book, const Origin& origin, const Origin::Kept& kept,
                                 const std::filesystem::path& file) {
  const NewSheets fresh = WriteNewSheets(book, kept, file);
  std::string problem = ProblemOfCarrying(book, origin, kept, fresh, file);
  if (!problem.empty() && !fresh.sheets.empty()) CheckSaved(fresh.sheets, fresh.file);
  return problem;
}

}  // namespace mirelo::workbook
