#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "app/commands/through_option.h"
#include "app/commands/wish_options.h"
#include "command_line/command.h"

namespace mirelo::app {

struct GlobalOptions;

// mirelo go: fills the settings dialog without showing it and presses its Go.
class GoCommand {
 public:
  GoCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  // Whether there is a file for the workbook.
  bool IsKept() const { return !workbook_.empty(); }
  int Report(std::int32_t result, int messages);

  const GlobalOptions& global_;
  command_line::Command command_;
  std::optional<WishOptions> wishes_;
  std::optional<ThroughOption> through_;
  std::filesystem::path workbook_;
};

}  // namespace mirelo::app
