#pragma once

#include <string_view>

#include "quotetracker/fault_rule.h"

namespace mirelo::quotetracker {

// What can go wrong with a reply of the HTTP interface.
enum class HttpFault {
  kNone,
  kDrop,          // closed without any reply
  kReset,         // torn down without any reply
  kStall,         // nothing is sent and nothing is closed
  kTruncateHead,  // closed in the middle of the head
  kTruncateBody,  // closed in the middle of the body
  kGarbage,       // random bytes instead of the reply
  kWrongStatus,   // a status line that no HTTP has
  kShortLength,   // a content length below the body's
  kLongLength,    // a content length above the body's, then closed
};

// Which fault strikes, and when. As text: a name, then, if not at every request, a colon and a rule: "drop",
// "stall:3", "garbage:25%". The names are none, drop, reset, stall, truncate-head, truncate-body, garbage,
// wrong-status, short-length, long-length.
struct HttpFaultPlan {
  HttpFault fault = HttpFault::kNone;
  FaultRule rule;

  // Raises std::invalid_argument with an explanation for other text.
  static HttpFaultPlan Parse(std::string_view text, std::uint64_t seed);

  // The fault of the next request.
  HttpFault Next() { return fault != HttpFault::kNone && rule.Strikes() ? fault : HttpFault::kNone; }
};

}  // namespace mirelo::quotetracker
