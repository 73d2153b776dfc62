#include "quotetracker/command_line.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "command_line/command.h"
#include "quotetracker/replay.h"
#include "quotetracker/replay_columns.h"
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

constexpr const char* kRequests =
    R"(HTTP requests: /req?GetLastQuote(A,B,...)  /req?EnumPorts()  /req?EnumPortSymbols(NAME)
  /req?AddStocksToPort(CURRENT,A,B,...)

Replay file: a line of column names, then one line a quote, in the order of time. Columns, in any order:
)";

constexpr const char* kFaultsAndExamples =
    R"(    (Ticker, Date mm/dd/yyyy and Time hh:mm:ss are needed; Tick is U, D or S)

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

// Names that are joined by commas, in two lines of a terminal.
std::string InTwoLines(const std::string& names) {
  constexpr std::size_t kLine = 112;
  const auto behind = names.rfind(',', kLine - 3) + 1;
  return "  " + names.substr(0, behind) + "\n  " + names.substr(behind);
}

struct Tree {
  CommandLine command;
  Arguments arguments;
  command_line::Program program{"quotetracker", kDescription};

  Tree();
};

void AddServing(command_line::Command& program, CommandLine& command) {
  ServerOptions& server = command.server;
  program.AddOption("--listen", server.listen, "Numeric address to listen on")
      .ValueName("ADDRESS")
      .ShowDefault();
  program.AddOption("--http-port", server.http_port, "Port of the HTTP interface; 0 takes any free one")
      .ValueName("PORT")
      .ShowDefault();
  program.AddOption("--stream-port", server.stream_port, "Port of the stream; 0 takes any free one")
      .ValueName("PORT")
      .ShowDefault();
  program
      .AddOption("--port-file", command.port_file,
                 "Also write the lines with the ports to this file, whole at once")
      .ValueName("FILE");
  program.AddFlag("--exit-with-parent", command.exit_with_parent,
                  "End when the process that started this one ends");
  program.AddFlag("--count-quotes", command.count_quotes,
                  "Print \"quotes streamed N\" at the end, all connections together");
}

void AddQuotes(command_line::Command& program, CommandLine& command, Arguments& arguments) {
  program
      .AddOption("--seed", command.server.seed, "The same seed makes up the same quotes and the same chance")
      .ValueName("N")
      .ShowDefault();
  program.AddOption("--symbols", arguments.symbols, "Symbols of the portfolio, joined by commas")
      .ValueName("LIST");
  program.AddOption("--portfolio", arguments.portfolio, "Name of the portfolio")
      .ValueName("NAME")
      .ShowDefault();
  program.AddOption("--replay", arguments.replay, "Replay the quotes of this file instead of making them up")
      .ValueName("FILE");
  program.AddOption("--speed", arguments.speed, "Run a replay or a recorded session so many times as fast")
      .Between(1e-6, 1e6, command_line::Told::kNowhere)
      .ValueName("X")
      .ShowDefault();
}

void AddStream(command_line::Command& program, CommandLine& command, Arguments& arguments) {
  StreamOptions& stream = command.server.stream;
  program.AddOption("--app-name", stream.credentials.app_name, "Application that may log in to the stream")
      .ValueName("NAME")
      .ShowDefault();
  program
      .AddOption(
          "--app-secret-file", arguments.app_secret_file,
          "File whose first line is the application's secret;\nwithout it the secret is \"demo-secret\"")
      .ValueName("FILE");
  program.AddOption("--server-version", stream.version, "Version in the stream's greeting")
      .ValueName("TEXT")
      .ShowDefault();
  program
      .AddOption("--rate", arguments.rate,
                 "Changes a second on each stream connection, or max for as\n"
                 "fast as the client reads; without it 10, with --replay max")
      .ValueName("N|max");
  program
      .AddOption("--kinds", arguments.kinds,
                 "Kinds of the stream's records, in turn, joined by commas;\n"
                 "without it L1,S1,HO,HT, with --rate max L1,S1")
      .ValueName("LIST");
  program
      .AddOption("--chunking", arguments.chunking,
                 "How source list and quotes are cut into chunks:\nwhole, halves, random or bytes")
      .ValueName("HOW")
      .ShowDefault();
  program.AddOption("--chunk-pause", arguments.chunk_pause, "Microseconds between the chunks of what was cut")
      .Between(0, 10'000'000, command_line::Told::kNowhere)
      .ValueName("N")
      .ShowDefault();
  program
      .AddOption("--play", command.server.play,
                 "Play this recorded session to each stream connection\ninstead of a conversation")
      .ValueName("FILE");
}

void AddFaults(command_line::Command& program, Arguments& arguments) {
  program.AddOption("--http-fault", arguments.http_fault, "What goes wrong with HTTP replies; see below")
      .ValueName("FAULT");
  program.AddOption("--stream-fault", arguments.stream_faults, "What goes wrong on the stream; see below")
      .ValueName("FAULT")
      .Repeats();
}

Tree::Tree() {
  command.server.http_port = kHttpPort;
  command.server.stream_port = kStreamPort;
  program.Footer(kRequests + InTwoLines(ReplayColumns::Names()) + kFaultsAndExamples);
  program.AddVersion("quotetracker " MIRELO_VERSION, "Display program version information and exit");
  AddServing(program, command);
  AddQuotes(program, command, arguments);
  AddStream(program, command, arguments);
  AddFaults(program, arguments);
}

// A comma at its end is followed by nothing.
std::vector<std::string> SplitList(const std::string& list) {
  std::vector<std::string> words;
  std::istringstream rest(list);
  for (std::string word; std::getline(rest, word, ',');) words.push_back(word);
  return words;
}

double ReadRate(const std::string& text) {
  if (text == "max") return StreamOptions::kMaximum;
  char* end = nullptr;
  const double rate = std::strtod(text.c_str(), &end);
  if (end != text.c_str() + text.size() || !(rate >= 0.001 && rate <= 1e9)) {
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

int TellMistake(const std::string& mistake) {
  terminal::Err() << mistake << "\nRun with --help for more information.\n";
  return kUsageMistake;
}

// Prints help or version, or what is wrong with the command line.
int EndReading(const command_line::Ending& ending) {
  if (ending.is_asked_for) {
    terminal::Out() << terminal::Lines(ending.text);
    return 0;
  }
  return TellMistake(ending.text);
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
  auto& [command, arguments, program] = tree;
  if (const auto ending = program.Read(argc, argv)) {
    exit_code = EndReading(*ending);
    return std::nullopt;
  }
  try {
    Apply(arguments, command);
  } catch (const std::invalid_argument& error) {
    exit_code = TellMistake(error.what());
    return std::nullopt;
  }
  ReadFiles(arguments, command);
  return std::move(command);
}

void ShowTree(const std::function<void(const command_line::Command&)>& look) { look(Tree().program); }

}  // namespace mirelo::quotetracker
