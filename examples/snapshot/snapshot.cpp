// Asks QuoteTracker twice for the quotes of some tickers, a second apart, as a spreadsheet's macros do:
//
//   snapshot 16239 MSFT IBM
//
// The first argument is the port of QuoteTracker's HTTP interface. All else that can be set is read from the
// settings that the program mirelo keeps.

#include <mirelo.h>

#include <chrono>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

// One look at the market. False when QuoteTracker gave no answer.
bool PrintQuotes(mirelo::cMirelo& facade, const mirelo::Variant& tickers) {
  const mirelo::Variant reply = facade.GetLastQuote(tickers);
  if (!reply.IsArray()) return false;

  const mirelo::VariantArray& table = reply.AsArray();
  for (auto row = table.LBound(1); row <= table.UBound(1); ++row) {
    for (auto column = table.LBound(2); column <= table.UBound(2); ++column) {
      std::cout << table(row, column).ToText() << (column < table.UBound(2) ? '\t' : '\n');
    }
  }
  return true;
}

// Lets the machine's message loop run meanwhile. A program without a loop of its own waits like this.
void Pause(mirelo::host::MessageLoop& loop, std::chrono::milliseconds time) {
  bool over = false;
  loop.StartTimer(time, [&] { over = true; });
  loop.RunUntil([&] { return over; });
}

int Run(int port, const std::vector<std::string>& tickers) {
  mirelo::LinuxHost machine;
  const mirelo::host::HostScope installed(machine);
  // In place of what the user chose in the settings dialog, and for this run only.
  machine.OverrideHttpPort(port);
  machine.Override("ListRight", "Ticker,Last,LastVolume,Date,Time");

  mirelo::cMirelo facade;
  facade.DovantaFormatUserDate("yyyy-mm-dd");
  // The columns, once before the first request and again whenever they change.
  facade.LoadMasPosition();
  // The memory of LastVolume, the volume since the request before: a row for each ticker, which the library
  // fills. On the first look LastVolume is 0.
  facade.masPrevVolume(mirelo::VariantArray(1, static_cast<std::int32_t>(tickers.size()), 1, 2));

  const mirelo::Variant list = mirelo::VariantArray::OfTexts(tickers);
  std::cout << "Ticker\tLast\tLastVolume\tDate\tTime\n";
  if (!PrintQuotes(facade, list)) return 1;  // the message was shown on the machine's desktop: the terminal
  Pause(machine.loop(), std::chrono::seconds(1));
  return PrintQuotes(facade, list) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: snapshot PORT TICKER...\n";
    return 2;
  }
  try {
    return Run(std::stoi(argv[1]), {argv + 2, argv + argc});
  } catch (const std::exception& error) {  // failures of the library are mirelo::RuntimeError
    std::cerr << "error: " << error.what() << '\n';
    return 1;
  }
}
