#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/data_table.h"

namespace mirelo::host::excel {
class Application;
class Worksheet;
}  // namespace mirelo::host::excel

namespace mirelo::app {

// A sheet whose rows other programs can be given: the quote table, or the history of a ticker.
struct ExportedSheet {
  std::shared_ptr<host::excel::Worksheet> sheet;
  std::string name;
  std::string ticker;  // of a history; empty for the quote table

  bool IsQuoteTable() const { return ticker.empty(); }
};

// Those of a workbook, in the order of their tabs.
std::vector<ExportedSheet> ExportedSheets(host::excel::Application& application);

// How the tables are called where they need a name.
inline constexpr const char* kQuoteTableName = "quote_table";
inline constexpr const char* kHistoryName = "history";

// The rows of a sheet under the headers of its row 2, as far as these go on without a gap. Of the quote table
// they are those with a ticker, of a history all down to the last that holds something. Days and times are
// texts (automation/iso_text.h); an empty cell is nothing. A header that is there twice gets a number.
host::DataTable ReadTable(const ExportedSheet& exported);

// The rows of all histories one behind the other, each with its ticker in front. The columns are those of any
// of them; what a history does not have is nothing.
host::DataTable ReadHistories(const std::vector<ExportedSheet>& sheets);

}  // namespace mirelo::app
