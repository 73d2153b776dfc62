#pragma once

#include <string>

#include "command_line/command_facts.h"

namespace mirelo::app {

// A script that has bash complete the program's commands and options. Where a value is due that no list of
// words is known for, bash offers files.
std::string BashCompletion(const command_line::CommandFacts& program);

}  // namespace mirelo::app
