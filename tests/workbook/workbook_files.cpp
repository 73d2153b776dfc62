#include "workbook/workbook_files.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <ios>
#include <iterator>

#include "automation/regional_format.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"

namespace mirelo::testing {

std::shared_ptr<host::excel::Workbook> BookOf(const workbook::Spreadsheet& spreadsheet) {
  return spreadsheet.Application()->ActiveWorkbook();
}

SheetPtr SheetOf(const workbook::Spreadsheet& spreadsheet) {
  return BookOf(spreadsheet)->Worksheets()->Item(BookOf(spreadsheet)->ActiveSheet()->Name());
}

std::vector<std::string> AllLosses(const workbook::Spreadsheet& spreadsheet) {
  const auto sheets = BookOf(spreadsheet)->Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) sheets->Item(i)->Name("Renamed" + std::to_string(i));
  return spreadsheet.Losses();
}

std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void WriteBytes(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string LookOf(const std::filesystem::path& file) {
  std::string look;
  for (const auto& [name, text] : Unzip(BytesOf(file))) look += text;
  return look;
}

workbook::Spreadsheet WorkbookFiles::Open(const Parts& parts, const workbook::LoadLimits& limits) const {
  const std::vector<char> bytes = Zip(parts);
  WriteBytes(File(), {bytes.data(), bytes.size()});
  return workbook::Spreadsheet::Open(File(), RegionalFormat::Standard(), limits);
}

workbook::Spreadsheet WorkbookFiles::Reloaded(workbook::Spreadsheet& spreadsheet) const {
  spreadsheet.Save(File("reloaded.xlsx"));
  return workbook::Spreadsheet::Open(File("reloaded.xlsx"));
}

std::string WorkbookFiles::Refusal(const Parts& parts, const workbook::LoadLimits& limits) const {
  try {
    Open(parts, limits);
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), 1004);
    return error.Description();
  }
  return "";
}

std::vector<std::string> WorkbookFiles::FolderListing() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace mirelo::testing
