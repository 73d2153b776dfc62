#include "workbook/kept_sheets.h"

#include <gmock/gmock.h>

#include <cstdint>

#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/constants.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "workbook/script.h"

namespace mirelo::testing {

namespace {

// A table in the colours, borders and formats that tables have.
void WriteTable(host::excel::Worksheet& sheet) {
  sheet.Range("A1")->Value("SnapShot( 60 sec)");
  sheet.Range("A2:C2")->Value(VariantArray::OfTexts({"Ticker", "Last", "Change"}));
  sheet.Range("A2:C2")->Font()->Bold(true);
  sheet.Range("A2:C2")->Font()->ColorIndex(2);
  sheet.Range("A2:C2")->Interior()->ColorIndex(47);
  sheet.Range("A3")->Value("'<MSFT> & \"co\"");
  sheet.Range("B3")->Value(28.35);
  sheet.Range("C3")->Value(-0.25);
  sheet.Range("B3:B9")->NumberFormat("+ 0.0000;- 0.0000");
  sheet.Range("A2:C3")->Borders(host::excel::xlEdgeBottom)->Weight(host::excel::xlMedium);
  sheet.Range("A2")->AddComment("Charts (Last & Volume)");
  const auto conditions = sheet.Range("C3:C9")->FormatConditions();
  conditions->Add(host::excel::xlCellValue, host::excel::xlLess, "0")->Font()->ColorIndex(3);
}

}  // namespace

workbook::Spreadsheet KeptSheets::OpenPersons() {
  WriteBytes(File(), PersonsWorkbook());
  return workbook::Spreadsheet::Open(File());
}

SheetPtr KeptSheets::AddTable(const workbook::Spreadsheet& spreadsheet) {
  const auto sheet = BookOf(spreadsheet)->Worksheets()->Add();
  sheet->Name(kTable);
  WriteTable(*sheet);
  return sheet;
}

void KeptSheets::ExpectTable(host::excel::Worksheet& sheet) {
  EXPECT_EQ(sheet.Range("A3")->Value(), Variant("<MSFT> & \"co\""));
  EXPECT_EQ(sheet.Range("B3")->Text(), "+ 28.3500");
  EXPECT_EQ(sheet.Range("A2:C2")->Font()->Bold(), Variant(true));
  EXPECT_EQ(sheet.Range("A2:C2")->Font()->ColorIndex(), Variant(2));
  EXPECT_EQ(sheet.Range("A2:C2")->Interior()->ColorIndex(), Variant(47));
  EXPECT_EQ(sheet.Range("A3:C3")->Font()->Bold(), Variant(false));
  EXPECT_EQ(sheet.Range("A3:C3")->Interior()->ColorIndex(),
            Variant(std::int32_t{host::excel::xlColorIndexNone}));
  EXPECT_EQ(sheet.Range("A3:C3")->Borders(host::excel::xlEdgeBottom)->Weight(),
            Variant(std::int32_t{host::excel::xlMedium}));
  EXPECT_EQ(sheet.Range("A2")->Comment()->Text(), "Charts (Last & Volume)");
  const auto conditions = sheet.Range("C3:C9")->FormatConditions();
  ASSERT_EQ(conditions->Count(), 1);
  EXPECT_EQ(conditions->Item(1)->Font()->ColorIndex(), Variant(3));
}

}  // namespace mirelo::testing
