#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/model/book.h"
#include "adapters/workbook/xlsx/losses.h"
#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

struct LoadedBook {
  std::shared_ptr<Book> book;
  std::vector<Loss> losses;

  // The file's sheets in its order.
  struct Entry {
    std::shared_ptr<Sheet> sheet;  // null for what is no worksheet
    SheetStanding standing;
    std::shared_ptr<Chart> chart;  // of a chart sheet that could be read
    std::string part;              // of a worksheet
  };
  std::vector<Entry> entries;
  // Whether sheets of this file can be kept as they stand when the workbook is saved: its parts are in the
  // usual vocabulary, and nothing in them depends on what is written anew.
  bool can_be_carried = false;
};

// Reads a whole .xlsx file. Error 1004, with a text that begins with the part at fault, for what is damaged
// or beyond the limits.
LoadedBook ReadWorkbook(std::span<const char> file, const LoadLimits& limits);

}  // namespace mirelo::workbook
