#include "app/run_program.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <sstream>

#include "app/exit_code.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

int Run(const std::function<int()>& body) try { return body(); } catch (const std::exception& error) {
  Err() << "error: " << terminal::Indented(error.what()) << "\n";
  return kFailed;
}

}  // namespace

int RunProgram(const std::function<int()>& body) {
  terminal::PrepareStandardStreams();
  const int code = Run(body);
  Out().Flush();
  if (Out().Good()) return code;
  if (Out().ReaderHasGone()) return code == kGood ? kReaderHasGone : code;
  Err() << "error: cannot write the output: " << Out().Trouble() << "; it is not complete\n";
  return kFailed;
}

int EndParsing(const CLI::App& program, const CLI::ParseError& end) {
  if (end.get_exit_code() == 0) {
    std::ostringstream asked_for;
    program.exit(end, asked_for, asked_for);
    Out() << terminal::Lines(asked_for.str());
    return kGood;
  }
  Err() << end.what() << "\nRun with --help for more information.\n";
  return kWrongUsage;
}

}  // namespace mirelo::app
