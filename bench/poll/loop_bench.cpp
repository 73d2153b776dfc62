#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "adapters/poll/poll_winsock_library.h"
#include "poll/client.h"
#include "support/loopback_server.h"
#include "support/socket_pair.h"

// What the loop costs above the system calls that it can't do without. Each family comes bare and through the
// loop.

namespace mirelo::poll {
namespace {

using std::chrono::milliseconds;
using testing::SocketPair;
using Pairs = std::vector<std::unique_ptr<SocketPair>>;

Pairs MakePairs(std::size_t count) {
  Pairs pairs(count);
  for (auto& pair : pairs) pair = std::make_unique<SocketPair>();
  return pairs;
}

void ReadOne(const SocketPair& pair) {
  char byte = 0;
  benchmark::DoNotOptimize(::recv(pair.near, &byte, 1, 0));
}

// One of `range` watched descriptors is ready: poll and read one byte.
void BarePoll(benchmark::State& state) {
  const Pairs pairs = MakePairs(static_cast<std::size_t>(state.range(0)));
  std::vector<pollfd> set;
  for (const auto& pair : pairs) set.push_back({pair->near, POLLIN, 0});
  for (auto _ : state) {
    pairs.back()->Write("x");
    ::poll(set.data(), set.size(), 0);
    for (std::size_t i = 0; i < set.size(); ++i) {
      if (set[i].revents != 0) ReadOne(*pairs[i]);
    }
  }
}
BENCHMARK(BarePoll)->Name("loop/bare_poll")->Arg(1)->Arg(10)->Arg(300);

void LoopStep(benchmark::State& state) {
  const Pairs pairs = MakePairs(static_cast<std::size_t>(state.range(0)));
  PollLoop loop;
  for (const auto& pair : pairs) {
    loop.Watch(pair->near, PollLoop::kRead, [own = pair.get()](unsigned) { ReadOne(*own); });
  }
  for (auto _ : state) {
    pairs.back()->Write("x");
    loop.Yield();
  }
}
BENCHMARK(LoopStep)->Name("loop/step")->Arg(1)->Arg(10)->Arg(300);

// Starts and stops a timer while `range` others wait, against the ordered map that a bare version would keep.
void BareTimer(benchmark::State& state) {
  std::multimap<std::int64_t, int> timers;
  for (int i = 0; i < state.range(0); ++i) timers.emplace(1'000'000'000 + i, i);
  std::int64_t due = 1'000'000'000;
  for (auto _ : state) {
    due += 7919;
    timers.erase(timers.emplace(due % 2'000'000'000, 0));
  }
}
BENCHMARK(BareTimer)->Name("loop/bare_timer")->Arg(10)->Arg(10'000);

void LoopTimer(benchmark::State& state) {
  PollLoop loop([] { return PollLoop::Time{}; });
  for (int i = 0; i < state.range(0); ++i) loop.StartTimer(milliseconds(1'000 + i), [] {});
  int delay = 0;
  for (auto _ : state) {
    delay = (delay + 7919) % 20'000;
    loop.StopTimer(loop.StartTimer(milliseconds(delay), [] {}));
  }
}
BENCHMARK(LoopTimer)->Name("loop/timer")->Arg(10)->Arg(10'000);

// A TCP stream in chunks of 8192 bytes from a server thread: blocking reads, and the socket library's events.
constexpr std::size_t kChunk = host::SocketConnection::kChunkLimit;

void Flood(testing::LoopbackServer::Peer& peer) {
  const std::string bytes(1 << 20, 'x');
  while (peer.Send(bytes)) {
  }
}

void BareStream(benchmark::State& state) {
  testing::LoopbackServer server(Flood);
  const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(server.Port());
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  std::array<std::uint8_t, kChunk> chunk;
  for (auto _ : state) ::recv(socket, chunk.data(), chunk.size(), MSG_WAITALL);
  ::close(socket);
}
BENCHMARK(BareStream)->Name("loop/bare_stream");

struct Counter final : host::BytesTransferEvents {
  std::size_t bytes = 0;
  void OnBytesReceived(host::SocketConnection&, std::span<const std::uint8_t> chunk) override {
    bytes += chunk.size();
  }
};

void ConnectionStream(benchmark::State& state) {
  testing::LoopbackServer server(Flood);
  PollLoop loop;
  PollWinsockLibrary library(loop);
  Client client(library);
  client.connection->Unsubscribe(client.bytes_id);
  const auto counter = std::make_shared<Counter>();
  client.connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(counter),
                               host::SocketConnection::kBytesTransfer);
  client.Connect(server.Address());
  std::size_t wanted = 0;
  for (auto _ : state) {
    wanted += kChunk;
    loop.RunUntil([&] { return counter->bytes >= wanted; });
  }
}
BENCHMARK(ConnectionStream)->Name("loop/stream");

}  // namespace
}  // namespace mirelo::poll

BENCHMARK_MAIN();
