#pragma once

#include <memory>
#include <string>

#include "dialog/vertical_grid_test.h"
#include "host/excel/application.h"
#include "host/excel/comment.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {

// The dialog with vertical tables, and their sheets.
class VerticalSheetsTest : public VerticalGridTest {
 protected:
  static constexpr const char* kCharts = "Charts (Last & Volume)";
  const Texts kBlue{"2", "47", "2", "24", "7"};

  std::shared_ptr<host::excel::Worksheets> Sheets() {
    return spreadsheet.Application()->ActiveWorkbook()->Worksheets();
  }
  Texts SheetNames() {
    Texts names;
    for (std::int32_t i = 1; i <= Sheets()->Count(); ++i) names.push_back(Sheets()->Item(i)->Name());
    return names;
  }

  // Those of the ticker A.
  std::shared_ptr<host::excel::Range> Cell(std::string_view address) {
    return Sheets()->Item("Quotes_Vertical(A)")->Range(address);
  }
  std::string Text(std::string_view address) { return Cell(address)->Value().ToText(); }
  std::string Mark(std::string_view address) {
    const auto comment = Cell(address)->Comment();
    return comment ? comment->Text() : "";
  }
  Texts FirstHeaders(std::int32_t count) {
    Texts headers;
    for (std::int32_t i = 1; i <= count; ++i) headers.push_back(Cell("A2")->Cells(1, i)->Value().ToText());
    return headers;
  }

  // Makes and sets up the sheet of A, the ticker in row 1, with these ticks.
  void MakeAndSetUp(const std::string& ticks) {
    SetTicks(1, ticks);
    form.AddSheetsVerticalTables("A");
    form.AddForSheetsVerticalTables("A", "1", kBlue);
  }
};

}  // namespace mirelo::testing
