#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "automation/text.h"
#include "quotetracker/http_server.h"
#include "quotetracker/replay_columns.h"
#include "quotetracker/server.h"
#include "quotetracker/session_file.h"
#include "quotetracker/started_program.h"
#include "quotetracker/stream_client.h"
#include "support/tcp_client.h"
#include "support/temp_directory.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using testing::BodyOf;
using ::testing::HasSubstr;
using testing::HttpGet;
using ::testing::MatchesRegex;
using ::testing::StartsWith;
using testing::TempDirectory;

StartedProgram Start(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"--http-port", "0", "--stream-port", "0"});
  return StartedProgram(arguments);
}

std::string FileText(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Program, PrintsItsPortsAndServesOnBoth) {
  StartedProgram program = Start({"--symbols", "A,B", "--portfolio", "Mine"});
  const std::string first = program.ReadLine();
  const std::string second = program.ReadLine();
  EXPECT_THAT(first, MatchesRegex("HTTP port [0-9]+"));
  EXPECT_THAT(second, MatchesRegex("stream port [0-9]+"));
  EXPECT_EQ(BodyOf(HttpGet(StartedProgram::PortOf(first), "/req?EnumPortSymbols(Mine)")), "OK\r\nA,B");
  EXPECT_THAT(StreamClient(StartedProgram::PortOf(second)).LogIn(), HasSubstr(">0<"));
}

TEST(Program, EndsWellWhenItIsToldTo) {
  for (const int signal : {SIGTERM, SIGINT}) {
    SCOPED_TRACE(signal);
    StartedProgram program = Start({});
    const auto port = StartedProgram::PortOf(program.ReadLine());
    const testing::TcpClient idle(port);
    program.Signal(signal);
    EXPECT_EQ(program.ExitCode(), 0);
  }
}

TEST(Program, ServesOnAtASignalThatItsStarterHasItIgnore) {
  const auto before = ::signal(SIGINT, SIG_IGN);
  StartedProgram program = Start({"--symbols", "A,B", "--portfolio", "Mine"});
  ::signal(SIGINT, before);
  const auto port = StartedProgram::PortOf(program.ReadLine());
  program.Signal(SIGINT);
  std::this_thread::sleep_for(200ms);  // it would be gone by then
  EXPECT_EQ(BodyOf(HttpGet(port, "/req?EnumPortSymbols(Mine)")), "OK\r\nA,B");
  program.Signal(SIGTERM);
  EXPECT_EQ(program.ExitCode(), 0);
}

TEST(Program, WritesItsPortsToAFileWholeAtOnce) {
  const TempDirectory directory;
  const std::string path = (directory / "ports").string();
  StartedProgram program = Start({"--port-file", path});
  const std::string first = program.ReadLine();
  const std::string second = program.ReadLine();
  EXPECT_EQ(FileText(path), first + "\n" + second + "\n");
}

TEST(Program, TellsAtTheEndHowManyQuotesItStreamed) {
  StartedProgram program = Start({"--count-quotes", "--rate", "0.001"});
  program.ReadLine();
  StreamClient client(StartedProgram::PortOf(program.ReadLine()));
  client.LogIn();
  client.Subscribe("A,B,C");
  client.ReadRecords(3);
  program.Signal(SIGTERM);
  EXPECT_EQ(program.ReadLine(), "quotes streamed 3");
  EXPECT_EQ(program.ExitCode(), 0);
}

TEST(Program, EndsWithItsParent) {
  const int output = StartedProgram::StartBelowAParentThatLeaves(
      {"--http-port", "0", "--stream-port", "0", "--exit-with-parent"});
  EXPECT_THAT(StartedProgram::ReadAll(output), StartsWith("HTTP port "))
      << "the end of its output is its own";
  ::close(output);
}

TEST(Program, OutlivesTheThreadThatStartedIt) {
  std::unique_ptr<StartedProgram> program;
  std::thread([&] {
    program = std::make_unique<StartedProgram>(
        std::vector<std::string>{"--http-port", "0", "--stream-port", "0", "--exit-with-parent"});
  }).join();
  const auto port = StartedProgram::PortOf(program->ReadLine());
  EXPECT_THAT(HttpGet(port, "/req?EnumPorts()"), HasSubstr("OK"));
  program->Signal(SIGTERM);
  EXPECT_EQ(program->ExitCode(), 0);
}

TEST(Program, LetsGoOfHttpClientsBeyondItsMost) {
  StartedProgram program = Start({});
  const auto port = StartedProgram::PortOf(program.ReadLine());
  std::vector<std::unique_ptr<testing::TcpClient>> clients;
  for (std::size_t i = 0; i < HttpServer::kMostConnections; ++i) {
    clients.push_back(std::make_unique<testing::TcpClient>(port));
  }
  EXPECT_EQ(testing::TcpClient(port).ReceiveAll(), "");
  for (const auto& client : {clients.front().get(), clients.back().get()}) {
    client->Send("GET /req?EnumPorts() HTTP/1.0\r\n\r\n");
    EXPECT_EQ(BodyOf(client->ReceiveAll()), "OK\r\nMain");
  }
  EXPECT_EQ(BodyOf(HttpGet(port, "/req?EnumPorts()")), "OK\r\nMain");
}

