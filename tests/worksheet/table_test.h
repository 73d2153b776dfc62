#pragma once

#include <string>

#include "worksheet/sheet_test.h"

namespace mirelo::testing {

// A quote table on the sheet, with three columns and two tickers, and settings that say something else.
class TableTest : public SheetTest {
 protected:
  TableTest() {
    sheet->Name("Dovanta2_Quotes");
    Columns({"Ticker", "Bid", "Tick"});
    PutColumn("A3", {"MSFT", "IBM"});
    Save("ListLeft", "Volume,High,Tick");
    Save("ListRight", "Ticker,Last,last,Ask");
  }

  void Columns(const Texts& headers) {
    Range("A2:Z2")->ClearContents();
    PutRow("A2", headers);
  }

  // The columns that the dialog lists.
  std::string Hidden() const { return Join(form.ListLeft.Items(), ","); }
  std::string Shown() const { return Join(form.ListRight.Items(), ","); }
};

}  // namespace mirelo::testing
