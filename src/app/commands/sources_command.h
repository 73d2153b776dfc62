#pragma once

#include "command_line/command.h"

namespace mirelo::app {

struct GlobalOptions;
class Session;

// mirelo sources: shows the quote sources that a stream can be asked for, and fetches their list from
// QuoteTracker.
class SourcesCommand {
 public:
  SourcesCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  bool Update(Session& session);
  int Show(Session& session);

  const GlobalOptions& global_;
  command_line::Command command_;
  bool update_ = false;
};

}  // namespace mirelo::app
