#pragma once

#include <string>

#include "command_line/command_facts.h"

namespace mirelo::app {

// A script that has fish complete the program's commands and options, each with what it means.
std::string FishCompletion(const command_line::CommandFacts& program);

}  // namespace mirelo::app
