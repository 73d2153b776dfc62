#include "quotetracker/http_fault.h"

#include <array>
#include <stdexcept>
#include <string>

namespace mirelo::quotetracker {
namespace {

struct HttpFaultName {
  std::string_view text;
  HttpFault fault;
};

constexpr std::array kHttpFaultNames{
    HttpFaultName{"none", HttpFault::kNone},
    HttpFaultName{"drop", HttpFault::kDrop},
    HttpFaultName{"reset", HttpFault::kReset},
    HttpFaultName{"stall", HttpFault::kStall},
    HttpFaultName{"truncate-head", HttpFault::kTruncateHead},
    HttpFaultName{"truncate-body", HttpFault::kTruncateBody},
    HttpFaultName{"garbage", HttpFault::kGarbage},
    HttpFaultName{"wrong-status", HttpFault::kWrongStatus},
    HttpFaultName{"short-length", HttpFault::kShortLength},
    HttpFaultName{"long-length", HttpFault::kLongLength},
};

}  // namespace

HttpFaultPlan HttpFaultPlan::Parse(std::string_view text, std::uint64_t seed) {
  const auto colon = text.find(':');
  const auto wanted = text.substr(0, colon);
  const auto rule = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  std::string names;
  for (const HttpFaultName& name : kHttpFaultNames) {
    if (name.text == wanted) return {name.fault, FaultRule::Parse(rule, seed)};
    names += names.empty() ? "" : ", ";
    names += name.text;
  }
  throw std::invalid_argument("\"" + std::string(wanted) + "\" is no fault of a reply; there are " + names);
}

}  // namespace mirelo::quotetracker
