#include "app/commands/through_option.h"

#include "app/options.h"
#include "app/workbook/spreadsheet_program.h"
#include "command_line/command.h"

namespace mirelo::app {

ThroughOption::ThroughOption(command_line::Command& command, std::filesystem::path& workbook) {
  command
      .AddOption("--through", program_,
                 "The spreadsheet program that works on the workbook: mirelo itself, which has .xlsx files, "
                 "or calc, a LibreOffice Calc without a window, which has .ods, .xls and .fods as well and "
                 "keeps whatever Calc knows")
      .OneOf({"mirelo", "calc"})
      .ShowDefault();
  const auto option = command.Find("--workbook");
  command.WhenRead(option, [this, option, &workbook] {
    const bool is_default = !option.IsGiven() && !workbook.empty();
    if (IsCalc() && is_default) workbook.replace_extension(".ods");
    return WhyNot(workbook);
  });
}

bool ThroughOption::IsElsewhere(const GlobalOptions& global) const {
  return IsCalc() && !global.spreadsheets;
}

std::string ThroughOption::WhyNot(const std::filesystem::path& workbook) const {
  if (workbook.empty()) return {};
  std::string why = IsCalc() ? WhyNotForCalc(workbook) : WhyNoWorkbook(workbook);
  if (why.empty()) return {};
  if (!IsCalc() && WhyNotForCalc(workbook).empty()) why += ". LibreOffice Calc can write it: --through calc";
  return why;
}

}  // namespace mirelo::app
