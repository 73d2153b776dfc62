#pragma once

#include <vector>

#include "command_line/command_facts.h"

namespace mirelo::app {

// The options that can stand behind a command: its own, and those options of the program that take a value,
// which may stand anywhere. Help and version are not inherited.
inline std::vector<command_line::OptionFacts> WithInherited(const command_line::CommandFacts& command,
                                                            const command_line::CommandFacts& program) {
  std::vector<command_line::OptionFacts> options = command.options;
  if (&command == &program) return options;
  for (const auto& option : program.options) {
    if (!option.value.empty()) options.push_back(option);
  }
  return options;
}

}  // namespace mirelo::app
