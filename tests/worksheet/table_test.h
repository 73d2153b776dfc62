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
    form.txtSec.Text("60");
    form.chkUpdOrNot.Value(1);
  }

  void Columns(const Texts& headers) {
    Range("A2:Z2")->ClearContents();
    PutRow("A2", headers);
  }
  void Load() { form.LoadTickers(hidden, shown); }

  // What the settings say, and after Load() what the dialog is to list.
  std::string hidden = "Volume,High,Tick";
  std::string shown = "Ticker,Last,last,Ask";
};

}  // namespace mirelo::testing
