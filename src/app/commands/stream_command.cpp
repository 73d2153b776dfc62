#include "app/commands/stream_command.h"

#include <chrono>
#include <functional>
#include <string_view>

#include "app/commands/checks.h"
#include "app/exit_code.h"
#include "app/live/live_screen.h"
#include "app/options.h"
#include "app/output/quote_output.h"
#include "app/output/shown_quote.h"
#include "app/output/text_table.h"
#include "app/session.h"
#include "app/stream_watch.h"
#include "app/watch_lists.h"
#include "app/workbook/day_log.h"
#include "automation/array.h"
#include "automation/text.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "day/pulse.h"
#include "day/quote_board.h"
#include "day/quote_rows.h"
#include "day/stored_source.h"
#include "day/stream_feed.h"
#include "person/list_entry.h"
#include "person/ticker_list.h"
#include "quotetracker/session_file.h"
#include "streaming/first_sources.h"
#include "terminal/standard_streams.h"
#include "wire/observed_sockets.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

using Clock = std::chrono::steady_clock;

// What a terminal shows of each ticker.
const std::vector<std::string> kTableColumns{"Ticker",  "Last",    "Change", "Bid",        "Ask",
                                             "BidSize", "AskSize", "Volume", "LastVolume", "High",
                                             "Low",     "Open",    "Date",   "Time"};

// Writes what the sockets receive to a session file, from the first connection on.
class Recording {
 public:
  Recording(wire::ObservedSockets& sockets, const std::filesystem::path& path) : writer_(path.string()) {
    sockets.Received.Subscribe([this](std::span<const std::uint8_t> bytes) {
      const auto offset = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start_);
      writer_.Add(offset, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    });
  }

 private:
  quotetracker::SessionWriter writer_;
  Clock::time_point start_ = Clock::now();
};

constexpr std::string_view kStreamerFileEnd = ".SDF";

// The quote sources that the settings dialog offers.
std::vector<std::string> SourceNames() {
  Array<std::string> stored;
  mGlobal::AppSettings().GetAllKeys(catalogue::kSources, stored);
  std::vector<std::string> names;
  if (stored.IsAllocated()) {
    for (const std::string& name : stored) names.push_back(name);
  } else {
    for (const QuoteSourceRow& row : kFirstSources) names.emplace_back(row.text);
  }
  return names;
}

}  // namespace

StreamCommand::StreamCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(program.AddCommand("stream",
                                  "Listen to QuoteTracker's Level I stream and print quotes as they come")) {
  command_.AddArgument("TICKER", tickers_, "The tickers to subscribe").Check(WhyNoTickers);
  command_.AddOption("--list", list_, "A watch list whose tickers to take, behind those that are named")
      .ValueName("NAME")
      .Check(WhyNoListName);
  command_.AddOption("--source", source_,
                     "The quote source, by its name as mirelo sources shows it, by a part of it that no "
                     "other has, or by its .SDF file; the one of the settings when it is left out");
  command_.AddOption("--seconds", seconds_, "End after so many seconds; without it, at Ctrl-C").Positive();
  auto csv =
      command_.AddFlag("--csv", csv_, "Print comma-separated values, with a line of column names first");
  auto json = command_.AddFlag("--json", json_, "Print one JSON object a quote and line");
  csv.Excludes(json);
  command_
      .AddOption("--record", recording_,
                 "Write what the connection receives to a file that quotetracker --play plays again")
      .ValueName("FILE");
  options_.AddAddress(command_);
  command_.AddOption("--socket-port", port_, "QuoteTracker's stream port, in place of the setting SocketPort")
      .Between(1, 65535);
  options_.AddDateFormat(command_);
  log_.emplace(command_);
}

bool StreamCommand::IsChosen() const { return command_.IsChosen(); }

