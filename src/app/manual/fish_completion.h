#pragma once

#include <string>

#include "app/manual/command_facts.h"

namespace mirelo::app {

// A script that has fish complete the program's commands and options, each with what it means.
std::string FishCompletion(const CommandFacts& program);

}  // namespace mirelo::app
