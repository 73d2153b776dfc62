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
// What the sections begin with in which forms keep their places, each in one of its own.
inline constexpr std::string_view kWindows = "Windows settings\\";

}  // namespace mirelo::catalogue
