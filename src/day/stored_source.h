#pragma once

#include <string>

namespace mirelo::day {

// The quote source that was last chosen in the settings dialog; empty when none was. A facade must live.
std::string StoredSource();

// The streamer file of a quote source, by its name; empty when no source has it. A facade must live.
std::string StreamerFileOf(const std::string& source);

}  // namespace mirelo::day
