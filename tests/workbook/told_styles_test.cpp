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
#include <vector>

#include "host/excel/border.h"
#include "host/excel/constants.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "support/sanitized.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using workbook::Spreadsheet;

// The 36,000 rows of a history without a limit; under the sanitizers a third of them, still a hundred times
// the shortest run that is told by its column, and more than the writer gathers at once.
const std::int32_t kLastFormatted = kIsSanitized ? 12'002 : 36'002;
constexpr const char* kToldFormats[] = {"0.00", "#,##0", "mm/dd/yyyy"};

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
      sheet->Cells(3, column)->Resize(kLastFormatted - 2, 1)->NumberFormat(kToldFormats[column - 1]);
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
                                   kLastFormatted + 1, kLastFormatted + 2, 500'000, spreadsheet::kRows}) {
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
    paint(*SheetOf(history)->Range("A3:C" + std::to_string(kLastFormatted)));
    EXPECT_GT(ToldCells(history), std::size_t{3} * static_cast<std::size_t>(kLastFormatted - 1'000));
    EXPECT_EQ(CountOf("<col ", Unzip(BytesOf(File())).at(kSheetPart)), 0U);
    ExpectSameFormats(history, Spreadsheet::Open(File()));
  };
  with([](host::excel::Range& range) { range.Interior()->ColorIndex(36); });
  with([](host::excel::Range& range) { range.Borders(host::excel::xlInsideHorizontal)->LineStyle(1); });
  with([](host::excel::Range& range) { range.Borders(host::excel::xlInsideVertical)->LineStyle(1); });
  with([](host::excel::Range& range) { range.Font()->Size(30); });
}

