// Whatever a server may send: a transfer ends in one of its last states or raises the component's one error,
// leaves nothing open, stays within its limits, and hands over text only when it succeeded. A client makes
// several transfers in a row, for what one reply leaves behind may be the next one's undoing.
//
// The first three bytes of the input choose how the server behaves and what the client does; the rest is
// sent, cut into the replies of one connection after the other.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
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

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostPieces = 32;
constexpr std::size_t kMostReplies = 8;
constexpr std::string_view kNextReply = "\n=next=\n";
constexpr std::string_view kLong = "=long=";  // stands for more than libcurl takes of a line
constexpr std::size_t kLongSize = 110'000;
constexpr std::chrono::seconds kPause{45};  // between pieces of a server that drips
constexpr curl::Limits kSmall{.head = 512, .body = 256, .redirects = 2};

void Require(bool holds) {
  if (!holds) std::abort();
}

struct Choices {
  Choices(std::uint8_t client, std::uint8_t server)
      : verb(client & 3),
        posts(client & 4),
        nests(client & 8),
        cancels(client & 16),
        whole(client & 32),
        drips(client & 64),
        limits(client & 128 ? kSmall : curl::Limits{}),
        ending(static_cast<ServerScript::Ending>((server & 3) % 3)),
        hasty(server & 4) {}

  int verb;
  bool posts, nests, cancels, whole, drips;
  curl::Limits limits;
  ServerScript::Ending ending;
  bool hasty;
};

// What lives as long as the process, as it does in a program.
struct Machine {
  Clock::duration ahead{};  // of the machine's time
  poll::PollLoop loop{[this] { return Clock::now() + ahead; }};
  headless::SystemClock clock;
  LoopServer server{loop};
};

class Client {
 public:
  Client(Machine& machine, const Choices& choices)
      : machine_(machine),
        choices_(choices),
        internet_(
            machine.loop, [&machine] { return Clock::now() + machine.ahead; }, choices.limits) {
    if (choices.whole) internet_.WaitForWholeReplies();
    internet_.BrokenOff.Subscribe([this](const std::string&) { ++told_; });
  }

  void Fetch(bool nests) {
    const int told_before = told_;
    const auto began = machine_.ahead;
    Transfer transfer(*this, nests);
    transfer.Run();
    if (nests) return;
    Require(told_ <= told_before + 1);
    if (!choices_.whole) return;
    Require(told_ == told_before || !transfer.Succeeded());
    // Connections that the client has left drip on for a moment.
    Require(machine_.ahead - began <= choices_.limits.time + 5 * kPause);
  }

  void ExpectNothingOpen() {
    // A raised error leaves its handles open.
    if (!raised_) Require(internet_.OpenHandles() == 0);
  }

 private:
  class Transfer {
   public:
    Transfer(Client& client, bool nests) : client_(client), nests_(nests) {
      static const char* const kVerbs[] = {"GET", "POST", "HEAD", "GET"};
      transfer_.HostName("127.0.0.1");
      transfer_.Port(static_cast<std::int16_t>(client.machine_.server.Port()));
      transfer_.Resource("/req?GetLastQuote(MSFT)");
      transfer_.Method(kVerbs[client.choices_.verb]);
      if (client.choices_.posts) transfer_.PostQuery("a=1");
      transfer_.OnStateChanged.Subscribe([this](std::int32_t state) { OnState(state); });
      transfer_.OnProgress.Subscribe([this](float, std::int32_t, std::int32_t read) { OnProgress(read); });
    }

    bool Succeeded() const { return transfer_.SuccessDone(); }

    void Run() {
      try {
        transfer_.Execute();
      } catch (const RuntimeError& error) {  // a content length that overflows
        Require(error.Number() == ErrorNumber(0x80040064));
        Require(states_ == std::vector<std::int32_t>{1, 3, 6, 7});
        Require(!transfer_.SuccessDone());
        client_.raised_ = true;
        return;
      }
      const bool finished = states_.back() == WinInet::kFinished;
      Require(finished || states_.back() == WinInet::kSendFailed || states_.back() == WinInet::kCancelled);
      Require(finished == transfer_.SuccessDone());
      Require(finished || transfer_.Response().empty());
      if (!finished) return;
      const std::size_t size = TextToAnsi(transfer_.Response()).size();
      Require(size == static_cast<std::size_t>(read_) && size <= client_.choices_.limits.body);
    }

   private:
    void OnState(std::int32_t state) {
      states_.push_back(state);
      if (nests_ && state == WinInet::kRequestSent) client_.Fetch(false);
    }

    void OnProgress(std::int32_t read) {
      Require(read >= read_);
      read_ = read;
      if (client_.choices_.cancels && read > 0) transfer_.Cancel();
    }

    Client& client_;
    bool nests_;
    WinInet transfer_;
    std::vector<std::int32_t> states_;
    std::int32_t read_ = 0;
  };

  Machine& machine_;
  const Choices& choices_;
  curl::CurlInternet internet_;
  testing::TestHost host_;
  host::HostScope scope_{host_.Use(machine_.loop).Use(machine_.clock).Use(internet_)};
  int told_ = 0;
  bool raised_ = false;
};

std::string WithLongParts(std::string text) {
  const std::size_t place = text.find(kLong);  // one a reply is enough
  if (place != std::string::npos) text.replace(place, kLong.size(), kLongSize, '9');
  return text;
}

std::vector<std::string> Replies(std::string_view bytes) {
  std::vector<std::string> replies;
  while (replies.size() + 1 < kMostReplies) {
    const std::size_t end = bytes.find(kNextReply);
    if (end == std::string_view::npos) break;
    replies.push_back(WithLongParts(std::string(bytes.substr(0, end))));
    bytes.remove_prefix(end + kNextReply.size());
  }
  replies.push_back(WithLongParts(std::string(bytes)));
  return replies;
}

ServerScript Script(Machine& machine, const Choices& choices, std::uint8_t piece, std::string_view bytes) {
  ServerScript script;
  script.replies = Replies(bytes);
  std::size_t longest = 0;
  for (const std::string& reply : script.replies) longest = std::max(longest, reply.size());
  script.piece = std::max<std::size_t>(piece, longest / kMostPieces + 1);
  script.hasty = choices.hasty;
  script.ending = choices.ending;
  if (choices.drips) script.before_piece = [&machine] { machine.ahead += kPause; };
  return script;
}

}  // namespace
}  // namespace mirelo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelo::fuzz;
  if (size < 3) return 0;
  static auto& machine = *new Machine;
  const Choices choices(data[0], data[2]);
  const std::string_view bytes(reinterpret_cast<const char*>(data + 3), size - 3);
  AllowPort(machine.server.Port());
  ServerScript script = Script(machine, choices, data[1], bytes);
  const std::size_t transfers = script.replies.size();
  machine.server.Serve(std::move(script));
  {
    Client client(machine, choices);
    for (std::size_t i = 0; i < transfers; ++i) client.Fetch(choices.nests);
    client.ExpectNothingOpen();
  }
  machine.server.Serve({});
  return 0;
}