int StreamCommand::Run() {
  if (tickers_.empty() && list_.empty()) {
    Err() << "which tickers? Name them, or a watch list with --list\n";
    return kWrongUsage;
  }
  Session session(global_);
  tickers_ = WithList(SplitTickers(tickers_), list_);
  if (port_ != 0) session.host().Override("SocketPort", std::to_string(port_));
  options_.Apply(session);
  const std::string file = StreamerFile(session);
  if (file.empty()) return kFailed;

  DayLog log(log_->Wishes());
  std::optional<Recording> recording;
  if (recording_) recording.emplace(session.host().observed_sockets(), *recording_);
  day::StreamFeed feed(session.facade(), session.host().loop(), session.host().observed_sockets(), tickers_,
                       file);
  log.Follow(feed, session.host().observed_sockets());
  return Listen(session, feed, log);
}

int StreamCommand::Listen(Session& session, day::StreamFeed& feed, DayLog& log) {
  auto& loop = session.host().loop();
  auto& interrupt = session.interrupt();
  const bool terminal = Out().IsTerminal();
  day::QuoteBoard board(kTableColumns, tickers_);
  day::Pulse pulse;
  std::string status;
  bool is_over = false;
  std::unique_ptr<LiveScreen> live;
  if (terminal && !csv_ && !json_) {
    const auto about = [&]() -> std::vector<std::string> {
      return {status, pulse.Text() + "; reconnects: " + std::to_string(feed.Reconnects()), "? help  q end"};
    };
    live = LiveScreen::Open(loop, LiveModel(board.Columns(), session.facade().DecimalPlacesFormat()),
                            board.Rows(), about, {[&] { is_over = true; }, [] {}});
  }

  feed.Status.Subscribe([&](const std::string& text) {
    status = text;
    if (!live) Err() << text << "\n";
  });
  if (csv_) Out() << CsvLine(day::QuoteBoard::AllColumns());
  feed.Quote.Subscribe([&](const cQTData& quote) {
    pulse.Beat();
    board.Take(quote);
    if (csv_) Out() << CsvLine(day::TextsOf(day::QuoteFields(quote)));
    if (json_) Out() << JsonLine(day::QuoteBoard::AllColumns(), day::QuoteFields(quote));
    log.Explain(quote.Symbol(), csv_ || json_ ? "printed" : "shown in the table");
  });

  if (seconds_ > 0) {
    loop.StartTimer(std::chrono::milliseconds(static_cast<std::int64_t>(seconds_ * 1000)),
                    [&] { is_over = true; });
  }
  StreamWatch watch(session.host(), session.given_here);
  std::string told;
  watch.Told.Subscribe([&](const std::string& text) {
    status = told = text;
    if (!live) Err() << text << "\n";
  });
  feed.Start();
  feed.RunUntil([&] {
    Out().Flush();  // before the loop waits, so that whoever reads has every quote that has come
    return is_over || interrupt.Requested() || watch.HasFoundAnother() || !Out().Good();
  });
  feed.Stop();
  if (live && watch.HasFoundAnother()) {
    live.reset();
    Err() << told << "\n";
  }
  live.reset();

  if (!csv_ && !json_) {
    TextTable table(board.Columns());
    const std::string price_format = session.facade().DecimalPlacesFormat();
    for (const auto& row : board.Rows()) table.AddRow(ShownQuote(board.Columns(), row, price_format));
    Out() << table.ToText(terminal);
  }
  Err() << board.QuoteCount() << " quotes\n";
  // An output that is not read ends it early, which the program's end tells.
  return board.QuoteCount() > 0 || !Out().Good() ? kGood : kFailed;
}

std::string StreamCommand::StreamerFile(Session& session) const {
  session.facade();
  std::string source = source_.empty() ? day::ChosenSource() : source_;
  if (EqualText(Right(source, Len(kStreamerFileEnd)), kStreamerFileEnd)) return source;
  const std::vector<std::string> names = SourceNames();
  if (const auto entry = FindEntry(names, source)) return day::StreamerFileOf(names[*entry]);
  Err() << "error: no quote source is named \"" << source
        << "\", and not one alone has that in its name. See them with: mirelo sources. Fetch them from "
           "QuoteTracker with: mirelo sources --update\n";
  return {};
}

}  // namespace mirelo::app
