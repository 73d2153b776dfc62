#include "app/commands/quotes_command.h"

#include <algorithm>
#include <chrono>
#include <optional>

#include "app/commands/checks.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/output/quote_output.h"
#include "app/output/shown_quote.h"
#include "app/output/text_table.h"
#include "app/session.h"
#include "app/watch_lists.h"
#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "day/quote_rows.h"
#include "day/snapshot_feed.h"
#include "host/message_loop.h"
#include "person/ticker_list.h"
#include "snapshot/column_names.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

constexpr char kClearTerminal[] = "\033[H\033[2J";
constexpr std::chrono::seconds kSilence{3};

terminal::ShownText AsTable(const day::SnapshotFeed& feed, const day::QuoteRows& rows,
                            const std::string& price_format, bool color) {
  TextTable table(feed.Columns());
  for (const auto& row : rows) table.AddRow(ShownQuote(feed.Columns(), row, price_format));
  return table.ToText(color);
}

// A QuoteTracker that takes the request and does not answer is waited for longer than anybody watches in
// silence.
std::optional<day::QuoteRows> FetchTold(host::MessageLoop& loop, day::SnapshotFeed& feed) {
  const auto timer = loop.StartTimer(
      kSilence, [] { Err() << "QuoteTracker has not answered yet. Ctrl-C ends the waiting.\n"; });
  auto rows = feed.Fetch();
  loop.StopTimer(timer);
  return rows;
}

}  // namespace

QuotesCommand::QuotesCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(
          program.AddCommand("quotes", "Ask QuoteTracker for the current quotes of tickers and print them")) {
  command_.AddArgument("TICKER", tickers_, "The tickers to ask for, in the order of the answer")
      .Check(WhyNoTickers);
  command_.AddOption("--list", list_, "A watch list whose tickers to take, behind those that are named")
      .ValueName("NAME")
      .Check(WhyNoListName);
  auto csv =
      command_.AddFlag("--csv", csv_, "Print comma-separated values, with a line of column names first");
  auto json = command_.AddFlag("--json", json_, "Print one JSON object a quote and line");
  csv.Excludes(json);
  command_.AddFlag(
      "--watch", watch_,
      "Ask again every so many seconds, as the setting Seconds says, until Ctrl-C; with Seconds 0, "
      "every second");
  command_
      .AddOption("--columns", columns_,
                 std::string("The columns to show, joined by commas, in place of the setting ListRight; "
                             "all names: ") +
                     kAllColumns)
      .Check(NotAllowedFor("ListRight"));
  options_.AddAddress(command_);
  command_.AddOption("--http-port", port_, "QuoteTracker's HTTP port, in place of the setting HTTPPort")
      .Between(1, 65535);
  options_.AddDateFormat(command_);
}

bool QuotesCommand::IsChosen() const { return command_.IsChosen(); }

int QuotesCommand::Run() {
  if (tickers_.empty() && list_.empty()) {
    Err() << "which tickers? Name them, or a watch list with --list\n";
    return kWrongUsage;
  }
  Session session(global_);
  tickers_ = WithList(SplitTickers(tickers_), list_);
  if (!columns_.empty())
    session.host().Override("ListRight",
                            SettingValue(*FindSetting(catalogue::kSettings, "ListRight"), columns_).ToText());
  if (port_ != 0) session.host().OverrideHttpPort(port_);
  options_.Apply(session);

  if (watch_) session.interrupt().Stopped.Subscribe([&session] { session.host().HangUp(); });
  day::SnapshotFeed feed(session.facade(), session.replies(), tickers_);
  feed.Told.Subscribe([](const std::string& text) { Err() << text << "\n"; });
  const auto output = ChosenOutput();
  const bool terminal = Out().IsTerminal();
  if (output == Output::Csv) Out() << CsvLine(feed.Columns());
  Out().Flush();

  for (;;) {
    const auto rows = FetchTold(session.host().loop(), feed);
    if (!rows && !watch_) {
      Err() << "No quotes. Is QuoteTracker running, and does it listen where mirelo asks? See and set "
               "that with\n"
               "  mirelo settings get Webaddress\n"
               "  mirelo settings get HTTPPort\n";
      return kFailed;
    }
    if (rows) {
      switch (output) {
        case Output::Table:
          if (watch_ && terminal) Out() << kClearTerminal;
          Out() << AsTable(feed, *rows, session.facade().DecimalPlacesFormat(), terminal);
          break;
        case Output::Csv:
          for (const auto& row : *rows) Out() << CsvLine(day::TextsOf(row));
          break;
        case Output::Json:
          for (const auto& row : *rows) Out() << JsonLine(feed.Columns(), row);
          break;
      }
      Out().Flush();
      if (!Out().Good()) return kGood;  // nobody reads what would come, and the program's end tells why
    }
    if (!watch_) return kGood;
    const auto pace = std::chrono::seconds(std::max(1, session.facade().Seconds()));
    if (!session.interrupt().Pause(pace)) return kGood;
  }
}

QuotesCommand::Output QuotesCommand::ChosenOutput() const {
  return csv_ ? Output::Csv : json_ ? Output::Json : Output::Table;
}

}  // namespace mirelo::app
