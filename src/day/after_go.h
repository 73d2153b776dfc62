#pragma once

namespace mirelo {
class cMirelo;
}

namespace mirelo::day {

// What is left to those who hold the facade when its dialog was committed, in the workbook that was handed to
// it:
//
// - Go types tickers into cells, and a spreadsheet takes some for other values: "005930" for 5930, "TRUE" for
//   a boolean, "1E5" for 100000. Quotes would be asked for by these names, which may be those of others. The
//   cells of the quote table and of the histories get such tickers as texts, letter by letter.
// - The charts' first bars are uncovered (chart_labels.h).
void FinishGo(const cMirelo& facade);

}  // namespace mirelo::day
