#include "quotetracker/command_line.h"

#include <CLI/CLI.hpp>
#include <array>
#include <chrono>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "quotetracker/replay.h"
#include "terminal/standard_streams.h"

namespace mirelo::quotetracker {
namespace {

constexpr int kUsageMistake = 2;
constexpr std::uint16_t kHttpPort = 16239;
constexpr std::uint16_t kStreamPort = 16240;

constexpr const char* kDescription =
    R"(A stand-in for QuoteTracker: answers its HTTP requests and speaks its stream, with quotes that it makes up
or replays from a file. Prints "HTTP port N" and "stream port N", then serves until SIGINT or SIGTERM.
)";

constexpr const char* kExplanation =
    R"(HTTP requests: /req?GetLastQuote(A,B,...)  /req?EnumPorts()  /req?EnumPortSymbols(NAME)
  /req?AddStocksToPort(CURRENT,A,B,...)

Replay file: a line of column names, then one line a quote, in the order of time. Columns, in any order:
  Ticker,Date,Time,Last,Bid,Ask,Change,Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,
  52w Low,52w High    (Ticker, Date mm/dd/yyyy and Time hh:mm:ss are needed; Tick is U, D or S)

Faults: a name, and if not each time, a colon and when: "drop:3" each third time, "drop:25%" one time in four.
  --http-fault    drop, reset, stall, truncate-head, truncate-body, garbage, wrong-status, short-length, long-length
  --stream-fault  FAULT@STEP: drop, reset, stall, truncate, garbage, split; and for quotes long-length, short-length,
                  zero-length, negative-length; at greeting, login, sources, streamer or quotes. May be repeated.

Exit codes: 0 ended as asked, 1 could not serve (the message says why), 2 a mistake in the arguments.

Examples:
  quotetracker --seed 7 --symbols MSFT,IBM,GE --rate 5
  quotetracker --replay day.csv --speed 60
  quotetracker --http-port 0 --stream-port 0 --stream-fault reset@quotes:100 --chunking random)";

constexpr std::array<std::pair<std::string_view, Chunking>, 4> kChunkings{{{"whole", Chunking::kWhole},
                                                                           {"halves", Chunking::kHalves},
                                                                           {"random", Chunking::kRandom},
                                                                           {"bytes", Chunking::kBytes}}};

// The arguments as they were written, before they are made options of the server.
struct Arguments {
  std::string symbols;
  std::string portfolio = "Main";
  std::string replay;
  double speed = 1;
  std::string app_secret_file;
  std::string rate;
  std::string kinds;
  std::string chunking = "whole";
  int chunk_pause = 500;
  std::string http_fault;
  std::vector<std::string> stream_faults;
};

struct Tree {
  CommandLine command;
  Arguments arguments;
  CLI::App app{kDescription, "quotetracker"};

  Tree();
};

void AddServing(CLI::App& app, CommandLine& command) {
  ServerOptions& server = command.server;
  app.add_option("--listen", server.listen, "Numeric address to listen on")
      ->type_name("ADDRESS")
      ->capture_default_str();
  app.add_option("--http-port", server.http_port, "Port of the HTTP interface; 0 takes any free one")
      ->type_name("PORT")
      ->capture_default_str();
  app.add_option("--stream-port", server.stream_port, "Port of the stream; 0 takes any free one")
      ->type_name("PORT")
      ->capture_default_str();
  app.add_option("--port-file", command.port_file,
                 "Also write the lines with the ports to this file, whole at once")
      ->type_name("FILE");
  app.add_flag("--exit-with-parent", command.exit_with_parent,
               "End when the process that started this one ends");
  app.add_flag("--count-quotes", command.count_quotes,
               "Print \"quotes streamed N\" at the end, all connections together");
}

void AddQuotes(CLI::App& app, CommandLine& command, Arguments& arguments) {
  app.add_option("--seed", command.server.seed, "The same seed makes up the same quotes and the same chance")
      ->type_name("N")
      ->capture_default_str();
  app.add_option("--symbols", arguments.symbols, "Symbols of the portfolio, joined by commas")
      ->type_name("LIST");
  app.add_option("--portfolio", arguments.portfolio, "Name of the portfolio")
      ->type_name("NAME")
      ->capture_default_str();
  app.add_option("--replay", arguments.replay, "Replay the quotes of this file instead of making them up")
      ->type_name("FILE");
  app.add_option("--speed", arguments.speed, "Run a replay or a recorded session so many times as fast")
      ->check(CLI::Range(1e-6, 1e6).description(""))
      ->type_name("X")
      ->capture_default_str();
}

void AddStream(CLI::App& app, CommandLine& command, Arguments& arguments) {
  StreamOptions& stream = command.server.stream;
  app.add_option("--app-name", stream.credentials.app_name, "Application that may log in to the stream")
      ->type_name("NAME")
      ->capture_default_str();
  app.add_option(
         "--app-secret-file", arguments.app_secret_file,
         "File whose first line is the application's secret;\nwithout it the secret is \"demo-secret\"")
      ->type_name("FILE");
  app.add_option("--server-version", stream.version, "Version in the stream's greeting")
      ->type_name("TEXT")
      ->capture_default_str();
  app.add_option("--rate", arguments.rate,
                 "Changes a second on each stream connection, or max for as\n"
                 "fast as the client reads; without it 10, with --replay max")
      ->type_name("N|max");
  app.add_option("--kinds", arguments.kinds,
                 "Kinds of the stream's records, in turn, joined by commas;\n"
                 "without it L1,S1,HO,HT, with --rate max L1,S1")
      ->type_name("LIST");
  app.add_option("--chunking", arguments.chunking,
                 "How source list and quotes are cut into chunks:\nwhole, halves, random or bytes")
      ->type_name("HOW")
      ->capture_default_str();
  app.add_option("--chunk-pause", arguments.chunk_pause, "Microseconds between the chunks of what was cut")
      ->check(CLI::Range(0, 10'000'000).description(""))
      ->type_name("N")
      ->capture_default_str();
  app.add_option("--play", command.server.play,
                 "Play this recorded session to each stream connection\ninstead of a conversation")
      ->type_name("FILE");
}

