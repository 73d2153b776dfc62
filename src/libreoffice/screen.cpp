#include "libreoffice/screen.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>

namespace mirelo::libreoffice {

namespace {

// Those that imply it are in the list.
constexpr std::array<const char*, 7> kWithoutWindows{"headless", "convert-to", "print-to-file", "print-to",
                                                     "pt",       "cat",        "script-cat"};

}  // namespace

// There is no interface of the office's that tells.
bool OfficeShowsWindows() {
  std::ifstream arguments("/proc/self/cmdline");
  for (std::string argument; std::getline(arguments, argument, '\0');) {
    const auto name = argument.find_first_not_of('-');
    if (name == 0 || name == std::string::npos) continue;
    if (std::ranges::find(kWithoutWindows, argument.substr(name)) != kWithoutWindows.end()) return false;
  }
  return true;
}

}  // namespace mirelo::libreoffice
