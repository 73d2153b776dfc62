#pragma once

#include <string>

#include "command_line/command_facts.h"

namespace mirelo::app {

// A file for zsh's folder of completions, named _PROGRAM there, that completes the program's commands and
// options, each with its meaning.
std::string ZshCompletion(const command_line::CommandFacts& program);

}  // namespace mirelo::app
