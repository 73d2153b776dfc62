#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mirelo {
class LinuxHost;
}

namespace mirelo::app {

// The options that stand in front of a command, and what a command must know of the program that runs it.
struct GlobalOptions {
  std::optional<std::filesystem::path> registry;

  // The whole command line behind the program's name.
  std::vector<std::string> words;
  // Has a host show windows in place of the terminal. Empty in the program that has none.
  std::function<void(LinuxHost&)> show_windows;
};

}  // namespace mirelo::app
