#pragma once

#include <filesystem>
#include <optional>

#include "command_line/command.h"

namespace mirelo::app {

struct GlobalOptions;

// mirelo open: what the menu's entry and file managers start. Everything is told in windows, since nobody
// reads what it prints. Like mirelo dialog, it becomes the program that has windows.
class OpenCommand {
 public:
  OpenCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  const GlobalOptions& global_;
  command_line::Command command_;
  std::optional<std::filesystem::path> workbook_;
};

// What it does in the program that has windows. The result is the exit code.
int OpenOnScreen(const GlobalOptions& global, const std::optional<std::filesystem::path>& workbook);

}  // namespace mirelo::app
