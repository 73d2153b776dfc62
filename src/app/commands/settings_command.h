#pragma once

#include <string>

#include "command_line/command.h"

namespace mirelo {
class CAppSettings;
}

namespace mirelo::app {

struct GlobalOptions;

// mirelo settings: shows and changes what the settings dialog and the macros keep in the registry.
class SettingsCommand {
 public:
  SettingsCommand(command_line::Command& program, const GlobalOptions& global);

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
  command_line::Command command_;
  command_line::Command list_;
  command_line::Command get_;
  command_line::Command set_;
  command_line::Command delete_;
  command_line::Command export_;
  command_line::Command import_;
  std::string name_;
  std::string value_;
  std::string file_ = "-";
};

}  // namespace mirelo::app
