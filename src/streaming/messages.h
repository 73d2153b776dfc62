#pragma once

#include <string_view>

namespace mirelo {

// What ends each message to the server: the character of ANSI code 255.
inline constexpr std::string_view kMessageEnd = "\u00FF";

// The section of the settings that names the file of each quote source, by the source's display text.
inline constexpr std::string_view kSourceListSection = "Settings\\QuoteSource\\List";
// The section, and the name in it, under which the display text of the source that was chosen last is kept.
inline constexpr std::string_view kFirstSourceSection = "Settings\\QuoteSource\\First";
inline constexpr std::string_view kFirstSourceKey = "ComQuoteSource";

}  // namespace mirelo
