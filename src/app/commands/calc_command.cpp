#include "app/commands/calc_command.h"

#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "app/calc/calc_errand.h"
#include "app/calc/extension.h"
#include "app/calc/office_place.h"
#include "app/calc/office_window.h"
#include "app/commands/checks.h"
#include "app/demonstration.h"
#include "app/duration.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/workbook/spreadsheet_program.h"
#include "app/workbook/workbook_file.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

namespace fs = std::filesystem;

constexpr const char* kDefaultFile = "quotes.ods";

bool Exists(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(file, ignored);
}

}  // namespace

CalcCommand::CalcCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(program.AddCommand(
          "calc",
          "Open LibreOffice Calc with Mirelo in it: a menu, and quotes in the document on the screen")) {
  command_.AddArgument("FILE", file_, "What to open; without it a new spreadsheet");
  auto install =
      command_.AddFlag("--install", install_, "Install the extension for you, so that Calc always has it");
  auto remove = command_.AddFlag("--remove", remove_, "Remove the extension that was installed for you");
  auto headless = command_.AddFlag(
      "--headless", headless_,
      "Without a window: fill the settings dialog from the options below, press Go and Start, and save "
      "FILE (quotes.ods) at the end");
  auto demo = command_.AddFlag("--demo", demo_,
                               "Play a day from the built-in QuoteTracker stand-in, with settings of its "
                               "own and in an office of its own; yours stay untouched");
  auto duration = command_.AddOption("--for", for_, "End the day after so long, as 20s, 90m or 8h30m")
                      .Check(WhyNoDuration);
  for (const auto& flag : {demo, headless}) install.Excludes(flag), remove.Excludes(flag);
  install.Excludes(remove);
  duration.Excludes(install).Excludes(remove);
  wishes_.emplace(command_);
  demo.Excludes(command_.Find("--list"));
  command_.Footer(
      "Ctrl-C ends a day in order, a second one kills its office. Exit codes: 0 good, 1 the operation "
      "failed,\n"
      "as when no quote came, 2 asked for something that the dialog does not have.");
}

bool CalcCommand::IsChosen() const { return command_.IsChosen(); }

int CalcCommand::Run() try {
  if (!demo_ && !headless_) RefuseWishes();
  const OfficePlace office = FindOffice();
  if (install_ || remove_) {
    Out() << (install_ ? InstallExtension(office) : RemoveExtension(office)) << ".\n";
    return kGood;
  }
  if (demo_) return RunDemonstration(office);
  return headless_ ? RunDay(office) : OpenWindow(office);
} catch (const Unfulfilled& unfulfilled) {
  Err() << "error: " << terminal::Indented(unfulfilled.what()) << "\n";
  return kWrongUsage;
}

// Nobody fills the dialog in a window but the person there.
void CalcCommand::RefuseWishes() const {
  std::vector<std::string> wished = command_.GivenOptions();
  std::erase_if(wished, [](const std::string& name) { return name == "--install" || name == "--remove"; });
  if (wished.empty()) return;
  throw Unfulfilled(Join(wished, ", ") + (wished.size() == 1 ? " needs" : " need") +
                    " --headless or --demo. In a window it is you who fills the settings dialog: Mirelo, "
                    "Settings...");
}

int CalcCommand::OpenWindow(const OfficePlace& office) const {
  if (file_ && !Exists(*file_)) {
    throw RuntimeError(
        53, "There is no file " + file_->string() +
                ". Without a file mirelo calc opens a new spreadsheet, which you save as you like");
  }
  return ShowOffice(office, file_);
}

int CalcCommand::RunDay(const OfficePlace& office) const {
  libreoffice::Errand errand;
  errand.wishes = wishes_->Wishes();
  const fs::path file = FileToStore();
  const auto hold = HoldForGo(*SpreadsheetProgram(), file);
  if (Exists(file)) errand.open = fs::absolute(file);
  if (const auto time = ParseDuration(for_)) errand.time = *time;
  return RunErrand(office, std::move(errand), file, true);
}

int CalcCommand::RunDemonstration(const OfficePlace& office) const {
  const fs::path file = headless_ ? FileToStore() : fs::path();
  const auto hold = headless_ ? HoldForGo(*SpreadsheetProgram(), file) : nullptr;
  Err() << "Starting the QuoteTracker stand-in\n";
  const Demonstration demonstration;
  libreoffice::Errand errand;
  errand.folder = demonstration.Folder();
  errand.http_port = demonstration.HttpPort();
  errand.stream_port = demonstration.StreamPort();
  errand.wishes = demonstration.Wishes(wishes_->Wishes());
  if (file_ && Exists(*file_)) errand.open = fs::absolute(*file_);
  if (const auto time = ParseDuration(for_)) errand.time = *time;
  Err() << "Starting LibreOffice\n";
  return RunErrand(office, std::move(errand), file, headless_);
}

fs::path CalcCommand::FileToStore() const {
  fs::path file = file_.value_or(kDefaultFile);
  if (const std::string why = WhyNotForCalc(file); !why.empty()) throw Unfulfilled(why);
  return file;
}

}  // namespace mirelo::app
