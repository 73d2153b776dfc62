#pragma once

#include <string>
#include <string_view>

#include "quotetracker/http_fault.h"
#include "quotetracker/random.h"

namespace mirelo::quotetracker {

// The bytes of a reply: a head with status ("200 OK"), content type and content length, and the body.
std::string HttpReply(std::string_view status, std::string_view body);

// The same, spoilt. For the faults that send nothing, nothing.
std::string SpoiltReply(HttpFault fault, std::string_view body, Random& random);

}  // namespace mirelo::quotetracker
