#pragma once

#include <string>

namespace CLI {
class App;
}

namespace mirelo {
class CAppSettings;
}

namespace mirelo::app {

struct GlobalOptions;

// mirelo settings: shows and changes what the settings dialog and the macros keep in the registry.
class SettingsCommand {
 public:
  SettingsCommand(CLI::App& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  int Run(CAppSettings& store) const;
  int List(CAppSettings& store) const;
  int Get(CAppSettings& store) const;
  int Set(CAppSettings& store) const;
  int Delete(CAppSettings& store) const;
  int Export(CAppSettings& store) const;
  int Import(CAppSettings& store) const;

  const GlobalOptions& global_;
  CLI::App* command_;
  CLI::App* list_;
  CLI::App* get_;
  CLI::App* set_;
  CLI::App* delete_;
  CLI::App* export_;
  CLI::App* import_;
  std::string name_;
  std::string value_;
  std::string file_ = "-";
};

}  // namespace mirelo::app
