#pragma once

#include <string>
#include <string_view>

#include "quotetracker/portfolios.h"
#include "quotetracker/quote_source.h"

namespace mirelo::quotetracker {

struct Command;

// Answers the commands of the HTTP interface. A reply is text in lines joined by CR LF, with no line break
// behind the last; its first line is "OK" when the command was understood and an explanation otherwise.
//
//   GetLastQuote(ticker,...)        one record a ticker, in their order (AppendRecord)
//   EnumPorts()                     one line: the names of the portfolios, joined by commas
//   EnumPortSymbols(name)           one line: the symbols of a portfolio, joined by commas
//   AddStocksToPort(name,symbol,...)  nothing more; the name may be CURRENT
//
// Names of commands are compared without regard to case.
class RequestInterface {
 public:
  // Both are used, not owned, and outlive the interface.
  RequestInterface(QuoteSource& quotes, Portfolios& portfolios) : quotes_(quotes), portfolios_(portfolios) {}

  // The reply to the resource of a request, such as "/req?EnumPorts()".
  std::string Answer(std::string_view resource);

 private:
  std::string GetLastQuote(const Command& command);
  std::string EnumPorts(const Command& command);
  std::string EnumPortSymbols(const Command& command);
  std::string AddStocksToPort(const Command& command);

  QuoteSource& quotes_;
  Portfolios& portfolios_;
};

}  // namespace mirelo::quotetracker
