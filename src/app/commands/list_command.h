#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mirelo::app {

struct GlobalOptions;
class WatchLists;

// mirelo list: keeps lists of tickers that go by a name.
class ListCommand {
 public:
  ListCommand(CLI::App& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  int Run(WatchLists& lists) const;
  int Add(WatchLists& lists) const;
  int Remove(WatchLists& lists) const;
  int Show(WatchLists& lists) const;
  int Delete(WatchLists& lists) const;

  const GlobalOptions& global_;
  CLI::App* command_;
  CLI::App* add_;
  CLI::App* remove_;
  CLI::App* show_;
  CLI::App* delete_;
  std::string name_;
  std::vector<std::string> tickers_;
};

}  // namespace mirelo::app
