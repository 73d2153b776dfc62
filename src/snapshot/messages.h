#pragma once

namespace mirelo {

// The message box of the facade and of the dialog when QuoteTracker did not answer on the HTTP port, or
// something else did.
inline constexpr const char* kAdjustPort =
    "Please adjust Dovanta HTTP Port parameter in accordance with the same parameter in QouteTracker -> "
    "Preferences.";

}  // namespace mirelo