void AddFaults(CLI::App& app, Arguments& arguments) {
  app.add_option("--http-fault", arguments.http_fault, "What goes wrong with HTTP replies; see below")
      ->type_name("FAULT");
  app.add_option("--stream-fault", arguments.stream_faults, "What goes wrong on the stream; see below")
      ->type_name("FAULT")
      ->allow_extra_args(false)
      ->take_all();
}

Tree::Tree() {
  command.server.http_port = kHttpPort;
  command.server.stream_port = kStreamPort;
  app.footer(kExplanation);
  app.set_version_flag("--version", "quotetracker " MIRELO_VERSION);
  AddServing(app, command);
  AddQuotes(app, command, arguments);
  AddStream(app, command, arguments);
  AddFaults(app, arguments);
}

std::vector<std::string> SplitList(const std::string& list) { return CLI::detail::split(list, ','); }

double ReadRate(const std::string& text) {
  if (text == "max") return StreamOptions::kMaximum;
  double rate = 0;
  if (!CLI::detail::lexical_cast(text, rate) || !(rate >= 0.001 && rate <= 1e9)) {
    throw std::invalid_argument("--rate: \"" + text +
                                "\" is neither max nor a number from 0.001 to 1000000000");
  }
  return rate;
}

std::vector<std::string> ReadKinds(const std::string& text) {
  std::vector<std::string> kinds = SplitList(text);
  for (const std::string& kind : kinds) {
    if (kind.size() != 2)
      throw std::invalid_argument("--kinds: \"" + kind + "\" is no kind of a record, as L1 is");
  }
  return kinds;
}

Chunking ReadChunking(const std::string& text) {
  for (const auto& [name, chunking] : kChunkings) {
    if (name == text) return chunking;
  }
  throw std::invalid_argument("--chunking: \"" + text + "\" is none of whole, halves, random, bytes");
}

std::string ReadFirstLine(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  if (!std::getline(file, line)) throw std::runtime_error(path + ": holds no line that can be read");
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

// Raises std::invalid_argument for what was written wrongly.
void Apply(const Arguments& arguments, CommandLine& command) {
  ServerOptions& server = command.server;
  server.play_speed = arguments.speed;
  server.stream.chunking = ReadChunking(arguments.chunking);
  server.stream.chunk_pause = std::chrono::microseconds(arguments.chunk_pause);
  if (!arguments.rate.empty()) server.stream.rate = ReadRate(arguments.rate);
  if (!arguments.kinds.empty()) server.stream.kinds = ReadKinds(arguments.kinds);
  if (!arguments.http_fault.empty()) {
    server.http_fault = HttpFaultPlan::Parse(arguments.http_fault, server.seed);
  }
  for (const std::string& fault : arguments.stream_faults) {
    server.stream.faults.push_back(StreamFaultPlan::Parse(fault, server.seed));
  }
  server.portfolios.front().name = arguments.portfolio;
  if (!arguments.symbols.empty()) server.portfolios.front().symbols = SplitList(arguments.symbols);
}

// Prints help or version, or what is wrong with the command line.
int EndParsing(const CLI::App& app, const CLI::ParseError& end) {
  if (end.get_exit_code() == 0) {
    std::ostringstream asked_for;
    app.exit(end, asked_for, asked_for);
    terminal::Out() << terminal::Lines(asked_for.str());
    return 0;
  }
  terminal::Err() << end.what() << "\nRun with --help for more information.\n";
  return kUsageMistake;
}

void ReadFiles(const Arguments& arguments, CommandLine& command) {
  if (!arguments.app_secret_file.empty()) {
    command.server.stream.credentials.app_secret = ReadFirstLine(arguments.app_secret_file);
  }
  if (arguments.replay.empty()) return;
  command.server.quotes = Replay::FromFile(arguments.replay, arguments.speed);
  if (arguments.rate.empty()) command.server.stream.rate = StreamOptions::kMaximum;
}

}  // namespace

std::optional<CommandLine> ReadCommandLine(int argc, char** argv, int& exit_code) {
  Tree tree;
  auto& [command, arguments, app] = tree;
  try {
    app.parse(argc, argv);
    Apply(arguments, command);
  } catch (const CLI::ParseError& error) {
    exit_code = EndParsing(app, error);
    return std::nullopt;
  } catch (const std::invalid_argument& error) {
    terminal::Err() << error.what() << "\nRun with --help for more information.\n";
    exit_code = kUsageMistake;
    return std::nullopt;
  }
  ReadFiles(arguments, command);
  return std::move(command);
}

void ShowTree(const std::function<void(const CLI::App&)>& look) { look(Tree().app); }

}  // namespace mirelo::quotetracker
