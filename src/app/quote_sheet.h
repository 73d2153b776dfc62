#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/snapshot_feed.h"

namespace mirelo::host::excel {
class Application;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::app {

// The quote table on its worksheet, as the macros write it: caption in A1, column names in row 2, one row per
// ticker from row 3 on, the ticker in column A whatever name heads it.
class QuoteSheet {
 public:
  static constexpr const char* kName = "Dovanta2_Quotes";

  // Finds the sheet in the active workbook, or adds it, clears what stood in the frame and writes the frame.
  // Prices are shown in `price_format`, a number format such as "0.00".
  QuoteSheet(host::excel::Application& application, const std::string& caption,
             std::vector<std::string> columns, const std::vector<std::string>& tickers,
             const std::string& price_format);

  // Writes one fetch into the frame, in one block: numbers as numbers, dates and times as such, all else as
  // text.
  void Write(const QuoteRows& rows);

 private:
  void ClearFrame();
  void WriteFrame(const std::string& caption, const std::vector<std::string>& tickers);
  void FormatColumns(const std::string& price_format);

  std::shared_ptr<host::excel::Worksheet> sheet_;
  std::vector<std::string> columns_;
  std::int32_t row_count_;
};

}  // namespace mirelo::app
