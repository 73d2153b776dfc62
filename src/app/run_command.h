#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mirelo::app {

struct GlobalOptions;

// mirelo run: keeps a quote table in a workbook up to date, from QuoteTracker or from its stand-in.
class RunCommand {
 public:
  RunCommand(CLI::App& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  int RunDemo();
  int Follow(class Session& session, int updates);

  const GlobalOptions& global_;
  CLI::App* command_;
  bool demo_ = false;
  std::vector<std::string> tickers_;
  int updates_ = 0;
  std::filesystem::path workbook_ = "quotes.xlsx";
};

}  // namespace mirelo::app
