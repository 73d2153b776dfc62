// The widths of the quote table's columns, as a saved workbook has them.

#include <fstream>
#include <iterator>
#include <string>

#include "support/temp_directory.h"
#include "workbook/package_builder.h"
#include "worksheet/go_test.h"

namespace mirelo::testing {
namespace {

class QuoteTableWidths : public GoTest {
 protected:
  // The widths of the sheet's columns as the file tells them; empty when nothing made them other than usual.
  std::string Widths() {
    const TempDirectory folder;
    const auto file = folder / "quotes.xlsx";
    spreadsheet.Save(file);
    std::ifstream in(file, std::ios::binary);
    const Parts parts = Unzip(std::string(std::istreambuf_iterator<char>(in), {}));
    const std::string& sheet = parts.at("xl/worksheets/sheet1.xml");
    const auto start = sheet.find("<cols>");
    return start == std::string::npos ? "" : sheet.substr(start, sheet.find("</cols>") - start);
  }
};

TEST_F(QuoteTableWidths, AreThoseOfItsTexts) {
  Columns("Ticker,NumTrades");
  Go({"A"});
  const std::string narrow = Widths();
  EXPECT_NE(narrow, "");
  Go({"A TICKER OF GREAT WIDTH"});
  EXPECT_NE(Widths(), narrow);
}

TEST_F(QuoteTableWidths, AreLeftAsTheyAreWithoutAStyle) {
  Columns("Ticker,Last,Change");
  Go({"A", "B"}, [](frmMirelo& form) { form.ComStyle.Text("None"); });
  EXPECT_EQ(Widths(), "");
}

}  // namespace
}  // namespace mirelo::testing
