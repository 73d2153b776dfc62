#pragma once

#include <string>

#include "app/manual/command_facts.h"

namespace mirelo::app {

// A script that has bash complete the program's commands and options. Where a value is due that no list of
// words is known for, bash offers files.
std::string BashCompletion(const CommandFacts& program);

}  // namespace mirelo::app
