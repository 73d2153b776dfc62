// Documents of people who read and count in other ways.

#include <gtest/gtest.h>

#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/configuration/theDefaultProvider.hpp>
#include <com/sun/star/container/XNameReplace.hpp>
#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/WritingMode2.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/XChangesBatch.hpp>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "adapters/calc/objects/spreadsheet_program.h"
#include "automation/variant.h"
#include "calc/live_office.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using calc::As;
using calc::OfficeText;
using calc::Properties;
using calc::Reference;
using calc::TextOf;

// Where the office reads and writes as people do in this place, until the end of a test.
class OfficeLocale {
 public:
  explicit OfficeLocale(const char* locale) { before_ = Set(locale); }
  ~OfficeLocale() { Set(TextOf(before_)); }
  OfficeLocale(const OfficeLocale&) = delete;
  OfficeLocale& operator=(const OfficeLocale&) = delete;

 private:
  static rtl::OUString Set(const std::string& locale) {
    const auto provider = css::configuration::theDefaultProvider::get(LiveOffice::Get().Context());
    const css::beans::PropertyValue path("nodepath", -1,
                                         css::uno::Any(rtl::OUString("/org.openoffice.Setup/L10N")),
                                         css::beans::PropertyState_DIRECT_VALUE);
    const css::uno::Any argument(path);
    const auto node = As<css::container::XNameReplace>(
        Reference<css::lang::XMultiServiceFactory>(provider)->createInstanceWithArguments(
            "com.sun.star.configuration.ConfigurationUpdateAccess",
            css::uno::Sequence<css::uno::Any>(&argument, 1)));
    rtl::OUString before;
    node->getByName("ooSetupSystemLocale") >>= before;
    node->replaceByName("ooSetupSystemLocale", css::uno::Any(OfficeText(locale)));
    As<css::util::XChangesBatch>(node)->commitChanges();
    return before;
  }

  rtl::OUString before_;
};

class DocumentElsewhere : public ::testing::Test {
 protected:
  ~DocumentElsewhere() override { LiveOffice::Get().Close(); }  // it is no document for others

  Reference<css::table::XCell> Cell(std::string_view address) const {
    return As<css::sheet::XSpreadsheet>(document->getSheets()->getByName(OfficeText(sheet->Name())))
        ->getCellRangeByName(OfficeText(address))
        ->getCellByPosition(0, 0);
  }
  std::string Shown(std::string_view address) const {
    return TextOf(As<css::text::XTextRange>(Cell(address))->getString());
  }
  void CountDaysFrom(std::int16_t year) const {
    Properties(document).Set("NullDate", css::util::Date(1, 1, year));
  }

  OfficeLocale german{"de-DE"};
  LiveOffice::Document document = LiveOffice::Get().NewDocument();
  std::shared_ptr<Application> application =
      calc::ApplicationOf(LiveOffice::Get().Context(), document, [] {});
  std::shared_ptr<Worksheet> sheet = application->Worksheets()->Item(1);
};

TEST_F(DocumentElsewhere, ShowsNumbersWithACommaThatWereWrittenWithAPoint) {
  sheet->Range("A1")->Value(28.25);
  sheet->Range("A2")->Value("28.25");
  sheet->Range("A3")->Value("1,234.5");
  EXPECT_EQ(Cell("A1")->getValue(), 28.25);
  EXPECT_EQ(Cell("A2")->getValue(), 28.25);
  EXPECT_EQ(Cell("A3")->getValue(), 1234.5);
  EXPECT_EQ(Shown("A1"), "28,25");
  EXPECT_EQ(Shown("A3"), "1.234,50");
}

TEST_F(DocumentElsewhere, KeepsTextsThatReadAsSomethingElseThere) {
  for (const char* text : {"1,5x", "WAHR", "FALSCH", "1.2.3", "AUG"}) {
    sheet->Range("A1")->Value(std::string("'") + text);
    EXPECT_EQ(Shown("A1"), text);
    EXPECT_EQ(sheet->Range("A1")->NumberFormat().ToText(), "General") << text;
    sheet->Range("A1")->Value(7);
    EXPECT_EQ(Cell("A1")->getValue(), 7) << text;
  }
}

