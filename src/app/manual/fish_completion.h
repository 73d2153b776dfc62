#pragma once

#include <string>

#include "app/manual/command_facts.h"

namespace mirelo::app {

// The same for fish, which shows what each means.
std::string FishCompletion(const CommandFacts& program);

}  // namespace mirelo::app
