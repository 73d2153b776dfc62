#include <cstdint>

#include "automation/regional_format.h"
#include "automation/runtime_error.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using workbook::Spreadsheet;

class OpenFile : public WorkbookFiles {
 protected:
  std::int32_t ErrorOfOpening(const std::filesystem::path& file) {
    try {
      Spreadsheet::Open(file);
    } catch (const RuntimeError& error) {
      description = error.Description();
      return error.Number();
    }
    return 0;
  }
  std::string description;
};

TEST_F(OpenFile, NamesTheWorkbookAfterTheFile) {
  EXPECT_EQ(BookOf(Open(SmallWorkbook()))->Name(), "quotes.xlsx");
  EXPECT_EQ(BookOf(Spreadsheet::New())->Name(), "Book1");
}

TEST_F(OpenFile, RaisesError53WhenThereIsNone) {
  EXPECT_EQ(ErrorOfOpening(File("absent.xlsx")), 53);
  EXPECT_NE(description.find("absent.xlsx"), std::string::npos);
}

TEST_F(OpenFile, RaisesError75ForWhatIsNoFile) {
  EXPECT_EQ(ErrorOfOpening(folder.path()), 75);
  EXPECT_EQ(ErrorOfOpening("/dev/null"), 75);
  EXPECT_EQ(ErrorOfOpening(File() / "below" / "a file"), 53);
}

TEST_F(OpenFile, RefusesFilesOfOtherKindsByName) {
  const struct {
    std::string bytes;
    const char* reason;
  } cases[] = {
      {"", "no .xlsx workbook"},
      {"Ticker,Last\nMSFT,28.35\n", "no .xlsx workbook"},
      {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more", "encrypted"},
      {std::string("PK\x03\x04", 4), "no .xlsx workbook"},
  };
  for (const auto& [bytes, reason] : cases) {
    SCOPED_TRACE(reason);
    WriteBytes(File("other.xlsx"), bytes);
    EXPECT_EQ(ErrorOfOpening(File("other.xlsx")), 1004);
    EXPECT_NE(description.find("other.xlsx"), std::string::npos) << description;
    EXPECT_NE(description.find(reason), std::string::npos) << description;
  }
}

TEST_F(OpenFile, RefusesAZipArchiveThatIsNoWorkbook) {
  EXPECT_NE(Refusal({{"readme.txt", "hello"}}).find("no .xlsx workbook"), std::string::npos);
}

TEST_F(OpenFile, KeepsTypedTextInTheWayOfTheRegion) {
  RegionalFormat german;
  german.date_order = RegionalFormat::DateOrder::DayMonthYear;
  german.decimal_separator = ",";
  german.group_separator = ".";
  german.date_separator = ".";
  Open(SmallWorkbook());
  const auto sheet = SheetOf(Spreadsheet::Open(File(), german));
  sheet->Range("A1")->Value("1.234,5");
  sheet->Range("A2")->Value("20.1.2011");
  EXPECT_EQ(sheet->Range("A1")->Value(), Variant(1234.5));
  EXPECT_EQ(sheet->Range("A2")->Value().ToDate().serial, 40563.0);
}

}  // namespace
}  // namespace mirelo::testing