TEST_F(DocumentElsewhere, TakesFormatsAndErrorsInTheirOwnWords) {
  sheet->Range("A1")->Value(28.25);
  sheet->Range("A1")->NumberFormat("#,##0.000");
  EXPECT_EQ(Shown("A1"), "28,250");
  EXPECT_EQ(sheet->Range("A1")->NumberFormat().ToText(), "#,##0.000");
  sheet->Range("B1")->Value(true);
  EXPECT_EQ(sheet->Range("B1")->Value(), Variant(true));
  EXPECT_EQ(Shown("B1"), "WAHR");
  sheet->Range("C1")->Value("#N/A");
  EXPECT_EQ(Cell("C1")->getError(), 32767);
  for (const char* error : {"#NUM!", "#DIV/0!", "#VALUE!", "#REF!", "#NAME?", "#NULL!", "#N/A"}) {
    sheet->Range("D1")->Value(error);
    EXPECT_EQ(sheet->Range("D1")->Value(), Variant(error)) << Shown("D1");
  }
}

TEST_F(DocumentElsewhere, HoldsTheDaysOfQuotes) {
  sheet->Range("A1")->Value("01/20/2011");
  sheet->Range("B1")->Value("09:30:00");
  EXPECT_EQ(Cell("A1")->getValue(), 40563);
  sheet->Range("A1")->NumberFormat("mm/dd/yyyy");
  EXPECT_EQ(Shown("A1"), "01/20/2011");
  EXPECT_EQ(Shown("B1"), "9:30:00");
}

TEST_F(DocumentElsewhere, HoldsTheDaysOfQuotesWhereItCountsFrom1904) {
  CountDaysFrom(1904);
  sheet->Range("A1")->NumberFormat("yyyy-mm-dd hh:mm");
  sheet->Range("A1")->Value(40563.5);
  sheet->Range("A2")->Value("01/20/2011");
  sheet->Range("A2")->NumberFormat("yyyy-mm-dd");
  sheet->Range("B1")->Value("09:30:00");
  sheet->Range("C1")->Value(40563.5);
  EXPECT_EQ(Shown("A1"), "2011-01-20 12:00");
  EXPECT_EQ(Shown("A2"), "2011-01-20");
  EXPECT_EQ(Shown("B1"), "9:30:00");
  EXPECT_EQ(Cell("C1")->getValue(), 40563.5);
  const Variant days = sheet->Range("A1:A2")->Value();
  EXPECT_EQ(sheet->Range("C1")->Value().ToDouble(), 40563.5);
  sheet->Range("D1:D2")->NumberFormat("yyyy-mm-dd hh:mm");
  sheet->Range("D1:D2")->Value(days);
  EXPECT_EQ(Shown("D1"), "2011-01-20 12:00");
  EXPECT_EQ(Shown("D2"), "2011-01-20 00:00");
}

TEST_F(DocumentElsewhere, MayHaveSheetsOfAnyNameAndFromTheRightToTheLeft) {
  sheet->Name("Meine 'Kurse' & mehr");
  Properties(document->getSheets()->getByName(OfficeText(sheet->Name())))
      .Set("TableLayout", css::text::WritingMode2::RL_TB);
  sheet->Range("A1:B1")->Value("GM");
  sheet->Range("B2")->Value(28.25);
  EXPECT_EQ(Shown("B1"), "GM");
  EXPECT_EQ(sheet->Range("B2")->Value(), Variant(28.25));
  EXPECT_EQ(application->ActiveSheet()->Name(), "Meine 'Kurse' & mehr");
}

TEST_F(DocumentElsewhere, IsWrittenAndNotCalculatedWherePeopleCalculateByHand) {
  Cell("B1")->setFormula("=A1*2");
  As<css::sheet::XCalculatable>(document)->enableAutomaticCalculation(false);
  sheet->Range("A1")->Value(28.25);
  EXPECT_EQ(Cell("A1")->getValue(), 28.25);
  EXPECT_EQ(Cell("B1")->getValue(), 0);
  As<css::sheet::XCalculatable>(document)->calculate();
  EXPECT_EQ(Cell("B1")->getValue(), 56.5);
}

}  // namespace
}  // namespace mirelo::testing
