#include "app/run_program.h"

#include <sys/prctl.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "app/exit_code.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

// Credentials are in memory at times. From here on no core of the process is dumped, and other programs of
// its user cannot look into it. Becoming another program undoes it.
void KeepMemoryPrivate() { ::prctl(PR_SET_DUMPABLE, 0); }

int Run(const std::function<int()>& body) try { return body(); } catch (const std::exception&) {
  TellFailure();
  return kFailed;
}

// Words behind a command that takes its tickers by an option.
std::string WhatWasMeant(const CLI::App& program, const CLI::ParseError& end) {
  if (dynamic_cast<const CLI::ExtrasError*>(&end) == nullptr) return {};
  const std::vector<std::string> words = program.remaining(true);
  for (const CLI::App* command : program.get_subcommands()) {
    const bool are_tickers =
        command->get_option_no_throw("--tickers") != nullptr &&
        std::ranges::none_of(words, [](const std::string& word) { return word.starts_with('-'); });
    if (are_tickers)
      return "Tickers go behind --tickers: mirelo " + command->get_name() + " --tickers " + Join(words, ",");
  }
  return {};
}

void TellOfMemory() {
  Err().PutWithoutMemory(
      "error: Out of memory.\nLet the program have more (ulimit -v), or take a smaller workbook.\n");
}

}  // namespace

void TellFailure() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    TellOfMemory();
  } catch (const std::exception&) {
    const RuntimeError error = CurrentError();
    if (error.Number() == Errors::OutOfMemory().Number()) return TellOfMemory();
    Err() << "error: " << terminal::Indented(error.Description()) << "\n";
  }
}

int RunProgram(const std::function<int()>& body) {
  KeepMemoryPrivate();
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
  Err() << end.what() << "\n";
  if (const std::string meant = WhatWasMeant(program, end); !meant.empty()) Err() << meant << "\n";
  Err() << "Run with --help for more information.\n";
  return kWrongUsage;
}

}  // namespace mirelo::app
