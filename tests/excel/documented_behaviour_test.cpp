#include "conformance.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using Sheet = Worksheet;

// What Excel does, line by line, for those who put another spreadsheet behind the port. The other files of
// this suite look at each line from more sides.
struct Behaviour {
  const char* what;
  std::function<void(Sheet&)> given;
  std::function<std::string(Sheet&)> observed;
  const char* expected;
};

auto Filled(std::vector<const char*> addresses) {
  return [=](Sheet& sheet) {
    for (const char* address : addresses) sheet.Range(address)->Value("x");
  };
}

auto Typed(const char* text, const char* format = "General") {
  return [=](Sheet& sheet) {
    sheet.Range("A1")->NumberFormat(format);
    sheet.Range("A1")->Value(text);
  };
}

// A1 to A6 hold 1 to 6, and then something is done.
auto Counted(std::function<void(Sheet&)> act) {
  return [=](Sheet& sheet) {
    for (std::int32_t row = 1; row <= 6; ++row) sheet.Cells(row, 1)->Value(row);
    act(sheet);
  };
}

void LayChange(Range& range) {
  range.FormatConditions()->Delete();
  range.FormatConditions()->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(10);
  range.FormatConditions()->Add(xlCellValue, xlLess, "0")->Font()->ColorIndex(3);
}

auto EndFrom(const char* address, XlDirection direction) {
  return [=](Sheet& sheet) { return sheet.Range(address)->End(direction)->Address(false, false); };
}

std::string LastCellOf(Sheet& sheet) {
  return sheet.Range("A1")->SpecialCells(xlCellTypeLastCell)->Address(false, false);
}

auto AddressOf(const char* address, bool row_absolute, bool column_absolute) {
  return [=](Sheet& sheet) { return sheet.Range(address)->Address(row_absolute, column_absolute); };
}

// "Double 1234 #,##0"
std::string A1(Sheet& sheet) {
  const auto cell = sheet.Range("A1");
  return std::string(cell->Value().TypeName()) + " " + cell->Value().ToText() + " " +
         cell->NumberFormat().ToText();
}

// The values of A1 to A6, "-" for an empty cell.
std::string ColumnA(Sheet& sheet) {
  std::string values;
  for (std::int32_t row = 1; row <= 6; ++row) {
    const Variant value = sheet.Cells(row, 1)->Value();
    values += value.IsEmpty() ? "-" : value.ToText();
  }
  return values;
}

auto FoundBack(const char* after, XlSearchOrder order) {
  return [=](Sheet& sheet) {
    const auto found = sheet.Cells()->Find("*", *sheet.Range(after), order, xlPrevious);
    return found == nullptr ? "nothing" : found->Address(false, false);
  };
}

auto CommentOn(const char* address) {
  return [=](Sheet& sheet) {
    const auto comment = sheet.Range(address)->Comment();
    return comment == nullptr ? "none" : comment->Text();
  };
}

// The colours of a cell's conditions.
auto ConditionsOf(const char* address) {
  return [=](Sheet& sheet) {
    const auto conditions = sheet.Range(address)->FormatConditions();
    std::string colors;
    for (std::int32_t i = 1; i <= conditions->Count(); ++i)
      colors += conditions->Item(i)->Font()->ColorIndex().ToText() + " ";
    return colors;
  };
}

