#include "calc/limits.h"

#include <array>
#include <string_view>

namespace mirelo::testing {

namespace {

constexpr std::string_view kBoxes =
    "Calc shows the box of a comment while the pointer is over its cell, where there is room";

constexpr std::array kLimits{
    Limit{"Borders.TakeAStyleThatSlants",
          "Calc's lines do not slant: people see dashes and dots, which read as such"},
    Limit{"CellValues.CountTheDaysOf1900AsTheSpreadsheetDoes",
          "Calc's calendar knows that 1900 was no leap year: the numbers are the same, and up to 28 February "
          "1900 people see the day before"},
    Limit{"CommentBoxes.CanBeSelected", kBoxes},
    Limit{"CommentBoxes.GoWithTheirComments", kBoxes},
    Limit{"CommentBoxes.StandBesideTheirCells", kBoxes},
    Limit{"Comments.MayBeEmpty", "Calc drops a comment without text: people see one with a blank"},
    Limit{"DisplayFormats.TakeFromTheFirstConditionWhatSeveralChange",
          "Calc shows a cell in the style of the first condition that it meets, and of no other"},
    Limit{
        "DisplayFormats.TakeTextsAndBooleansAsGreaterThanNumbers",
        "Calc's conditions take a text as unequal to any number and no more, and a boolean as 0 or 1: people "
        "see such cells in their own colours"},
    Limit{"DisplayedText.OfDaysThatTheCalendarLacks",
          "Calc's calendar goes back behind 1900 and on behind 9999: people see dates there, and in place of "
          "29 February 1900 the day before"},
    Limit{"DisplayedText.OfNumbersThatTakeMoreThanElevenPlacesInTheGeneralForm",
          "Calc's General form shows up to fifteen places, and as many as the column is wide on the screen"},
    Limit{"DisplayedText.OfTimesIsRoundedToWhatIsShown",
          "Calc cuts times off: people see 23:59:59 for what is nearly midnight"},
    Limit{"DisplayedText.OfTimesWithALetterForTheHalfOfTheDay", "Calc writes that letter small: 6:00 p"},
    Limit{"FontSize.IsElevenPointsAtFirst", "Calc's standard font is of 10 points, or what the person chose"},
    Limit{"Patterns.KeepAColorOfTheirLinesUnseenInASolidGround",
          "Calc's cells have no patterns: people see the ground's colour alone, as they would there"},
    Limit{"RangePlace.IsMeasuredInWholePixels",
          "Calc measures in twentieths of a point and tells hundredths of a millimetre"},
    Limit{"RangePlace.OfACellThatNobodyResizedIs48By15Points",
          "Calc's standard cells are 64 by 12.8 points large, or what the person chose"},
    Limit{"WindowOnSheet.ShowsTwentyColumnsAnd27RowsOfTheirFirstSizes",
          "the window is the person's, as large as they made it"},
};

}  // namespace

std::span<const Limit> CalcLimits() { return kLimits; }

}  // namespace mirelo::testing
