#pragma once

namespace CLI {
class App;
}

namespace mirelo::app {

struct GlobalOptions;
class Session;

// mirelo sources: shows the quote sources that a stream can be asked for, and fetches their list from
// QuoteTracker.
class SourcesCommand {
 public:
  SourcesCommand(CLI::App& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  bool Update(Session& session);
  int Show(Session& session);

  const GlobalOptions& global_;
  CLI::App* command_;
  bool update_ = false;
};

}  // namespace mirelo::app
