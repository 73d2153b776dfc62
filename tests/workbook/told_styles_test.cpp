// Formats that reach far down over empty cells: how a file tells them, and what is read of that.

#include "adapters/workbook/xlsx/told_styles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>

#include "host/excel/border.h"
#include "host/excel/constants.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using workbook::Spreadsheet;

constexpr std::int32_t kLastFormatted = 36'002;
constexpr const char* kFormats[] = {"0.00", "#,##0", "mm/dd/yyyy"};

std::size_t CountOf(std::string_view what, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += what.size()) ++count;
  return count;
}

class LongFormats : public WorkbookFiles {
 protected:
  // A history of some rows, with formats for those to come.
  static Spreadsheet History(std::int32_t rows) {
    auto spreadsheet = Spreadsheet::New();
    const auto sheet = SheetOf(spreadsheet);
    sheet->Range("A1")->Value("Ticker:");
    for (std::int32_t column = 1; column <= 3; ++column) {
      sheet->Cells(2, column)->Value("Field " + std::to_string(column));
      sheet->Cells(3, column)->Resize(kLastFormatted - 2, 1)->NumberFormat(kFormats[column - 1]);
      for (std::int32_t row = 3; row < 3 + rows; ++row) sheet->Cells(row, column)->Value(row * 1.5 + column);
    }
    sheet->Cells(3, 2)->Resize(kLastFormatted - 2, 1)->HorizontalAlignment(host::excel::xlHAlignCenter);
    return spreadsheet;
  }
  // How many cells the file tells.
  std::size_t ToldCells(Spreadsheet& spreadsheet) const {
    spreadsheet.Save(File());
    return CountOf("<c r=", Unzip(BytesOf(File())).at(kSheetPart));
  }
  static void ExpectSameFormats(const Spreadsheet& spreadsheet, const Spreadsheet& other) {
    const auto sheet = SheetOf(spreadsheet);
    const auto same = SheetOf(other);
    for (const std::int32_t row : {1, 2, 3, 80, 81, 9'999, kLastFormatted - 1, kLastFormatted,
                                   kLastFormatted + 1, kLastFormatted + 2, 500'000, workbook::kRows}) {
      for (std::int32_t column = 1; column <= 5; ++column) {
        SCOPED_TRACE(std::to_string(row) + ", " + std::to_string(column));
        const auto cell = sheet->Cells(row, column);
        const auto twin = same->Cells(row, column);
        EXPECT_EQ(cell->NumberFormat(), twin->NumberFormat());
        EXPECT_EQ(cell->HorizontalAlignment(), twin->HorizontalAlignment());
        EXPECT_EQ(cell->Interior()->ColorIndex(), twin->Interior()->ColorIndex());
      }
    }
  }
  static std::int32_t LastRow(const Spreadsheet& spreadsheet) {
    return SheetOf(spreadsheet)->Cells(1, 1)->SpecialCells(host::excel::xlCellTypeLastCell)->Row();
  }
};

TEST_F(LongFormats, TakeNoCellsOfRowsThatAreYetToCome) {
  constexpr std::int32_t kRowsOfData = 78;
  auto history = History(kRowsOfData);
  EXPECT_LT(ToldCells(history), std::size_t{3} * (kRowsOfData + 10));
  EXPECT_LT(std::filesystem::file_size(File()), 20'000U);
}

TEST_F(LongFormats, AreReadBackAsTheyWere) {
  auto history = History(78);
  auto again = Reloaded(history);
  ExpectSameFormats(history, again);
  EXPECT_EQ(LastRow(again), kLastFormatted);
  auto once_more = Reloaded(again);
  ExpectSameFormats(history, once_more);
  EXPECT_TRUE(once_more.Losses().empty());
}

TEST_F(LongFormats, AreThereForTheNextDaysRows) {
  auto history = History(78);
  auto next_day = Reloaded(history);
  SheetOf(next_day)->Cells(81, 3)->Value("03/05/2011");
  auto again = Reloaded(next_day);
  EXPECT_EQ(SheetOf(again)->Cells(81, 3)->Value().type(), Variant::Type::Date);
  EXPECT_EQ(SheetOf(again)->Cells(81, 3)->Text(), "03/05/2011");
  EXPECT_EQ(SheetOf(again)->Cells(kLastFormatted, 3)->NumberFormat(), Variant("mm/dd/yyyy"));
  EXPECT_EQ(SheetOf(again)->Cells(kLastFormatted + 1, 3)->NumberFormat(), Variant("General"));
}

TEST_F(LongFormats, AreToldByTheirCellsWhereTheFootWouldShowThem) {
  const auto with = [&](auto&& paint) {
    auto history = History(0);
    paint(*SheetOf(history)->Range("A3:C36002"));
    EXPECT_GT(ToldCells(history), 3U * 35'000U);
    EXPECT_EQ(CountOf("<col ", Unzip(BytesOf(File())).at(kSheetPart)), 0U);
    ExpectSameFormats(history, Spreadsheet::Open(File()));
  };
  with([](host::excel::Range& range) { range.Interior()->ColorIndex(36); });
  with([](host::excel::Range& range) { range.Borders(host::excel::xlInsideHorizontal)->LineStyle(1); });
  with([](host::excel::Range& range) { range.Font()->Size(30); });
}

TEST_F(LongFormats, AreToldByTheirCellsWhereSomethingStandsAtTheirEnd) {
  auto history = History(0);
  SheetOf(history)->Cells(kLastFormatted, 1)->Value(1);
  SheetOf(history)->Cells(kLastFormatted + 1, 2)->Value(1);
  SheetOf(history)->Cells(50'000, 3)->Value(1);
  EXPECT_GT(ToldCells(history), 3U * 35'000U);
  ExpectSameFormats(history, Spreadsheet::Open(File()));
}

// A person's file in which a column has a format, and its last cell another one.
TEST_F(LongFormats, OfAPersonsColumnReachToTheFoot) {
  const auto format_of = [&](std::string_view rows) {
    Parts parts = SmallWorkbook(rows);
    ReplaceIn(parts[kSheetPart], "<sheetData>",
              "<cols><col min=\"1\" max=\"1\" width=\"9\" style=\"3\"/></cols><sheetData>");
    return SheetOf(Open(parts))->Range("A9")->NumberFormat();
  };
  const Variant column("0.00");
  EXPECT_EQ(format_of("<row r=\"4\"><c r=\"A4\" s=\"3\"/></row><row r=\"5\"><c r=\"A5\" s=\"0\"/></row>"),
            Variant("General"))
      << "as this program tells an end";
  EXPECT_EQ(format_of("<row r=\"5\"><c r=\"A5\" s=\"0\"/></row>"), column);
  EXPECT_EQ(
      format_of(
          "<row r=\"4\"><c r=\"A4\" s=\"3\"><v>1</v></c></row><row r=\"5\"><c r=\"A5\" s=\"0\"/></row>"),
      column);
  EXPECT_EQ(
      format_of(
          "<row r=\"4\"><c r=\"A4\" s=\"3\"/></row><row r=\"5\"><c r=\"A5\" s=\"0\"><v>1</v></c></row>"),
      column);
  EXPECT_EQ(format_of("<row r=\"3\"><c r=\"A3\" s=\"3\"/></row><row r=\"5\"><c r=\"A5\" s=\"0\"/></row>"),
            column);
}

TEST_F(LongFormats, OfAnyKindAreReadBackAsTheyWere) {
  std::mt19937 random(78);
  const auto below = [&](std::int32_t bound) {
    return static_cast<std::int32_t>(random() % static_cast<unsigned>(bound));
  };
  for (int round = 0; round < 12; ++round) {
    SCOPED_TRACE(round);
    auto spreadsheet = Spreadsheet::New();
    const auto sheet = SheetOf(spreadsheet);
    for (int step = 0; step < 6; ++step) {
      const std::int32_t ends[] = {
          100, 300, kLastFormatted, kLastFormatted + 1, workbook::kRows - 1, workbook::kRows};
      const std::int32_t row = 1 + below(200);
      const std::int32_t last = std::max(row, ends[static_cast<std::size_t>(below(5))]);
      const std::int32_t column = 1 + below(4);
      // What shows takes a cell each, of which a file holds only so many.
      const bool shows = below(6) == 0;
      const std::int32_t height = shows ? 1 + below(50) : last - row + 1;
      const auto range = sheet->Cells(row, column)->Resize(height, 1 + below(2));
      if (shows) {
        range->Interior()->ColorIndex(36);
      } else {
        range->NumberFormat(kFormats[static_cast<std::size_t>(below(3))]);
      }
      if (below(2) == 0) sheet->Cells(1 + below(400), 1 + below(4))->Value(1.5);
    }
    ExpectSameFormats(spreadsheet, Reloaded(spreadsheet));
  }
}

}  // namespace
}  // namespace mirelo::testing
