#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quotetracker/command.h"
#include "quotetracker/http_request.h"
#include "quotetracker/market.h"
#include "quotetracker/request_interface.h"

using namespace mirelo::quotetracker;

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

// The lines that a reply to a resource has, whatever its arguments hold.
std::size_t LinesOf(std::string_view resource, const std::string& reply) {
  if (!reply.starts_with("OK")) return 1;
  const auto command = ParseCommand(resource);
  const bool quotes = command->name.size() == std::string_view("GetLastQuote").size();
  const bool adds = command->name.size() == std::string_view("AddStocksToPort").size() && reply == "OK";
  return quotes ? 1 + command->arguments.size() : adds ? 1 : 2;
}

}  // namespace

// What a client sends over HTTP is parsed, and answered if it is a request; the same bytes also stand for a
// resource.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view received(reinterpret_cast<const char*>(data), size);
  const HttpParse parse = ParseHttpRequest(received);
  Require((parse.state == HttpParse::State::kRefused) == !parse.refusal.empty());

  static Market market(
      1, [] { return Moment{}; }, 1000);
  Portfolios portfolios({{"Main", {"MSFT", "IBM"}}});
  RequestInterface requests(market, portfolios);
  for (const std::string_view resource : {parse.request.resource, received}) {
    const std::string reply = requests.Answer(resource);
    const auto breaks = static_cast<std::size_t>(std::ranges::count(reply, '\n'));
    Require(breaks == static_cast<std::size_t>(std::ranges::count(reply, '\r')));
    Require(breaks + 1 == LinesOf(resource, reply));
  }
  return 0;
}
