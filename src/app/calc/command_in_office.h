#pragma once

#include <string>
#include <vector>

namespace mirelo::app {

struct OfficePlace;

// Has an office of its own, without a window, run this command line of the program in place of this process:
// at this terminal, in this folder. The words are those behind the program's name. The result is the exit
// code. Error 53 where the office cannot be started, or there is no extension for it.
//
// Signals come to whoever runs the command, as they would here. No office is left behind.
int RunInOffice(const OfficePlace& office, const std::vector<std::string>& words);

}  // namespace mirelo::app
