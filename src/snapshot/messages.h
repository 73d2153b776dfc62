#pragma once

namespace mirelo {

// Shown when what listens on the HTTP port is not QuoteTracker, or nothing can be there.
inline constexpr const char* kAdjustPort =
    "Please adjust Dovanta HTTP Port parameter in accordance with the same parameter in QouteTracker -> "
    "Preferences.";

}  // namespace mirelo
