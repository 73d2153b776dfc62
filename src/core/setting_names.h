#pragma once

#include <string_view>

namespace mirelo::catalogue {

// The sections of the settings.
inline constexpr std::string_view kSettings = "Settings";
// Widths of the dialog's columns, by their headers.
inline constexpr std::string_view kWidths = "Settings\\WidthField";
// The quote source that was chosen last, by its display text, under one key.
inline constexpr std::string_view kFirstSource = "Settings\\QuoteSource\\First";
inline constexpr std::string_view kFirstSourceKey = "ComQuoteSource";
// QuoteTracker's file of each quote source, by the source's display text.
inline constexpr std::string_view kSources = "Settings\\QuoteSource\\List";
inline constexpr std::string_view kWatchLists = "Settings\\WatchList";
// Each form keeps its place in a section of its own; this is what their names begin with.
inline constexpr std::string_view kWindows = "Windows settings\\";

}  // namespace mirelo::catalogue
