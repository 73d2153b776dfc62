// Writes the manual pages and the shells' completions of the programs into a folder:
//   write_manual FOLDER

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "app/commands/windows_commands.h"
#include "app/manual/bash_completion.h"
#include "app/manual/fish_completion.h"
#include "app/manual/man_page.h"
#include "app/manual/zsh_completion.h"
#include "app/mirelo_program.h"
#include "app/run_program.h"
#include "command_line/command.h"
#include "command_line/command_facts.h"
#include "core/product.h"
#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "quotetracker/command_line.h"
#include "terminal/standard_streams.h"

namespace {

using namespace mirelo;
using namespace mirelo::app;
using command_line::CommandFacts;

void Write(const std::filesystem::path& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + ": cannot be written");
}

PageNotes Notes(const std::string& summary) {
  PageNotes notes;
  notes.summary = summary;
  notes.version = "mirelo " + std::string(ProductVersion());
  return notes;
}

// The settings that go by their key alone.
std::vector<std::string> SettingNames() {
  std::vector<std::string> names;
  for (const Setting& setting : AllSettings()) {
    if (setting.section == catalogue::kSettings && !setting.key.empty()) names.emplace_back(setting.key);
  }
  return names;
}

void OfferSettings(CommandFacts& command) {
  for (auto& argument : command.arguments) {
    if (argument.value == "NAME") argument.words = SettingNames();
  }
  for (auto& below : command.commands) OfferSettings(below);
}

CommandFacts MireloFacts() {
  MireloProgram program;
  CommandFacts facts = FactsOf(program.tree());
  for (auto& command : facts.commands) {
    if (command.OwnName() == "settings") OfferSettings(command);
  }
  return facts;
}

PageNotes MireloNotes() {
  PageNotes notes = Notes("market quotes from QuoteTracker in spreadsheets");
  notes.files = {{"$XDG_DATA_HOME/mirelo/registry.db",
                  "The settings. Where XDG_DATA_HOME is not set, ~/.local/share stands for it."},
                 {"$XDG_DATA_HOME/mirelo/",
                  "The sealed credentials for the stream and the key that they are sealed with."},
                 {"$XDG_STATE_HOME/mirelo/last-workbook", "Which workbook mirelo open shows the dialog for."},
                 {"$XDG_STATE_HOME/mirelo/mirelo.log",
                  "What --explain writes. Where XDG_STATE_HOME is not set, ~/.local/state stands for it."}};
  notes.examples = {{"mirelo run --demo", "A demonstration that needs neither QuoteTracker nor settings."},
                    {"mirelo quotes MSFT IBM", "The current quotes, as a table."},
                    {"mirelo run --tickers MSFT,IBM --also quotes.db",
                     "A working day, every quote of which is kept in an SQLite database as well."},
                    {"mirelo export quotes.xlsx --all --output tables.db",
                     "The quote table and all histories of a workbook as an SQLite database."},
                    {"mirelo settings set Seconds 15", "Update quote tables every 15 seconds."}};
  notes.see_also = {"mirelo-windows(1)", "quotetracker(1)"};
  return notes;
}

// Its commands are mirelo's, by which name it is started; its page goes by its own.
CommandFacts WindowsFacts() { return FactsOf(WindowsCommands("mirelo-windows").program); }

PageNotes WindowsNotes() {
  PageNotes notes = Notes("the commands of mirelo that show windows");
  notes.see_also = {"mirelo(1)"};
  return notes;
}

CommandFacts QuotetrackerFacts() {
  CommandFacts facts;
  quotetracker::ShowTree([&](const command_line::Command& tree) { facts = FactsOf(tree); });
  return facts;
}

PageNotes QuotetrackerNotes() {
  PageNotes notes = Notes("a stand-in for QuoteTracker");
  notes.see_also = {"mirelo(1)"};
  return notes;
}

void WriteAbout(const CommandFacts& program, const PageNotes& notes, const std::filesystem::path& folder) {
  Write(folder / (program.name + ".1"), ManPage(program, notes));
  Write(folder / (program.name + ".bash"), BashCompletion(program));
  Write(folder / (program.name + ".fish"), FishCompletion(program));
  Write(folder / ("_" + program.name), ZshCompletion(program));
}

int Main(int argc, char** argv) {
  if (argc != 2) {
    terminal::Err() << "usage: write_manual FOLDER\n";
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  std::filesystem::create_directories(folder);
  WriteAbout(MireloFacts(), MireloNotes(), folder);
  WriteAbout(WindowsFacts(), WindowsNotes(), folder);
  WriteAbout(QuotetrackerFacts(), QuotetrackerNotes(), folder);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return RunProgram([&] { return Main(argc, argv); });
}
