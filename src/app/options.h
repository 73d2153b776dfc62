#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/dialog/screen.h"

namespace mirelo {
class LinuxHost;
namespace host {
class Documents;
}
}  // namespace mirelo

namespace mirelo::app {

// In place of the name of a file: the standard input or output.
inline constexpr const char* kStandardStream = "-";

// The options that stand in front of a command, and what a command must know of the program that runs it.
struct GlobalOptions {
  std::optional<std::filesystem::path> registry;

  // The whole command line behind the program's name.
  std::vector<std::string> words;
  // Has a host show windows in place of the terminal; the screen must not outlive the host. Empty in the
  // program that has no windows.
  std::function<std::unique_ptr<Screen>(LinuxHost&)> show_windows;
  // A screen without a host, for what keeps one from coming up. Empty as above.
  std::function<std::unique_ptr<Screen>()> show_alone;
  // The spreadsheet program in whose process this one runs, which also lends the host its loop. Empty in a
  // process of this program's own.
  std::function<std::unique_ptr<host::Documents>(LinuxHost&)> spreadsheets;
};

}  // namespace mirelo::app
