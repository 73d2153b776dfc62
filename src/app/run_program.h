#pragma once

#include <functional>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace mirelo::app {

// What the programs' main functions share.

// For a catch block: tells a person what was caught, and what to do where memory ran out.
void TellFailure();

// Runs the body of a program, with the process's memory closed to other programs, and tells a person what the
// body throws. The result is the exit code: the body's own when all of the output could be written, otherwise
// kFailed; but where it could not because the reader has gone, kReaderHasGone in place of kGood, and any
// other code of the body's as it is.
int RunProgram(const std::function<int()>& body);

// For a command line that CLI11 did not accept: prints what it asks for (help, version), or what is wrong
// with it. The result is the exit code.
int EndParsing(const CLI::App& program, const CLI::ParseError& end);

}  // namespace mirelo::app
