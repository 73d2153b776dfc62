#pragma once

#include <memory>

#include "app/options.h"

namespace mirelo::command_line {
class Command;
}

namespace mirelo::app {

// The command line of mirelo: every command with its options.
class MireloProgram {
 public:
  // `around` is what commands are to know of the process that they run in.
  explicit MireloProgram(GlobalOptions around = {});
  ~MireloProgram();

  // What --help shows, for those who write manuals of it.
  const command_line::Command& tree() const;

  // Reads the arguments and runs the command that they choose. The result is the exit code.
  int Run(int argc, char** argv);

 private:
  struct Commands;
  std::unique_ptr<Commands> commands_;
};

}  // namespace mirelo::app
