#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "dialog/grid_test.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {

// The dialog over a workbook of one sheet, which is empty at first.
class SheetTest : public GridTest {
 protected:
  std::shared_ptr<host::excel::Range> Range(std::string_view address) { return sheet->Range(address); }
  void Put(std::string_view address, const Variant& value) { Range(address)->Value(value); }
  // Texts to the right, and down, from a cell.
  void PutRow(std::string_view first, const Texts& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i)
      Range(first)->Cells(1, static_cast<std::int32_t>(i) + 1)->Value(texts[i]);
  }
  void PutColumn(std::string_view first, const Texts& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i)
      Range(first)->Cells(static_cast<std::int32_t>(i) + 1, 1)->Value(texts[i]);
  }

  std::shared_ptr<host::excel::Application> application = spreadsheet.Application();
  std::shared_ptr<host::excel::Workbook> book = application->ActiveWorkbook();
  std::shared_ptr<host::excel::Worksheets> sheets = book->Worksheets();
  std::shared_ptr<host::excel::Worksheet> sheet = book->Worksheets()->Item(1);
};

}  // namespace mirelo::testing
