#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "command_line/command.h"

namespace mirelo::host::excel {
class Application;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::app {

struct ShownArea;

// mirelo show: prints a sheet of a workbook.
class ShowCommand {
 public:
  explicit ShowCommand(command_line::Command& program);

  bool IsChosen() const;
  int Run();

 private:
  int List(host::excel::Application& application) const;
  int Show(host::excel::Worksheet& sheet) const;
  void PrintComments(host::excel::Worksheet& sheet, const ShownArea& area) const;
  std::shared_ptr<host::excel::Worksheet> ChosenSheet(host::excel::Application& application) const;

  command_line::Command command_;
  std::filesystem::path file_;
  std::string sheet_;
  std::string range_;
  std::int32_t rows_ = 100;
  bool list_ = false;
  bool comments_ = false;
  bool no_color_ = false;
};

}  // namespace mirelo::app
