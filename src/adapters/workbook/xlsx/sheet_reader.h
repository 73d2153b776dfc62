#pragma once

#include <string>
#include <vector>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/xlsx/color_reader.h"
#include "adapters/workbook/xlsx/load_budget.h"
#include "adapters/workbook/xlsx/losses.h"
#include "adapters/workbook/xlsx/package.h"
#include "adapters/workbook/xlsx/series_cells.h"
#include "adapters/workbook/xlsx/shared_strings.h"

namespace mirelo::workbook {

// What all sheets of a file share: the parts of the file that they refer to.
struct SheetContext {
  Package& package;
  Book& book;
  std::vector<SharedString> strings;
  std::vector<StyleId> styles;                           // by the index that cells use
  std::vector<DifferentialFormat> differential_formats;  // by the index that conditional formats use
  ColorReader colors;
  bool counts_from_1904 = false;
  LoadBudget budget;
  Losses& losses;
  std::vector<UnboundSeries> series;  // of the charts read so far
};

// What a sheet's part tells of its standing in the file.
struct SheetStanding {
  bool is_selected = false;     // its tab
  bool is_referred_to = false;  // by other parts, which would be damaged without its tables
  bool has_lossy_formats = false;
};

// Reads a sheet's part into `sheet`, which has its name already.
SheetStanding ReadSheet(SheetContext& context, const std::string& part, Sheet& sheet);

}  // namespace mirelo::workbook
