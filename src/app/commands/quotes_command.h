#pragma once

#include <string>
#include <vector>

#include "app/commands/quote_options.h"
#include "command_line/command.h"

namespace mirelo::app {

struct GlobalOptions;

// mirelo quotes: asks QuoteTracker for quotes and prints them.
class QuotesCommand {
 public:
  QuotesCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  enum class Output { Table, Csv, Json };

  Output ChosenOutput() const;

  const GlobalOptions& global_;
  command_line::Command command_;
  std::vector<std::string> tickers_;
  std::string list_;
  std::string columns_;
  QuoteOptions options_;
  int port_ = 0;
  bool csv_ = false;
  bool json_ = false;
  bool watch_ = false;
};

}  // namespace mirelo::app