TEST(Program, ExplainsItself) {
  StartedProgram program({"--help"});
  const std::string help = program.AllOutput();
  EXPECT_EQ(program.ExitCode(), 0);
  for (const char* text : {"--listen",           "--http-port",      "--stream-port", "--port-file",
                           "--exit-with-parent", "--count-quotes",   "--seed",        "--symbols",
                           "--portfolio",        "--replay",         "--speed",       "--app-name",
                           "--app-secret-file",  "--server-version", "--rate",        "--kinds",
                           "--chunking",         "--chunk-pause",    "--play",        "--http-fault",
                           "--stream-fault",     "Replay file:",     "Faults:",       "Exit codes:",
                           "MireloDemo",         "demo-secret",      "16239",         "16240"}) {
    EXPECT_THAT(help, HasSubstr(text));
  }
}

TEST(Program, EndsWith2ForAMistakeInItsArguments) {
  struct Case {
    std::vector<std::string> arguments;
    const char* message;
  };
  for (const Case& c :
       {Case{{"--nonsense"}, "--nonsense"}, Case{{"--http-port", "70000"}, "--http-port"},
        Case{{"--http-port", "x"}, "--http-port"}, Case{{"--speed", "0"}, "--speed"},
        Case{{"--rate", "fast"}, "--rate: \"fast\" is neither max nor a number"},
        Case{{"--rate", "0"}, "--rate: \"0\""}, Case{{"--kinds", "L1,XYZ"}, "--kinds: \"XYZ\" is no kind"},
        Case{{"--chunking", "big"}, "--chunking: \"big\" is none of"},
        Case{{"--http-fault", "burn"}, "\"burn\" is no fault of a reply"},
        Case{{"--stream-fault", "drop@lunch"}, "\"lunch\" is no step of the stream"}}) {
    SCOPED_TRACE(c.message);
    StartedProgram program(c.arguments);
    EXPECT_THAT(program.AllErrors(), HasSubstr(c.message));
    EXPECT_EQ(program.ExitCode(), 2);
  }
}

TEST(Program, EndsWith1WhenItCannotServe) {
  Server holder;
  const std::string taken = std::to_string(holder.HttpPort());
  struct Case {
    std::vector<std::string> arguments;
    std::string message;
  };
  for (const Case& c : {Case{{"--http-port", taken}, "cannot listen on 127.0.0.1 port " + taken},
                        Case{{"--listen", "example"}, "cannot listen on example port"},
                        Case{{"--replay", "/nowhere.csv"}, "/nowhere.csv: cannot be read"},
                        Case{{"--replay", "/proc"}, "/proc: cannot be read: Is a directory"},
                        Case{{"--play", "/nowhere"}, "/nowhere: cannot be read"},
                        Case{{"--app-secret-file", "/nowhere"}, "/nowhere: holds no line that can be read"},
                        Case{{"--port-file", "/nowhere/ports"}, "/nowhere/ports: cannot be written"}}) {
    SCOPED_TRACE(c.message);
    std::vector<std::string> arguments{"--stream-port", "0"};
    if (c.arguments[0] != "--http-port") arguments.insert(arguments.end(), {"--http-port", "0"});
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    StartedProgram program(arguments);
    EXPECT_THAT(program.AllErrors(), StartsWith("quotetracker: " + c.message));
    EXPECT_EQ(program.ExitCode(), 1);
  }
}

TEST(Program, TakesReplayFaultsAndCredentialsFromItsArguments) {
  const TempDirectory directory;
  const std::string day = (directory / "day.csv").string();
  const std::string secret = (directory / "secret").string();
  std::ofstream(day) << "Ticker,Date,Time,Last\nA,12/30/2005,09:30:00,26.5\n";
  std::ofstream(secret) << "words of mine\r\nnot these\n";
  StartedProgram program =
      Start({"--replay", day, "--http-fault", "drop:2", "--app-name", "Mine", "--app-secret-file", secret,
             "--stream-fault", "drop@sources", "--stream-fault", "drop@streamer"});
  const auto http = StartedProgram::PortOf(program.ReadLine());
  const auto stream = StartedProgram::PortOf(program.ReadLine());
  EXPECT_THAT(BodyOf(HttpGet(http, "/req?GetLastQuote(A)")),
              StartsWith("OK\r\nA,12/30/2005,09:30:00,26.50,"));
  EXPECT_EQ(HttpGet(http, "/req?GetLastQuote(A)"), "");
  for (const char* message : {"<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>",
                              "<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>"}) {
    StreamClient client(stream);
    EXPECT_THAT(client.LogIn({"Mine", "words of mine"}), HasSubstr(">0<"));
    client.Say(message);
    EXPECT_EQ(client.Tcp().ReceiveAll(), "");
  }
}

TEST(Program, TellsTheColumnsOfAReplayInLinesOfATerminal) {
  StartedProgram program({"--help"});
  const std::string help = program.AllOutput();
  const auto from = help.find("\n  Ticker,");
  const auto until = help.find("    (Ticker", from);
  ASSERT_NE(from, std::string::npos);
  ASSERT_NE(until, std::string::npos);
  EXPECT_THAT(Split(help.substr(from + 3, until - from - 3), "\n  "),
              ::testing::Each(::testing::SizeIs(::testing::Le(110U))));
  EXPECT_EQ(Replace(help.substr(from + 3, until - from - 3), "\n  ", ""), ReplayColumns::Names());
}

TEST(Program, PlaysARecordedSession) {
  const TempDirectory directory;
  const std::string path = (directory / "session").string();
  {
    SessionWriter writer(path);
    writer.Add(0us, "OK");
    writer.Add(5'000'000us, "LO");
  }
  StartedProgram program = Start({"--play", path, "--speed", "1000"});
  program.ReadLine();
  EXPECT_EQ(testing::TcpClient(StartedProgram::PortOf(program.ReadLine())).ReceiveAll(), "OKLO");
}

}  // namespace
}  // namespace mirelo::quotetracker
