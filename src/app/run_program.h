#pragma once

#include <functional>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace mirelo::app {

// What the programs' main functions share.

// To be called where something was caught: tells a person what, and what to do where memory ran out.
void TellFailure();

// Runs the body of a program, closed to the eyes of other programs, and tells a person what it throws. The
// result is the exit code: the body's own, unless it is good and some of the output could not be written.
int RunProgram(const std::function<int()>& body);

// Prints what a command line that is not to be run asks for (help, version), or what is wrong with it. The
// result is the exit code.
int EndParsing(const CLI::App& program, const CLI::ParseError& end);

}  // namespace mirelo::app
