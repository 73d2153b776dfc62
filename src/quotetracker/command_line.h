#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "quotetracker/server.h"

namespace mirelo::command_line {
class Command;
}

namespace mirelo::quotetracker {

// What the program is asked to do.
struct CommandLine {
  ServerOptions server;
  std::string port_file;  // empty for none
  bool exit_with_parent = false;
  bool count_quotes = false;
};

// Reads the arguments of the program, the files that they name included. When the program has nothing further
// to do than to end (help, version, a mistake), writes what is to be read to standard output or error, sets
// `exit_code` to 0 or 2 and gives nothing. Raises std::runtime_error when a file cannot be read or is no
// replay.
std::optional<CommandLine> ReadCommandLine(int argc, char** argv, int& exit_code);

// Shows what --help is made of, for those who write manuals of it. It lives as long as the call.
void ShowTree(const std::function<void(const command_line::Command& tree)>& look);

}  // namespace mirelo::quotetracker
