#pragma once

#include "command_line/command.h"

namespace mirelo::app {

// mirelo credentials: keeps the application name and secret that QuoteTracker's stream asks for.
class CredentialsCommand {
 public:
  explicit CredentialsCommand(command_line::Command& program);

  bool IsChosen() const;
  int Run();

 private:
  command_line::Command command_;
  command_line::Command set_;
  command_line::Command show_name_;
  command_line::Command clear_;
};

}  // namespace mirelo::app