TEST_F(LongFormats, AreToldByTheirCellsWhereSomethingStandsAtTheirEnd) {
  auto history = History(0);
  SheetOf(history)->Cells(kLastFormatted, 1)->Value(1);
  SheetOf(history)->Cells(kLastFormatted + 1, 2)->Value(1);
  SheetOf(history)->Cells(50'000, 3)->Value(1);
  EXPECT_GT(ToldCells(history), std::size_t{3} * static_cast<std::size_t>(kLastFormatted - 1'000));
  ExpectSameFormats(history, Spreadsheet::Open(File()));
}

// A person's file in which a column has a format, and its last cells formats of their own.
class PersonsColumn : public LongFormats {
 protected:
  // With format 3, "0.00", and these cells, each of a row, a format and a value, if any.
  struct Cell {
    std::int32_t row;
    int format;
    std::string value;
  };
  static Parts FileWith(const std::vector<Cell>& cells) {
    std::string rows;
    for (const Cell& cell : cells) {
      const std::string row = std::to_string(cell.row);
      const std::string value = cell.value.empty() ? "" : "<v>" + cell.value + "</v>";
      rows += "<row r=\"" + row + "\"><c r=\"A" + row + "\" s=\"" + std::to_string(cell.format) + "\">" +
              value + "</c></row>";
    }
    Parts parts = SmallWorkbook(rows);
    ReplaceIn(parts[kSheetPart], "<sheetData>",
              "<cols><col min=\"1\" max=\"1\" width=\"9\" style=\"3\"/></cols><sheetData>");
    return parts;
  }
  // The number format far below.
  Variant FormatBelow(const std::vector<Cell>& cells) const {
    return SheetOf(Open(FileWith(cells)))->Range("A999")->NumberFormat();
  }
};

TEST_F(PersonsColumn, EndsWhereTheFileTellsItAsThisProgramDoes) {
  const Variant column("0.00");
  EXPECT_EQ(FormatBelow({{400, 3, ""}, {401, 0, ""}}), Variant("General"));
  EXPECT_EQ(FormatBelow({{401, 0, ""}}), column);
  EXPECT_EQ(FormatBelow({{400, 3, "1"}, {401, 0, ""}}), column);
  EXPECT_EQ(FormatBelow({{400, 3, ""}, {401, 0, "1"}}), column);
  EXPECT_EQ(FormatBelow({{399, 3, ""}, {401, 0, ""}}), column);
}

// This program would not tell such an end so: the format is short, or the rest of the column would show.
TEST_F(PersonsColumn, ReachesToTheFootWhereThisProgramWouldNotEndIt) {
  EXPECT_EQ(FormatBelow({{4, 3, ""}, {5, 0, ""}}), Variant("0.00"));
  EXPECT_EQ(FormatBelow({{300, 0, ""}, {400, 3, ""}, {401, 0, ""}}), Variant("0.00"));
  EXPECT_EQ(FormatBelow({{400, 3, ""}, {401, 2, ""}}), Variant("0.00"));
  EXPECT_EQ(SheetOf(Open(FileWith({{400, 3, ""}, {401, 2, ""}})))->Range("A999")->Interior()->ColorIndex(),
            Variant(host::excel::xlColorIndexNone));
}

TEST_F(PersonsColumn, ReachesToTheFootWhereARowBelowHasAFormat) {
  Parts parts = FileWith({{400, 3, ""}, {401, 0, ""}});
  ReplaceIn(parts[kSheetPart], "</sheetData>", "<row r=\"500\" s=\"2\" customFormat=\"1\"/></sheetData>");
  const auto sheet = SheetOf(Open(parts));
  EXPECT_EQ(sheet->Range("A999")->NumberFormat(), Variant("0.00"));
  EXPECT_NE(sheet->Range("A500")->Interior()->ColorIndex(), Variant(host::excel::xlColorIndexNone));
}

TEST_F(PersonsColumn, IsSavedAsItWasWhateverItsLastCellsAre) {
  for (const std::vector<Cell>& cells : std::vector<std::vector<Cell>>{{{4, 3, ""}, {5, 0, ""}},
                                                                       {{4, 3, ""}, {5, 2, ""}},
                                                                       {{400, 3, ""}, {401, 0, ""}},
                                                                       {{400, 3, ""}, {401, 2, ""}}}) {
    SCOPED_TRACE(cells.front().row);
    SCOPED_TRACE(cells.back().format);
    auto spreadsheet = Open(FileWith(cells));
    SheetOf(spreadsheet)->Range("C1")->Value(1);  // or the sheet would be kept
    spreadsheet.Save(File("saved.xlsx"));
    const std::string sheet = Unzip(BytesOf(File("saved.xlsx"))).at(kSheetPart);
    const std::string last = std::to_string(cells.back().row);
    EXPECT_EQ(CountOf("<col ", sheet), 1U);
    EXPECT_EQ(CountOf("<c r=\"A" + last + "\"", sheet), 1U) << sheet;
    EXPECT_LE(CountOf("<c r=\"A", sheet), 2U) << sheet;
    const auto again = SheetOf(Spreadsheet::Open(File("saved.xlsx")));
    const auto before = SheetOf(Open(FileWith(cells)));
    for (const std::int32_t row : {1, 4, 5, 6, 399, 400, 401, 402, 999}) {
      SCOPED_TRACE(row);
      EXPECT_EQ(again->Cells(row, 1)->NumberFormat(), before->Cells(row, 1)->NumberFormat());
      EXPECT_EQ(again->Cells(row, 1)->Interior()->ColorIndex(),
                before->Cells(row, 1)->Interior()->ColorIndex());
    }
  }
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
          100, 300, kLastFormatted, kLastFormatted + 1, spreadsheet::kRows - 1, spreadsheet::kRows};
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
        range->NumberFormat(kToldFormats[static_cast<std::size_t>(below(3))]);
      }
      if (below(2) == 0) sheet->Cells(1 + below(400), 1 + below(4))->Value(1.5);
    }
    ExpectSameFormats(spreadsheet, Reloaded(spreadsheet));
  }
}

}  // namespace
}  // namespace mirelo::testing
