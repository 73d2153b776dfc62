#pragma once

#include <string>

#include "app/manual/command_facts.h"

namespace mirelo::app {

// A file for zsh's folder of completions, named _PROGRAM there, that completes the program's commands and
// options, each with its meaning.
std::string ZshCompletion(const CommandFacts& program);

}  // namespace mirelo::app
