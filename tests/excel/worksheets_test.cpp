#include "conformance.h"

namespace mirelo::testing {
namespace {

class SheetList : public Spreadsheets {};

TEST_P(SheetList, OfANewWorkbookHoldsOneSheetWhichIsActive) {
  EXPECT_EQ(sheets->Count(), 1);
  EXPECT_EQ(sheets->Item(1)->Name(), "Sheet1");
  EXPECT_EQ(book->ActiveSheet()->Name(), "Sheet1");
}

TEST_P(SheetList, FindsByNameWithoutRegardToCase) {
  sheet->Name("Dovanta2_Quotes");
  EXPECT_EQ(sheets->Item("DOVANTA2_quotes")->Name(), "Dovanta2_Quotes");
}

TEST_P(SheetList, FindsARenamedSheetByItsNewNameAlone) {
  const auto other = sheets->Add();
  sheet->Name("Notes");
  EXPECT_EQ(NumberOf([&] { sheets->Item("Sheet1"); }), 9);
  EXPECT_EQ(sheets->Item("notes")->Name(), "Notes");
  sheet->Name("NOTES");
  EXPECT_EQ(sheets->Item("notes")->Name(), "NOTES");
  other->Name("Sheet1");
  EXPECT_EQ(sheets->Item("Sheet1")->Index(), 1);
  EXPECT_EQ(NumberOf([&] { other->Name("Notes"); }), 1004);
  EXPECT_EQ(sheets->Item("Sheet1")->Index(), 1);
  EXPECT_EQ(sheets->Item("Notes")->Index(), 2);
}

TEST_P(SheetList, FindsLettersBeyondAsciiWithoutRegardToCase) {
  sheet->Name("Über");
  EXPECT_EQ(sheets->Item("über")->Name(), "Über");
}

TEST_P(SheetList, RaisesError9ForWhatIsAbsent) {
  EXPECT_EQ(NumberOf([&] { sheets->Item(0); }), 9);
  EXPECT_EQ(NumberOf([&] { sheets->Item(2); }), 9);
  EXPECT_EQ(NumberOf([&] { sheets->Item(-1); }), 9);
  EXPECT_EQ(NumberOf([&] { sheets->Item("Sheet2"); }), 9);
  EXPECT_EQ(NumberOf([&] { sheets->Item(""); }), 9);
}

TEST_P(SheetList, PutsANewSheetInFrontOfTheActiveOneAndActivatesIt) {
  const auto added = sheets->Add();
  EXPECT_EQ(added->Name(), "Sheet2");
  EXPECT_EQ(added->Index(), 1);
  EXPECT_EQ(sheet->Index(), 2);
  EXPECT_EQ(book->ActiveSheet()->Name(), "Sheet2");

  sheet->Activate();
  EXPECT_EQ(sheets->Add()->Index(), 2);
  EXPECT_EQ(sheet->Index(), 3);
}

TEST_P(SheetList, NamesANewSheetByANumberThatIsFree) {
  sheet->Name("Sheet2");
  EXPECT_EQ(sheets->Add()->Name(), "Sheet3");
}

TEST_P(SheetList, LetsAClientFindASheetOrAddIt) {
  const auto find_or_add = [&](std::string_view name) {
    for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
      if (sheets->Item(i)->Name() == name) return sheets->Item(i);
    }
    auto added = sheets->Add();
    added->Name(name);
    return added;
  };
  find_or_add("Dovanta2_Quotes")->Range("A1")->Value("SnapShot( 60 sec)");
  EXPECT_EQ(find_or_add("Dovanta2_Quotes")->Range("A1")->Value(), Variant("SnapShot( 60 sec)"));
  EXPECT_EQ(sheets->Count(), 2);
}

TEST_P(SheetList, KeepsTheActiveSheetActiveWhenItIsRenamed) {
  sheets->Add()->Name("Other");
  EXPECT_EQ(book->ActiveSheet()->Name(), "Other");
  sheets->Item("Sheet1")->Activate();
  EXPECT_EQ(book->ActiveSheet()->Name(), "Sheet1");
}

TEST_P(SheetList, KeepsEachSheetsCellsApart) {
  const auto other = sheets->Add();
  Put("A1", 1.0);
  other->Range("A1")->Value(2.0);
  EXPECT_EQ(Get("A1"), Variant(1.0));
  EXPECT_EQ(other->Range("A1")->Value(), Variant(2.0));
}

TEST_P(SheetList, OutlivesTheApplicationObject) {
  Put("A1", "still here");
  application.reset();
  book.reset();
  sheets.reset();
  EXPECT_EQ(Get("A1"), Variant("still here"));
}

TEST_P(SheetList, KeepsTheSwitchOfScreenUpdating) {
  EXPECT_TRUE(application->ScreenUpdating());
  application->ScreenUpdating(false);
  EXPECT_FALSE(application->ScreenUpdating());
  application->ScreenUpdating(true);
  EXPECT_TRUE(application->ScreenUpdating());
}

MIRELO_AGAINST_ALL(SheetList);

}  // namespace
}  // namespace mirelo::testing
