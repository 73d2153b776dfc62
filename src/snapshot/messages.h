#pragma once

namespace mirelo {

// The message box of the facade when no quotes came.
inline constexpr const char* kRetrievalError = "Data retrieval error.";

// The message box of the dialog when nobody answered.
inline constexpr const char* kRunQuoteTracker = "Please run QuoteTracker.";

// The message box of the facade and of the dialog when QuoteTracker did not answer on the HTTP port, or
// something else did.
inline constexpr const char* kAdjustPort =
    "Please adjust Dovanta HTTP Port parameter in accordance with the same parameter in QouteTracker -> "
    "Preferences.";

}  // namespace mirelo
