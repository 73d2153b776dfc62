// Listens to QuoteTracker's Level I stream and prints the first quotes as they come:
//
//   stream 16240 "Arbor Financial (delayed)" 10 MSFT IBM
//
// The first argument is QuoteTracker's stream port, the second one of the quote sources that mirelo sources
// shows (fetch them with mirelo sources --update), the third how many quotes to print. The stream needs
// credentials: mirelo credentials set.

#include <mirelo.h>

#include <chrono>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

// A login that is refused is told to nobody: the quotes just do not come.
constexpr std::chrono::seconds kPatience{30};

void Print(const mirelo::cQTData& quote) {
  std::cout << quote.Symbol() << '\t' << quote.DateQT() << '\t' << quote.TimeQT() << '\t'
            << quote.Last_Price() << '\t' << quote.Last_Volume() << '\n';
}

int Run(const std::string& port, const std::string& source, int wanted,
        const std::vector<std::string>& tickers) {
  mirelo::LinuxHost machine;
  const mirelo::host::HostScope installed(machine);
  machine.Override("SocketPort", port);  // in place of the setting, and for this run only

  mirelo::cMirelo facade;
  facade.StatusRunWorkQT(mirelo::Status_LEVEL_I_FULL_QUOTE);  // what the conversation is for

  // Shared, so that a handler may let go of it.
  const auto stream = std::make_shared<mirelo::cQTStreaming>();
  const std::string file = stream->GiveStreamerFile(source);
  if (file.empty()) {
    std::cerr << "no quote source is named \"" << source << "\"\n";
    return 1;
  }
  stream->Owner(&facade);
  stream->arrTickers(mirelo::VariantArray::OfTexts(tickers));
  stream->st_StreamerFile(file);
  stream->DovantaFormatUserDate("yyyy-mm-dd");
  stream->StartStop(true);  // deliver

  // The stream tells its progress in words for people, but not that the peer has gone: the machine does.
  bool lost = false;
  stream->OnStatusText.Subscribe([](const std::string& text) { std::cerr << text << '\n'; });
  machine.ConnectionDropped.Subscribe([&](const std::string& reason) {
    std::cerr << reason << '\n';
    lost = true;
  });

  // Each time quotes wait: take all, look at them, give them back. They come in the order in which they were
  // sent, and the next ones wait until this returns.
  int printed = 0;
  stream->QTDatas.Subscribe([&] {
    if (const auto quotes = stream->GetQTData()) {
      for (const auto& quote : *quotes) {
        if (printed < wanted) Print(*quote);
        ++printed;
      }
    }
    stream->FreeQTDataBuffer();
  });

  // Returns at once; all else happens in the machine's message loop.
  stream->connect();
  bool late = false;
  machine.loop().StartTimer(kPatience, [&] { late = true; });
  machine.loop().RunUntil([&] { return lost || late || printed >= wanted; });

  if (!lost) stream->stop_sub();
  stream->DisConnect();
  stream->Owner(nullptr);  // the facade goes before the stream's last reference may
  return printed >= wanted ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const int wanted = argc < 5 ? 0 : std::atoi(argv[3]);
  if (wanted <= 0) {
    std::cerr << "usage: stream PORT SOURCE COUNT TICKER...\n";
    return 2;
  }
  try {
    return Run(argv[1], argv[2], wanted, {argv + 4, argv + argc});
  } catch (const std::exception& error) {  // failures of the library are mirelo::RuntimeError
    std::cerr << "error: " << error.what() << '\n';
    return 1;
  }
}
