#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "app/program.h"

namespace mirelo::testing {

// Runs the program mirelo of this build in a terminal of 24 lines with so many characters each, which shows
// 256 colours. All that it prints is `out`, with "\n" at the ends of lines. `environment` is set besides.
ProgramResult RunMireloInTerminal(const std::filesystem::path& folder,
                                  const std::vector<std::string>& arguments, int columns,
                                  const std::map<std::string, std::string>& environment = {});

}  // namespace mirelo::testing
