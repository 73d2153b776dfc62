#pragma once

#include <functional>

namespace mirelo::command_line {
struct Ending;
class Program;
}  // namespace mirelo::command_line

namespace mirelo::app {

// What the programs' main functions share.

// For a catch block: tells a person what was caught, and what to do where memory ran out.
void TellFailure();

// Runs the body of a program, with the process's memory closed to other programs, and tells a person what the
// body throws. The result is the exit code: the body's own when all of the output could be written, otherwise
// kFailed; but where it could not because the reader has gone, kReaderHasGone in place of kGood, and any
// other code of the body's as it is.
int RunProgram(const std::function<int()>& body);

// Prints what the command line asks for in place of a command (help, version), or what is wrong with it. The
// result is the exit code.
int EndReading(const command_line::Program& program, const command_line::Ending& ending);

}  // namespace mirelo::app
