#pragma once

#include <filesystem>
#include <optional>

#include "command_line/command.h"

namespace mirelo::app {

struct GlobalOptions;

// mirelo dialog: shows the settings dialog. The windows are in a program of their own, so that no other
// command waits for the libraries that they need.
class DialogCommand {
 public:
  DialogCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  // Where there are no windows, becomes the program that has them.
  int Run();

 private:
  const GlobalOptions& global_;
  command_line::Command command_;
  std::optional<std::filesystem::path> workbook_;
};

}  // namespace mirelo::app
