#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "quotetracker/command_line.h"
#include "quotetracker/ending.h"
#include "quotetracker/server.h"
#include "terminal/standard_streams.h"

namespace {

using mirelo::quotetracker::CommandLine;
using mirelo::quotetracker::Ending;
using mirelo::quotetracker::ReadCommandLine;
using mirelo::quotetracker::Server;
using mirelo::terminal::Err;
using mirelo::terminal::Indented;
using mirelo::terminal::Out;

// Whoever waits for the file finds it whole or not at all.
void WritePortFile(const std::string& path, const std::string& ports) {
  const std::string unfinished = path + ".new";
  std::ofstream file(unfinished);
  file << ports;
  file.close();
  if (!file) throw std::runtime_error(path + ": cannot be written");
  std::filesystem::rename(unfinished, path);
}

int Serve(CommandLine command) {
  Ending ending(command.exit_with_parent);
  command.server.complain = [](const std::string& message) { Err() << message << "\n"; };
  Server server(std::move(command.server));
  const std::string ports = "HTTP port " + std::to_string(server.HttpPort()) + "\nstream port " +
                            std::to_string(server.StreamPort()) + "\n";
  if (!command.port_file.empty()) WritePortFile(command.port_file, ports);
  Out() << mirelo::terminal::Lines(ports);
  Out().Flush();
  ending.Wait();
  if (command.count_quotes) Out() << "quotes streamed " << server.QuotesStreamed() << "\n";
  return 0;
}

int Run(int argc, char** argv) try {
  int exit_code = 0;
  auto command = ReadCommandLine(argc, argv, exit_code);
  return command ? Serve(*std::move(command)) : exit_code;
} catch (const std::exception& error) {
  Err() << "quotetracker: " << Indented(error.what()) << "\n";
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  mirelo::terminal::PrepareStandardStreams();
  const int exit_code = Run(argc, argv);
  Out().Flush();
  if (Out().Good() || Out().ReaderHasGone()) return exit_code;
  Err() << "quotetracker: cannot write the output: " << Out().Trouble() << "\n";
  return 1;
}
