#pragma once

#include <cstdint>

namespace mirelo {

// The quote table: a worksheet of the active workbook, known by its name alone. Row 1 holds the status
// caption, row 2 the headers, and the tickers stand in column A from row 3 on.
inline constexpr const char* kQuoteTable = "Dovanta2_Quotes";
inline constexpr const char* kStatusCell = "A1";
inline constexpr const char* kFirstHeader = "A2";
inline constexpr std::int32_t kHeaderRow = 2;
inline constexpr std::int32_t kFirstTickerRow = 3;
// Cells with longer texts are no tickers when the dialog reads the table back.
inline constexpr std::int32_t kLongestTicker = 11;

// The status caption says the mode, and in brackets how: "SnapShot( Update Onse )", "SnapShot( 60 sec)",
// "Streaming( source )".
inline constexpr const char* kSnapshotMode = "SnapShot";
inline constexpr const char* kStreamingMode = "Streaming";
inline constexpr const char* kUpdateOnce = "Update Onse";
inline constexpr const char* kSecondsUnit = "sec";

}  // namespace mirelo
