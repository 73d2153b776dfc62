#pragma once

#include <string_view>

namespace mirelo {

// What ends each message to the server: the character of ANSI code 255.
inline constexpr std::string_view kMessageEnd = "\u00FF";

// Where the display texts of quote sources name their files in the settings.
inline constexpr std::string_view kSourceListSection = "Settings\\QuoteSource\\List";
// Where the display text of the source that was chosen last is kept, and under which name.
inline constexpr std::string_view kFirstSourceSection = "Settings\\QuoteSource\\First";
inline constexpr std::string_view kFirstSourceKey = "ComQuoteSource";

}  // namespace mirelo
