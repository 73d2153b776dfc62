#include "app/run_command.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <iostream>
#include <optional>

#include "app/exit_code.h"
#include "app/options.h"
#include "app/quote_sheet.h"
#include "app/session.h"
#include "app/snapshot_feed.h"
#include "app/stand_in.h"
#include "app/temporary_folder.h"
#include "app/text_table.h"
#include "app/workbook_file.h"

namespace mirelo::app {

namespace {

constexpr int kDemoUpdates = 5;
const std::vector<std::string> kDemoTickers{"MSFT", "IBM", "CSCO", "INTC", "ORCL", "DELL"};

}  // namespace

RunCommand::RunCommand(CLI::App& program, const GlobalOptions& global) : global_(global) {
  command_ = program.add_subcommand(
      "run",
      "Keep the quote table of a workbook up to date, every so many seconds as the setting Seconds says");
  command_->add_flag("--demo", demo_,
                     "Use the built-in QuoteTracker stand-in and settings of its own; yours stay untouched");
  command_->add_option("--tickers", tickers_, "The tickers of the table, joined by commas")->delimiter(',');
  command_->add_option("--updates", updates_, "End after so many updates; 0 goes on until Ctrl-C (--demo: 5)")
      ->check(CLI::NonNegativeNumber);
  command_->add_option("--workbook", workbook_, "The .xlsx file that holds the table; made when it is absent")
      ->capture_default_str();
}

bool RunCommand::IsChosen() const { return command_->parsed(); }

int RunCommand::Run() {
  if (demo_) return RunDemo();
  if (tickers_.empty()) {
    std::cerr << "error: which tickers? Name them with --tickers MSFT,IBM, or try --demo\n";
    return kWrongUsage;
  }
  Session session(global_);
  return Follow(session, updates_);
}

int RunCommand::RunDemo() {
  std::cerr << "Starting the QuoteTracker stand-in\n";
  const StandIn stand_in;
  const TemporaryFolder folder;
  GlobalOptions options;
  options.registry = folder.Path() / "registry.db";
  Session session(options);
  session.host().OverrideHttpPort(stand_in.HttpPort());
  session.host().Override("Seconds", "1");
  if (tickers_.empty()) tickers_ = kDemoTickers;
  return Follow(session, updates_ > 0 ? updates_ : kDemoUpdates);
}

int RunCommand::Follow(Session& session, int updates) {
  auto& interrupt = session.interrupt();
  auto& facade = session.facade();
  facade.DovantaFormatUserDate("mm/dd/yyyy");
  const auto seconds = std::max(1, facade.Seconds());

  auto spreadsheet = OpenOrNew(workbook_);
  const auto excel = spreadsheet.Application();
  facade.ExcelApplication(Variant(excel));
  SnapshotFeed feed(facade, tickers_);
  QuoteSheet sheet(*excel, "SnapShot( " + std::to_string(seconds) + " sec)", feed.Columns(), tickers_,
                   facade.DecimalPlacesFormat());

  std::optional<QuoteRows> shown;
  for (int update = 1;; ++update) {
    if (auto rows = feed.Fetch()) {
      sheet.Write(*rows);
      shown = std::move(rows);
      std::cerr << "Update " << update << (updates > 0 ? " of " + std::to_string(updates) : "") << ": "
                << tickers_.size() << " quotes\n";
    } else {
      std::cerr << "Update " << update << ": no quotes; going on\n";
    }
    if (update == updates || !interrupt.Pause(std::chrono::seconds(seconds))) break;
  }
  if (!shown) {
    std::cerr << "error: QuoteTracker sent no quotes, so nothing was saved\n";
    return kFailed;
  }

  spreadsheet.Save(workbook_);
  TextTable table(feed.Columns());
  for (const auto& row : *shown) table.AddRow(row);
  std::cout << table.ToText(::isatty(STDOUT_FILENO) == 1) << "Saved in "
            << std::filesystem::absolute(workbook_).string() << '\n';
  return kGood;
}

}  // namespace mirelo::app
