#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/answering_internet.h"

namespace mirelo::testing {

// A QuoteTracker of one portfolio whose replies a test can replace; nothing for one that does not answer.
class ScriptedPortfolios {
 public:
  std::optional<std::string> names = "OK\r\nMain,Other\r\n";
  std::optional<std::string> symbols = "OK\r\nMSFT,IBM,GE\r\n";
  std::optional<std::string> added = "OK\r\n";

  // Done before each request is answered.
  std::function<void(const std::string& resource)> on_request;

  std::optional<std::string> operator()(const AnsweringInternet::Request& request) const {
    if (on_request) on_request(request.resource);
    if (request.resource == "/req?EnumPorts()") return names;
    if (request.resource.starts_with("/req?EnumPortSymbols(")) return symbols;
    if (request.resource.starts_with(kAdd)) return added;
    return "ERROR";
  }

  // The lists that requests have added, in order.
  static std::vector<std::string> Added(const std::vector<std::string>& resources) {
    std::vector<std::string> lists;
    for (const std::string& resource : resources) {
      if (!resource.starts_with(kAdd)) continue;
      lists.push_back(resource.substr(kAdd.size(), resource.size() - kAdd.size() - 1));
    }
    return lists;
  }

 private:
  static constexpr std::string_view kAdd = "/req?AddStocksToPort(CURRENT,";
};

}  // namespace mirelo::testing
