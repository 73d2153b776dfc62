#pragma once

#include <string>
#include <vector>

#include "command_line/command.h"

namespace mirelo::app {

struct GlobalOptions;
class WatchLists;

// mirelo list: keeps lists of tickers that go by a name.
class ListCommand {
 public:
  ListCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  int Run(WatchLists& lists) const;
  int Add(WatchLists& lists) const;
  int Remove(WatchLists& lists) const;
  int Show(WatchLists& lists) const;
  int Delete(WatchLists& lists) const;

  const GlobalOptions& global_;
  command_line::Command command_;
  command_line::Command add_;
  command_line::Command remove_;
  command_line::Command show_;
  command_line::Command delete_;
  std::string name_;
  std::vector<std::string> tickers_;
};

}  // namespace mirelo::app
