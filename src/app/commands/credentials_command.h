#pragma once

namespace CLI {
class App;
}

namespace mirelo::app {

// mirelo credentials: keeps the application name and secret that QuoteTracker's stream asks for.
class CredentialsCommand {
 public:
  explicit CredentialsCommand(CLI::App& program);

  bool IsChosen() const;
  int Run();

 private:
  CLI::App* command_;
  CLI::App* set_;
  CLI::App* show_name_;
  CLI::App* clear_;
};

}  // namespace mirelo::app
