#pragma once

#include <vector>

#include "app/manual/command_facts.h"

namespace mirelo::app {

// The options that can stand behind a command: its own, and those options of the program that take a value,
// which may stand anywhere. Help and version are not inherited.
inline std::vector<OptionFacts> WithInherited(const CommandFacts& command, const CommandFacts& program) {
  std::vector<OptionFacts> options = command.options;
  if (&command == &program) return options;
  for (const auto& option : program.options) {
    if (!option.value.empty()) options.push_back(option);
  }
  return options;
}

}  // namespace mirelo::app
