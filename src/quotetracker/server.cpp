#include "quotetracker/server.h"

#include <deque>
#include <future>
#include <utility>

#include "quotetracker/http_server.h"
#include "quotetracker/market.h"
#include "quotetracker/playback.h"
#include "quotetracker/request_interface.h"
#include "quotetracker/server_loop.h"
#include "quotetracker/session_file.h"
#include "quotetracker/socket.h"
#include "quotetracker/stream_server.h"

namespace mirelo::quotetracker {

// All that the loop's thread works on, in the order in which it is made.
struct Server::Parts {
  explicit Parts(ServerOptions given)
      : options(std::move(given)),
        quotes(options.quotes ? std::move(options.quotes) : std::make_unique<Market>(options.seed)),
        portfolios(std::move(options.portfolios)),
        requests(*quotes, portfolios),
        stream_faults(options.stream.faults),
        http(
            loop.Events(), ListenOn(options.listen, options.http_port),
            [this](std::string_view resource) { return AnswerRequest(resource); }, options.seed),
        stream(loop.Events(), ListenOn(options.listen, options.stream_port),
               [this](poll::Descriptor socket, std::uint64_t number, std::function<void()> ended) {
                 return MakePeer(std::move(socket), number, std::move(ended));
               }) {
    if (!options.play.empty()) CheckSession(options.play);
    http.SetFault(options.http_fault);
  }

  std::string AnswerRequest(std::string_view resource) {
    Remember(asked, resource);
    return requests.Answer(resource);
  }

  std::unique_ptr<StreamPeer> MakePeer(poll::Descriptor socket, std::uint64_t number,
                                       std::function<void()> ended) {
    if (!options.play.empty()) {
      return std::make_unique<Playback>(loop.Events(), std::move(socket), options.play, options.play_speed,
                                        options.complain, std::move(ended));
    }
    return std::make_unique<StreamConnection>(
        loop.Events(), std::move(socket), *quotes, options.stream, stream_faults, quotes_streamed,
        options.seed + number, [this](std::string_view message) { Remember(overheard, message); },
        std::move(ended));
  }

  static void Remember(std::deque<std::string>& memory, std::string_view text) {
    if (memory.size() == kMostRemembered) memory.pop_front();
    memory.emplace_back(text);
  }

  ServerLoop loop;
  ServerOptions options;
  std::unique_ptr<QuoteSource> quotes;
  Portfolios portfolios;
  RequestInterface requests;
  std::vector<StreamFaultPlan> stream_faults;
  std::uint64_t quotes_streamed = 0;
  std::deque<std::string> asked;
  std::deque<std::string> overheard;
  HttpServer http;
  StreamServer stream;
};

template <typename Work>
auto Server::OnLoop(Work work) const {
  std::promise<decltype(work())> done;
  parts_->loop.Post([&] { done.set_value(work()); });
  return done.get_future().get();
}

Server::Server(ServerOptions options)
    : parts_(std::make_unique<Parts>(std::move(options))),
      http_port_(parts_->http.Port()),
      stream_port_(parts_->stream.Port()),
      thread_([this] { parts_->loop.Run(); }) {}

Server::~Server() {
  parts_->loop.Stop();
  thread_.join();
}

std::vector<std::string> Server::Requests() const {
  return OnLoop([&] { return std::vector<std::string>(parts_->asked.begin(), parts_->asked.end()); });
}

std::vector<std::string> Server::StreamMessages() const {
  return OnLoop([&] { return std::vector<std::string>(parts_->overheard.begin(), parts_->overheard.end()); });
}

std::vector<Portfolios::Portfolio> Server::PortfoliosNow() const {
  return OnLoop([&] { return parts_->portfolios.All(); });
}

std::size_t Server::StreamConnections() const {
  return OnLoop([&] { return parts_->stream.Connections(); });
}

std::uint64_t Server::QuotesStreamed() const {
  return OnLoop([&] { return parts_->quotes_streamed; });
}

void Server::SetHttpFault(HttpFaultPlan plan) {
  OnLoop([&] { return parts_->http.SetFault(plan), true; });
}

void Server::SetStreamFaults(std::vector<StreamFaultPlan> plans) {
  OnLoop([&] { return parts_->stream_faults = std::move(plans), true; });
}

}  // namespace mirelo::quotetracker
