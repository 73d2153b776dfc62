// Whatever a server sends: a transfer ends in one of its last states or raises the component's one error,
// leaves nothing open, and hands over text only when it succeeded.
//
// The first three bytes of the input choose how the server behaves and what the client does; the rest is
// sent.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "adapters/curl/curl_internet.h"
#include "adapters/headless/system_clock.h"
#include "adapters/poll/poll_loop.h"
#include "automation/ansi.h"
#include "automation/runtime_error.h"
#include "closed_network.h"
#include "host/host.h"
#include "loop_server.h"
#include "snapshot/WinInet.h"
#include "support/test_host.h"

namespace mirelo::fuzz {
namespace {

constexpr std::size_t kMostPieces = 32;

void Require(bool holds) {
  if (!holds) std::abort();
}

// The machine lives as long as the process, as a program's does.
struct Machine {
  poll::PollLoop loop;
  headless::SystemClock clock;
  curl::CurlInternet internet{loop};
  LoopServer server{loop};
  testing::TestHost host;
  host::HostScope scope{host.Use(loop).Use(clock).Use(internet)};
};

class FuzzedTransfer {
 public:
  FuzzedTransfer(Machine& machine, std::uint8_t choices) : machine_(machine), choices_(choices) {
    static const char* const kVerbs[] = {"GET", "POST", "HEAD", "GET"};
    transfer_.HostName("127.0.0.1");
    transfer_.Port(static_cast<std::int16_t>(machine.server.Port()));
    transfer_.Resource("/req?GetLastQuote(MSFT)");
    transfer_.Method(kVerbs[choices & 3]);
    if (choices & 4) transfer_.PostQuery("a=1");
    transfer_.OnStateChanged.Subscribe([this](std::int32_t state) { OnState(state); });
    transfer_.OnProgress.Subscribe([this](float, std::int32_t, std::int32_t read) { OnProgress(read); });
  }

  void Run() {
    try {
      transfer_.Execute();
    } catch (const RuntimeError& error) {  // a content length that overflows
      Require(error.Number() == ErrorNumber(0x80040064));
      Require(states_ == std::vector<std::int32_t>{1, 3, 6, 7});
      Require(!transfer_.SuccessDone());
      return;
    }
    const bool finished = states_.back() == WinInet::kFinished;
    Require(finished || states_.back() == WinInet::kSendFailed || states_.back() == WinInet::kCancelled);
    Require(finished == transfer_.SuccessDone());
    Require(finished || transfer_.Response().empty());
    Require(!finished || TextToAnsi(transfer_.Response()).size() == static_cast<std::size_t>(read_));
  }

 private:
  void OnState(std::int32_t state) {
    states_.push_back(state);
    const bool nests = (choices_ & 8) != 0;
    if (nests && state == WinInet::kRequestSent) FuzzedTransfer(machine_, choices_ & 7).Run();
  }

  void OnProgress(std::int32_t read) {
    Require(read >= read_);
    read_ = read;
    const bool cancels = (choices_ & 16) != 0;
    if (cancels && read > 0) transfer_.Cancel();
  }

  Machine& machine_;
  std::uint8_t choices_;
  WinInet transfer_;
  std::vector<std::int32_t> states_;
  std::int32_t read_ = 0;
};

ServerScript Script(const std::uint8_t* data, std::size_t size) {
  ServerScript script;
  script.bytes.assign(reinterpret_cast<const char*>(data + 3), size - 3);
  script.piece = std::max<std::size_t>(data[1], script.bytes.size() / kMostPieces + 1);
  script.hasty = (data[2] & 4) != 0;
  script.ending = static_cast<ServerScript::Ending>((data[2] & 3) % 3);
  return script;
}

}  // namespace
}  // namespace mirelo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelo::fuzz;
  if (size < 3) return 0;
  static auto& machine = *new Machine;
  AllowPort(machine.server.Port());
  machine.server.Serve(Script(data, size));
  FuzzedTransfer(machine, data[0]).Run();
  machine.server.Serve({});
  // A raised error leaves them open. They are never given twice, so those of earlier runs need no second
  // look.
  static mirelo::host::WinInetApi::Handle handle = 0;
  while (machine.internet.OpenHandles() > 0) machine.internet.InternetCloseHandle(++handle);
  return 0;
}
