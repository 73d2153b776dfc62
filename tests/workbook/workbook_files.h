#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/regional_format.h"
#include "automation/runtime_error.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/temp_directory.h"
#include "workbook/package_builder.h"

namespace mirelo::testing {

using SheetPtr = std::shared_ptr<host::excel::Worksheet>;

inline std::shared_ptr<host::excel::Workbook> BookOf(const workbook::Spreadsheet& spreadsheet) {
  return spreadsheet.Application()->ActiveWorkbook();
}
inline SheetPtr SheetOf(const workbook::Spreadsheet& spreadsheet) {
  return BookOf(spreadsheet)->Worksheets()->Item(BookOf(spreadsheet)->ActiveSheet()->Name());
}

// What is lost when nothing of the loaded file can stay as it is, as when its sheets have other names.
inline std::vector<std::string> AllLosses(const workbook::Spreadsheet& spreadsheet) {
  const auto sheets = BookOf(spreadsheet)->Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) sheets->Item(i)->Name("Renamed" + std::to_string(i));
  return spreadsheet.Losses();
}

inline std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

inline void WriteBytes(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// The text of all parts of an .xlsx file.
inline std::string LookOf(const std::filesystem::path& file) {
  std::string look;
  for (const auto& [name, text] : Unzip(BytesOf(file))) look += text;
  return look;
}

// A test with a folder of its own for files.
class WorkbookFiles : public ::testing::Test {
 protected:
  std::filesystem::path File(const char* name = "quotes.xlsx") const { return folder.path() / name; }

  workbook::Spreadsheet Open(const Parts& parts, const workbook::LoadLimits& limits = {}) const {
    const std::vector<char> bytes = Zip(parts);
    WriteBytes(File(), {bytes.data(), bytes.size()});
    return workbook::Spreadsheet::Open(File(), RegionalFormat::Standard(), limits);
  }

  // Saved and loaded again.
  workbook::Spreadsheet Reloaded(workbook::Spreadsheet& spreadsheet) const {
    spreadsheet.Save(File("reloaded.xlsx"));
    return workbook::Spreadsheet::Open(File("reloaded.xlsx"));
  }

  // The text of the error 1004 that opening these parts raises; empty when they open.
  std::string Refusal(const Parts& parts, const workbook::LoadLimits& limits = {}) const {
    try {
      Open(parts, limits);
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), 1004);
      return error.Description();
    }
    return "";
  }

  // The names of all files in the folder, in order.
  std::vector<std::string> FolderListing() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  TempDirectory folder;
};

}  // namespace mirelo::testing
