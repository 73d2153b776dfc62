#include "app/workbook/spreadsheet_program.h"

#include <algorithm>
#include <array>

#include "adapters/workbook/files.h"
#include "automation/text.h"
#include "libreoffice/errand/stored_kinds.h"

namespace mirelo::app {

namespace {

// The endings of the files that workbooks are written to.
constexpr std::array kWritten{".xlsx"};

}  // namespace

std::unique_ptr<host::Documents> SpreadsheetProgram() { return std::make_unique<workbook::Files>(); }

std::string WhyNoWorkbook(const std::filesystem::path& file) {
  const std::string ending = file.extension().string();
  if (std::ranges::any_of(kWritten, [&](const char* written) { return EqualText(ending, written); }))
    return {};
  return "\"" + file.string() + "\" is no workbook that can be written; only .xlsx files can, as in " +
         file.filename().stem().string() + ".xlsx";
}

std::string WhyNotForCalc(const std::filesystem::path& file) {
  if (libreoffice::StoredKindOf(file.extension().string()) != nullptr) return {};
  return "\"" + file.string() + "\": LibreOffice Calc is to write " + libreoffice::StoredEndings() +
         " files, as in " + file.filename().stem().string() + ".ods";
}

}  // namespace mirelo::app
