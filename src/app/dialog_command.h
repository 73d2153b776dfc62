#pragma once

#include <filesystem>
#include <optional>

namespace CLI {
class App;
}

namespace mirelo::app {

struct GlobalOptions;
class Session;

// mirelo dialog: shows the settings dialog.
class DialogCommand {
 public:
  DialogCommand(CLI::App& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();
  // On the desktop of the session.
  int Show(Session& session);

 private:
  const GlobalOptions& global_;
  CLI::App* command_;
  std::optional<std::filesystem::path> workbook_;
};

}  // namespace mirelo::app