const Behaviour kBehaviours[] = {
    {"End runs to the last cell before a gap", Filled({"A2", "A3", "A4", "A6"}), EndFrom("A2", xlDown), "A4"},
    {"End leaps a gap", Filled({"A2", "A3", "A6"}), EndFrom("A3", xlDown), "A6"},
    {"End leaps from an empty cell to the next filled one", Filled({"A5", "A6"}), EndFrom("A1", xlDown),
     "A5"},
    {"End goes to the foot of an empty column", Filled({}), EndFrom("C3", xlDown), "C1048576"},
    {"End goes to the foot from the last filled cell", Filled({"A2"}), EndFrom("A2", xlDown), "A1048576"},
    {"End comes up from the foot to the last filled cell", Filled({"A2", "A4"}), EndFrom("A1048576", xlUp),
     "A4"},
    {"End stays at the foot", Filled({"A1048576"}), EndFrom("A1048576", xlDown), "A1048576"},
    {"End runs along a header", Filled({"A2", "B2", "C2", "E2"}), EndFrom("A2", xlToRight), "C2"},
    {"End goes to the last column from a lone header", Filled({"A2"}), EndFrom("A2", xlToRight), "XFD2"},
    {"End comes back from the right edge", Filled({"A2", "C2"}), EndFrom("XFD2", xlToLeft), "C2"},
    {"End takes a format alone for empty",
     [](Sheet& sheet) {
       Filled({"A2", "A3"})(sheet);
       sheet.Range("A4")->NumberFormat("0.00");
     },
     EndFrom("A2", xlDown), "A3"},

    {"the last cell of a new sheet", Filled({}), LastCellOf, "A1"},
    {"the last cell joins the last row and the last column", Filled({"B9", "F2"}), LastCellOf, "F9"},
    {"the last cell counts formats of empty cells",
     [](Sheet& sheet) { sheet.Range("B2:D36002")->NumberFormat("0.00"); }, LastCellOf, "D36002"},
    {"the last cell shrinks when cells are cleared",
     [](Sheet& sheet) {
       sheet.Range("A1:D20")->Value(1);
       sheet.Range("A10:D20")->Clear();
     },
     LastCellOf, "D9"},
    {"the last cell goes on counting formats of cells whose contents were cleared",
     [](Sheet& sheet) {
       sheet.Range("A1:D20")->NumberFormat("0.00");
       sheet.Range("A1:D20")->Value(1);
       sheet.Range("A1:D20")->ClearContents();
     },
     LastCellOf, "D20"},

    {"an address is absolute", Filled({}), AddressOf("b2", true, true), "$B$2"},
    {"an address is relative", Filled({}), AddressOf("$B$2", false, false), "B2"},
    {"an address has an absolute row", Filled({}), AddressOf("B2", true, false), "B$2"},
    {"an address has an absolute column", Filled({}), AddressOf("B2", false, true), "$B2"},
    {"an address of several cells starts at the top left", Filled({}), AddressOf("D9:B2", true, true),
     "$B$2:$D$9"},
    {"an address of whole columns", Filled({}), AddressOf("A:C", true, true), "$A:$C"},
    {"an address of whole rows", Filled({}), AddressOf("3:5", false, false), "3:5"},
    {"an address of the last cell", Filled({}), AddressOf("XFD1048576", false, false), "XFD1048576"},

    {"text of digits becomes a number", Typed("28.35"), A1, "Double 28.35 General"},
    {"text with blanks around becomes a number", Typed(" 7 "), A1, "Double 7 General"},
    {"text with thousands becomes a number and its format", Typed("1,234"), A1, "Double 1234 #,##0"},
    {"text with a percent sign becomes a number and its format", Typed("5%"), A1, "Double 0.05 0%"},
    {"text with an exponent becomes a number and its format", Typed("1E3"), A1, "Double 1000 0.00E+00"},
    {"text in brackets becomes a negative number", Typed("(5)"), A1, "Double -5 General"},
    {"text keeps a format that is there", Typed("5%", "0.00"), A1, "Double 0.05 0.00"},
    {"text in a cell of texts stays text", Typed("28.35", "@"), A1, "String 28.35 @"},
    {"text behind an apostrophe stays text", Typed("'28.35"), A1, "String 28.35 General"},
    {"text of a boolean becomes one", Typed("true"), A1, "Boolean True General"},
    {"text of nothing known stays text", Typed("28.35x"), A1, "String 28.35x General"},
    {"text with an equals sign is no formula", Typed("=1+1"), A1, "String =1+1 General"},

    {"deleted rows let those below move up",
     Counted([](Sheet& sheet) { sheet.Rows("2:4")->Delete(xlShiftUp); }), ColumnA, "156---"},
    {"deleted cells leave the next column alone",
     Counted([](Sheet& sheet) { sheet.Range("B2:B4")->Delete(xlShiftUp); }), ColumnA, "123456"},
    {"deleted rows take their comments with them, and others move", Counted([](Sheet& sheet) {
       sheet.Range("A3")->AddComment("gone");
       sheet.Range("A6")->AddComment("moved");
       sheet.Rows("2:4")->Delete(xlShiftUp);
     }),
     CommentOn("A3"), "moved"},
    {"deleted rows let formats move",
     [](Sheet& sheet) {
       sheet.Range("A6")->NumberFormat("0.00");
       sheet.Rows("2:4")->Delete(xlShiftUp);
     },
     [](Sheet& sheet) { return sheet.Range("A3")->NumberFormat().ToText(); }, "0.00"},
    {"deleted rows let conditions move",
     [](Sheet& sheet) {
       LayChange(*sheet.Range("C6:C9"));
       sheet.Rows("2:4")->Delete(xlShiftUp);
     },
     ConditionsOf("C3"), "10 3 "},

    {"the last filled row is found backward by rows", Filled({"B9", "F2"}), FoundBack("A1", xlByRows), "B9"},
    {"the last filled column is found backward by columns", Filled({"B9", "F2"}),
     FoundBack("A1", xlByColumns), "F2"},
    {"the first cell of a search is looked at last", Filled({"B2"}), FoundBack("B2", xlByRows), "B2"},
    {"nothing is found on an empty sheet", Filled({}), FoundBack("A1", xlByRows), "nothing"},

    {"a comment is there", [](Sheet& sheet) { sheet.Range("C2")->AddComment("x"); }, CommentOn("C2"), "x"},
    {"a cell without a comment has nothing", Filled({"C2"}), CommentOn("C2"), "none"},
    {"a comment goes with Clear",
     [](Sheet& sheet) {
       sheet.Range("C2")->AddComment("x");
       sheet.Range("A1:D9")->Clear();
     },
     CommentOn("C2"), "none"},
    {"a comment stays when its cell's contents are cleared",
     [](Sheet& sheet) {
       sheet.Range("C2")->AddComment("x");
       sheet.Range("C2")->ClearContents();
     },
     CommentOn("C2"), "x"},

    {"conditions keep their order", [](Sheet& sheet) { LayChange(*sheet.Range("C3:C9")); },
     ConditionsOf("C5"), "10 3 "},
    {"conditions are replaced when they are deleted first",
     [](Sheet& sheet) {
       LayChange(*sheet.Range("C3:C9"));
       LayChange(*sheet.Range("C3:C9"));
     },
     ConditionsOf("C3:C9"), "10 3 "},
    {"conditions pile up when they are not",
     [](Sheet& sheet) {
       LayChange(*sheet.Range("C3:C9"));
       sheet.Range("C3:C9")->FormatConditions()->Add(xlCellValue, xlEqual, "0")->Font()->ColorIndex(5);
     },
     ConditionsOf("C3:C9"), "10 3 5 "},
    {"conditions end with their range", [](Sheet& sheet) { LayChange(*sheet.Range("C3:C9")); },
     ConditionsOf("C10"), ""},
};

class DocumentedBehaviour : public Spreadsheets {};

TEST_P(DocumentedBehaviour, IsThatOfEveryLine) {
  for (const Behaviour& behaviour : kBehaviours) {
    SCOPED_TRACE(behaviour.what);
    const auto fresh = sheets->Add();
    behaviour.given(*fresh);
    EXPECT_EQ(behaviour.observed(*fresh), behaviour.expected);
  }
}

MIRELO_AGAINST_ALL(DocumentedBehaviour);

}  // namespace
}  // namespace mirelo::testing
