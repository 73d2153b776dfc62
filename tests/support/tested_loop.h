#pragma once

#ifdef _WIN32
#include "loop/loop_in_a_program.h"
#else
#include "adapters/poll/poll_loop.h"
#endif

namespace mirelo::testing {

// The message loop that this machine's programs wait in.
#ifdef _WIN32
using TestedLoop = LoopInAProgram;
#else
using TestedLoop = poll::PollLoop;
#endif

}  // namespace mirelo::testing
