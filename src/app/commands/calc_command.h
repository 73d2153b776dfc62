#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/commands/wish_options.h"
#include "command_line/command.h"

namespace mirelo::app {

struct GlobalOptions;
struct OfficePlace;

// mirelo calc: LibreOffice Calc with the extension.
class CalcCommand {
 public:
  CalcCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  void RefuseWishes() const;
  int OpenWindow(const OfficePlace& office) const;
  int RunDay(const OfficePlace& office) const;
  int RunDemonstration(const OfficePlace& office) const;
  std::filesystem::path FileToStore() const;

  const GlobalOptions& global_;
  command_line::Command command_;
  std::optional<WishOptions> wishes_;
  std::optional<std::filesystem::path> file_;
  bool install_ = false;
  bool remove_ = false;
  bool demo_ = false;
  bool headless_ = false;
  std::string for_;
};

}  // namespace mirelo::app
