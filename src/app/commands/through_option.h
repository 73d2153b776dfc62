#pragma once

#include <filesystem>
#include <string>

namespace mirelo::command_line {
class Command;
}

namespace mirelo::app {

struct GlobalOptions;

// The option --through: the spreadsheet program that works on a command's workbook.
class ThroughOption {
 public:
  // Adds it to a command that has the option --workbook, whose value is `workbook`. At the end of reading,
  // one that was not given gets the ending that is usual in Calc, and the command is refused where the
  // program chosen cannot write such a file. All must outlive the reading.
  ThroughOption(command_line::Command& command, std::filesystem::path& workbook);

  // Whether it is LibreOffice Calc.
  bool IsCalc() const { return program_ == "calc"; }
  // Whether the command is to be run in an office, by RunInOffice, and is not yet.
  bool IsElsewhere(const GlobalOptions& global) const;

 private:
  // Why the program chosen cannot write such a file; empty where it can.
  std::string WhyNot(const std::filesystem::path& workbook) const;

  std::string program_ = "mirelo";
};

}  // namespace mirelo::app
