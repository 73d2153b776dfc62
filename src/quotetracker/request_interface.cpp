#include "quotetracker/request_interface.h"

#include <array>
#include <span>

#include "quotetracker/ascii.h"
#include "quotetracker/command.h"

namespace mirelo::quotetracker {
namespace {

constexpr std::string_view kLineBreak = "\r\n";
constexpr std::size_t kRecordLength = 160;  // about; for reserving

// The line behind "OK" that lists names.
template <typename Range, typename Name>
std::string ListReply(const Range& items, Name name) {
  std::string reply = "OK\r\n";
  bool first = true;
  for (const auto& item : items) {
    if (!first) reply += ',';
    first = false;
    reply += name(item);
  }
  return reply;
}

}  // namespace

std::string RequestInterface::Answer(std::string_view resource) {
  struct Known {
    std::string_view name;
    std::string (RequestInterface::*answer)(const Command&);
  };
  static constexpr std::array kCommands{
      Known{"GetLastQuote", &RequestInterface::GetLastQuote},
      Known{"EnumPorts", &RequestInterface::EnumPorts},
      Known{"EnumPortSymbols", &RequestInterface::EnumPortSymbols},
      Known{"AddStocksToPort", &RequestInterface::AddStocksToPort},
  };

  const auto command = ParseCommand(resource);
  if (!command) return "ERROR: a request has the form /req?Command(argument,...)";
  for (const Known& known : kCommands) {
    if (SameText(known.name, command->name)) return (this->*known.answer)(*command);
  }
  return "ERROR: unknown command " + command->name;
}

std::string RequestInterface::GetLastQuote(const Command& command) {
  std::string reply = "OK";
  reply.reserve(command.arguments.size() * kRecordLength + reply.size());
  for (const std::string& ticker : command.arguments) {
    reply += kLineBreak;
    AppendRecord(reply, ticker, quotes_.Look(ticker));
  }
  return reply;
}

std::string RequestInterface::EnumPorts(const Command&) {
  return ListReply(portfolios_.All(),
                   [](const auto& portfolio) -> const std::string& { return portfolio.name; });
}

std::string RequestInterface::EnumPortSymbols(const Command& command) {
  const auto* portfolio = command.arguments.size() == 1 ? portfolios_.Find(command.arguments[0]) : nullptr;
  if (portfolio == nullptr) return "ERROR: no such portfolio";
  return ListReply(portfolio->symbols,
                   [](const std::string& symbol) -> const std::string& { return symbol; });
}

std::string RequestInterface::AddStocksToPort(const Command& command) {
  if (command.arguments.empty()) return "ERROR: no portfolio named";
  const std::span symbols = std::span(command.arguments).subspan(1);
  return portfolios_.Add(command.arguments[0], symbols) ? "OK" : "ERROR: no such portfolio, or no room in it";
}

}  // namespace mirelo::quotetracker
