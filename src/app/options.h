#pragma once

#include <filesystem>
#include <optional>

namespace mirelo::app {

// What can stand on the command line in front of any command.
struct GlobalOptions {
  // A registry file in place of the user's own.
  std::optional<std::filesystem::path> registry;
};

}  // namespace mirelo::app
