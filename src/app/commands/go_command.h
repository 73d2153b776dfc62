#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "app/commands/wish_options.h"

namespace CLI {
class App;
}

namespace mirelo::app {

struct GlobalOptions;

// mirelo go: fills the settings dialog without showing it and presses its Go.
class GoCommand {
 public:
  GoCommand(CLI::App& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  int Report(std::int32_t result, int messages);

  const GlobalOptions& global_;
  CLI::App* command_;
  std::optional<WishOptions> wishes_;
  std::optional<std::filesystem::path> workbook_;
};

}  // namespace mirelo::app
