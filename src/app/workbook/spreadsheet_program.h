#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "host/documents.h"

namespace mirelo::app {

// The spreadsheet program that the commands work in: .xlsx files, loaded and saved by this program itself.
// All commands choose it here, unless they run in an office (GlobalOptions::spreadsheets).
std::unique_ptr<host::Documents> SpreadsheetProgram();

// Why no workbook can be written to a file of this name: a sentence that says which can. Empty for one that
// can. Other programs tell by the ending what a file is, and would not open one under a wrong one.
std::string WhyNoWorkbook(const std::filesystem::path& file);

// The same where LibreOffice Calc is the spreadsheet program.
std::string WhyNotForCalc(const std::filesystem::path& file);

}  // namespace mirelo::app
