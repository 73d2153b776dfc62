#pragma once

#include <string>

namespace mirelo::day {

// The name of the quote source that quotes are streamed from: the one that was last chosen in the settings,
// or, as long as none was, the catalogue's default. A facade must live.
std::string ChosenSource();

// The streamer file of a quote source, by its name: of the stored list, or, where that has none, of the
// sources that are offered until a list is stored. Error 5, `No quote source is named "..."`, when neither
// has. A facade must live.
std::string StreamerFileOf(const std::string& source);

}  // namespace mirelo::day
