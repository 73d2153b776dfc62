#include "app/window_program.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "app/child_process.h"
#include "app/exit_code.h"
#include "terminal/standard_streams.h"
#include "terminal/writing_signals.h"

namespace mirelo::app {

using terminal::Err;

namespace {

constexpr char kToInstall[] =
    "The windows are a program of their own, mirelo-windows. Install it beside mirelo; it needs Qt 6 Widgets "
    "(Debian: libqt6widgets6).\n";

}  // namespace

int BecomeWindowProgram(const std::vector<std::string>& words) {
  const std::filesystem::path program = ProgramFolder() / "mirelo-windows";
  std::vector<std::string> arguments{program.string()};
  arguments.insert(arguments.end(), words.begin(), words.end());
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  terminal::RestoreWritingSignals();
  ::execv(program.c_str(), pointers.data());
  const int error = errno;
  terminal::IgnoreWritingSignals();
  Err() << "error: cannot start " << program.string() << ": " << std::strerror(error) << ".\n"
        << kToInstall << kWithoutWindows;
  return kFailed;
}

}  // namespace mirelo::app
