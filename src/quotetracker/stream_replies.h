#pragma once

#include <span>
#include <string>
#include <string_view>

#include "quotetracker/sources.h"

namespace mirelo::quotetracker {

// What the server says on the stream in tags, each reply behind the two characters of its kind.

// `server_time` is mm/dd/yyyy hh:mm:ss.
std::string Greeting(std::string_view server_time, std::string_view server_version);
// `code` is "0" when the login was good.
std::string LoginReply(std::string_view code, std::string_view description);
std::string SourcesReply(std::string_view source_type, std::span<const Source> sources);
std::string StreamerReply(std::string_view file);

}  // namespace mirelo::quotetracker
