#include "app/run_program.h"

#include <sys/prctl.h>

#include <algorithm>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "app/exit_code.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "command_line/command.h"
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

std::string OneValueEachTime(const std::string& option, const std::string& next) {
  return option + " takes one value each time: write " + option + " once more, in front of " + next;
}

// Words behind a command that takes its tickers by an option.
std::string WhatWasMeant(const command_line::Program& program, const std::vector<std::string>& left_over) {
  const auto is_option = [](const std::string& word) { return word.starts_with('-'); };
  if (left_over.empty() || std::ranges::any_of(left_over, is_option)) return {};
  for (const command_line::Command& command : program.Chosen()) {
    const std::string& word = left_over.front();
    if (const std::string option = command.OptionToRepeat(word); !option.empty())
      return OneValueEachTime(option, word);
    if (command.Has("--tickers"))
      return "Tickers go behind --tickers: mirelo " + command.Name() + " --tickers " + Join(left_over, ",");
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

int EndReading(const command_line::Program& program, const command_line::Ending& ending) {
  if (ending.is_asked_for) {
    Out() << terminal::Lines(ending.text);
    return kGood;
  }
  Err() << ending.text << "\n";
  if (const std::string meant = WhatWasMeant(program, ending.left_over); !meant.empty())
    Err() << meant << "\n";
  Err() << "Run with --help for more information.\n";
  return kWrongUsage;
}

}  // namespace mirelo::app
