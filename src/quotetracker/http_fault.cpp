#include "quotetracker/http_fault.h"

#include <array>
#include <stdexcept>
#include <string>

namespace mirelo::quotetracker {
namespace {

struct Name {
  std::string_view text;
  HttpFault fault;
};

constexpr std::array kNames{
    Name{"none", HttpFault::kNone},
    Name{"drop", HttpFault::kDrop},
    Name{"reset", HttpFault::kReset},
    Name{"stall", HttpFault::kStall},
    Name{"truncate-head", HttpFault::kTruncateHead},
    Name{"truncate-body", HttpFault::kTruncateBody},
    Name{"garbage", HttpFault::kGarbage},
    Name{"wrong-status", HttpFault::kWrongStatus},
    Name{"short-length", HttpFault::kShortLength},
    Name{"long-length", HttpFault::kLongLength},
};

}  // namespace

HttpFaultPlan HttpFaultPlan::Parse(std::string_view text, std::uint64_t seed) {
  const auto colon = text.find(':');
  const auto wanted = text.substr(0, colon);
  const auto rule = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  std::string names;
  for (const Name& name : kNames) {
    if (name.text == wanted) return {name.fault, FaultRule::Parse(rule, seed)};
    names += names.empty() ? "" : ", ";
    names += name.text;
  }
  throw std::invalid_argument("\"" + std::string(wanted) + "\" is no fault of a reply; there are " + names);
}

}  // namespace mirelo::quotetracker
