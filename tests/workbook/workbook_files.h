#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/spreadsheet.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/temp_directory.h"
#include "workbook/package_builder.h"

namespace mirelo::testing {

using SheetPtr = std::shared_ptr<host::excel::Worksheet>;

// The active ones.
std::shared_ptr<host::excel::Workbook> BookOf(const workbook::Spreadsheet& spreadsheet);
SheetPtr SheetOf(const workbook::Spreadsheet& spreadsheet);

// What is lost when nothing of the loaded file can stay as it is, as when its sheets have other names.
std::vector<std::string> AllLosses(const workbook::Spreadsheet& spreadsheet);

std::string BytesOf(const std::filesystem::path& file);
void WriteBytes(const std::filesystem::path& file, std::string_view bytes);

// The text of all parts of an .xlsx file.
std::string LookOf(const std::filesystem::path& file);

// A test with a folder of its own for files. This header brings the objects that each such test calls:
// workbooks, worksheets and ranges.
class WorkbookFiles : public ::testing::Test {
 protected:
  std::filesystem::path File(const char* name = "quotes.xlsx") const { return folder.path() / name; }

  // These parts as the file File(), opened.
  workbook::Spreadsheet Open(const Parts& parts, const workbook::LoadLimits& limits = {}) const;

  // Saved and loaded again.
  workbook::Spreadsheet Reloaded(workbook::Spreadsheet& spreadsheet) const;

  // The text of the error 1004 that opening these parts raises; empty when they open.
  std::string Refusal(const Parts& parts, const workbook::LoadLimits& limits = {}) const;

  // The names of all files in the folder, in order.
  std::vector<std::string> FolderListing() const;

  TempDirectory folder;
};

}  // namespace mirelo::testing
