#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/commands/log_options.h"
#include "app/commands/through_option.h"
#include "app/commands/wish_options.h"
#include "app/workbook/workbook_keeper.h"
#include "command_line/command.h"

namespace mirelo::day {
class WorkingDay;
}

namespace mirelo::app {

struct GlobalOptions;
class DayLog;
class DayView;
class Session;

// mirelo run: a whole working day, from the settings dialog to the last save.
class RunCommand {
 public:
  RunCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  int RunIn(Session& session, const DialogWishes& wishes);
  WorkbookKeeper::Manner MannerOfSaving() const;
  // False when it broke off with an error, which has been told.
  bool Follow(Session& session, day::WorkingDay& day, WorkbookKeeper& keeper, DayView& view, DayLog& log);

  const GlobalOptions& global_;
  command_line::Command command_;
  std::optional<WishOptions> wishes_;
  std::optional<LogOptions> log_;
  std::optional<ThroughOption> through_;
  bool demo_ = false;
  bool window_ = false;
  bool headless_ = false;
  std::string for_;
  std::string save_every_ = "30s";
  std::filesystem::path workbook_ = "quotes.xlsx";
  std::vector<std::filesystem::path> also_;
};

}  // namespace mirelo::app
