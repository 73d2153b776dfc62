#include "app/commands/through_option.h"

#include <CLI/CLI.hpp>

#include "app/options.h"
#include "app/workbook/spreadsheet_program.h"

namespace mirelo::app {

ThroughOption::ThroughOption(CLI::App& command, std::filesystem::path& workbook) {
  command
      .add_option("--through", program_,
                  "The spreadsheet program that works on the workbook: mirelo itself, which has .xlsx files, "
                  "or calc, a LibreOffice Calc without a window, which has .ods, .xls and .fods as well and "
                  "keeps whatever Calc knows")
      ->check(CLI::IsMember({"mirelo", "calc"}))
      ->capture_default_str();
  command.callback([this, &command, &workbook] {
    const bool is_default = command.get_option("--workbook")->empty() && !workbook.empty();
    if (IsCalc() && is_default) workbook.replace_extension(".ods");
    Require(workbook);
  });
}

bool ThroughOption::IsElsewhere(const GlobalOptions& global) const {
  return IsCalc() && !global.spreadsheets;
}

void ThroughOption::Require(const std::filesystem::path& workbook) const {
  if (workbook.empty()) return;
  std::string why = IsCalc() ? WhyNotForCalc(workbook) : WhyNoWorkbook(workbook);
  if (why.empty()) return;
  if (!IsCalc() && WhyNotForCalc(workbook).empty()) why += ". LibreOffice Calc can write it: --through calc";
  throw CLI::ValidationError("--workbook", why);
}

}  // namespace mirelo::app
