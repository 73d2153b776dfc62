#pragma once

#include <string>
#include <utility>
#include <vector>

#include "command_line/command_facts.h"

namespace mirelo::app {

// What a manual page says besides the options.
struct PageNotes {
  std::string summary;                                        // behind the name, for whatis
  std::string version;                                        // "mirelo 1.2.3"
  std::vector<std::pair<std::string, std::string>> files;     // path and meaning
  std::vector<std::pair<std::string, std::string>> examples;  // command and meaning
  std::vector<std::string> see_also;                          // "quotetracker(1)"
};

// The program's page of section 1, for man.
std::string ManPage(const command_line::CommandFacts& program, const PageNotes& notes);

}  // namespace mirelo::app
