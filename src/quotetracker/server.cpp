#include "quotetracker/server.h"

#include <deque>
#include <future>
#include <utility>

#include "quotetracker/http_server.h"
#include "quotetracker/market.h"
#include "quotetracker/reactor.h"
#include "quotetracker/request_interface.h"
#include "quotetracker/socket.h"

namespace mirelo::quotetracker {

// All that the loop's thread works on, in the order in which it is made.
struct Server::Parts {
  explicit Parts(ServerOptions options)
      : quotes(options.quotes ? std::move(options.quotes) : std::make_unique<Market>(options.seed)),
        portfolios(std::move(options.portfolios)),
        requests(*quotes, portfolios),
        http(
            reactor, ListenOn(options.listen, options.http_port),
            [this](std::string_view resource) { return AnswerRequest(resource); }, options.seed) {
    http.SetFault(options.http_fault);
  }

  std::string AnswerRequest(std::string_view resource) {
    if (remembered.size() == kMostRemembered) remembered.pop_front();
    remembered.emplace_back(resource);
    return requests.Answer(resource);
  }

  Reactor reactor;
  std::unique_ptr<QuoteSource> quotes;
  Portfolios portfolios;
  RequestInterface requests;
  std::deque<std::string> remembered;
  HttpServer http;
};

Server::Server(ServerOptions options)
    : parts_(std::make_unique<Parts>(std::move(options))),
      http_port_(parts_->http.Port()),
      thread_([this] { parts_->reactor.Run(); }) {}

Server::~Server() {
  parts_->reactor.Stop();
  thread_.join();
}

std::vector<std::string> Server::Requests() const {
  std::vector<std::string> requests;
  OnLoop([&] { requests.assign(parts_->remembered.begin(), parts_->remembered.end()); });
  return requests;
}

std::vector<Portfolios::Portfolio> Server::PortfoliosNow() const {
  std::vector<Portfolios::Portfolio> portfolios;
  OnLoop([&] { portfolios = parts_->portfolios.All(); });
  return portfolios;
}

void Server::SetHttpFault(HttpFaultPlan plan) {
  OnLoop([&] { parts_->http.SetFault(plan); });
}

void Server::OnLoop(const std::function<void()>& work) const {
  std::promise<void> done;
  parts_->reactor.Post([&] {
    work();
    done.set_value();
  });
  done.get_future().wait();
}

}  // namespace mirelo::quotetracker
