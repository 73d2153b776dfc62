// stand_in PORT_FILE: serves as QuoteTracker does, at two free ports. Writes their numbers into the file,
// whole at once, and ends when the file is gone.

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "quotetracker/server.h"

namespace {

constexpr std::chrono::milliseconds kBetweenLooks(100);
// Whoever started it may have been killed.
constexpr std::chrono::minutes kLongest(10);

void Serve(const std::filesystem::path& port_file) {
  const mirelo::quotetracker::Server server;
  std::filesystem::path unfinished = port_file;
  unfinished += ".new";
  std::ofstream(unfinished, std::ios::binary)
      << "HTTP port " << server.HttpPort() << "\nstream port " << server.StreamPort() << "\n";
  std::filesystem::rename(unfinished, port_file);
  const auto end = std::chrono::steady_clock::now() + kLongest;
  while (std::filesystem::exists(port_file) && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 2) return 2;
  Serve(arguments[1]);
  return 0;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "stand_in: %s\n", failure.what());
  return 1;
}
