#pragma once

namespace mirelo::app {

// What the program ends with.
enum ExitCode : int {
  kGood = 0,
  kFailed = 1,      // the operation failed; stderr says why and what to do
  kWrongUsage = 2,  // the command line was not understood
  // The reader of the output has gone (as "| head" does). The same number as of programs that SIGPIPE ends,
  // and nothing is printed.
  kReaderHasGone = 128 + 13,
};

}  // namespace mirelo::app
