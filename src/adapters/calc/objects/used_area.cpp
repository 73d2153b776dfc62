#include "adapters/calc/objects/used_area.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <cstdint>
#include <vector>

#include "adapters/calc/objects/cell_formats.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;

namespace {

using css::table::CellRangeAddress;

Area AreaOfAddress(const CellRangeAddress& address) {
  return {address.StartRow + 1, address.StartColumn + 1, address.EndRow + 1, address.EndColumn + 1};
}

bool IsFormatted(const Reference<css::table::XCell>& cell) {
  css::uno::Sequence<rtl::OUString> names(static_cast<sal_Int32>(kCellFormats.size()));
  std::ranges::transform(kCellFormats, names.getArray(), [](const char* name) { return OfficeText(name); });
  const auto states = As<css::beans::XPropertyState>(cell)->getPropertyStates(names);
  return std::any_of(states.begin(), states.end(), [](css::beans::PropertyState state) {
    return state != css::beans::PropertyState_DEFAULT_VALUE;
  });
}

// Filled cells of a row or a column that follow each other.
struct Run {
  std::int32_t first;
  std::int32_t last;
};

// Which way End goes, and how far at most.
struct Way {
  bool is_down;  // along a column
  bool is_forward;
};

Way WayOf(XlDirection direction) {
  switch (direction) {
    case xlDown:
      return {true, true};
    case xlUp:
      return {true, false};
    case xlToRight:
      return {false, true};
    case xlToLeft:
      return {false, false};
  }
  throw Refusals::NotADirection();
}

// From a block's first cell to the sheet's edge.
Area LineOf(const Area& block, Way way) {
  Area line = Area::Cell(block.first_row, block.first_column);
  if (way.is_down) {
    (way.is_forward ? line.last_row : line.first_row) = way.is_forward ? kRows : 1;
  } else {
    (way.is_forward ? line.last_column : line.first_column) = way.is_forward ? kColumns : 1;
  }
  return line;
}

std::vector<Run> RunsIn(const CellBlock& line, bool is_down) {
  namespace flags = css::sheet::CellFlags;
  const auto filled = As<css::sheet::XCellRangesQuery>(line.Cells())
                          ->queryContentCells(static_cast<sal_Int16>(flags::VALUE | flags::DATETIME |
                                                                     flags::STRING | flags::FORMULA));
  std::vector<Run> runs;
  for (const CellRangeAddress& address : filled->getRangeAddresses()) {
    const Area area = AreaOfAddress(address);
    runs.push_back(is_down ? Run{area.first_row, area.last_row} : Run{area.first_column, area.last_column});
  }
  std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) { return a.first < b.first; });
  std::vector<Run> joined;
  for (const Run& run : runs) {
    if (!joined.empty() && joined.back().last + 1 >= run.first) {
      joined.back().last = std::max(joined.back().last, run.last);
    } else {
      joined.push_back(run);
    }
  }
  return joined;
}

// To the end of the run that `from` lies in, else to the next filled cell, else to the edge.
std::int32_t EndForward(const std::vector<Run>& runs, std::int32_t from, std::int32_t edge) {
  for (const Run& run : runs) {
    if (run.last == from) continue;
    return run.first <= from ? run.last : run.first;
  }
  return edge;
}

std::int32_t EndBackward(const std::vector<Run>& runs, std::int32_t from) {
  for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
    if (run->first == from) continue;
    return run->last >= from ? run->first : run->last;
  }
  return 1;
}

}  // namespace

Area UsedArea(DocumentSheet& sheet) {
  const auto cursor = sheet.Get()->createCursor();
  As<css::sheet::XUsedAreaCursor>(cursor)->gotoEndOfUsedArea(false);
  const Area last = AreaOfAddress(As<css::sheet::XCellRangeAddressable>(cursor)->getRangeAddress());
  return {1, 1, last.last_row, last.last_column};
}

Area UsedOrFormattedArea(DocumentSheet& sheet) {
  Area used = UsedArea(sheet);
  const auto formats = As<css::container::XIndexAccess>(
      As<css::sheet::XUniqueCellFormatRangesSupplier>(sheet.Get())->getUniqueCellFormatRanges());
  for (sal_Int32 i = 0; i < formats->getCount(); ++i) {
    const auto alike = As<css::sheet::XSheetCellRanges>(formats->getByIndex(i))->getRangeAddresses();
    if (!alike.hasElements()) continue;
    // Whether all of them are formatted is told by one, and asking them together takes as long as a sheet is
    // wide.
    const CellRangeAddress& first = alike[0];
    if (!IsFormatted(sheet.Get()->getCellByPosition(first.StartColumn, first.StartRow))) continue;
    for (const CellRangeAddress& range : alike) {
      const Area area = AreaOfAddress(range);
      if (area.last_row == kRows) continue;  // a format of its columns
      used.last_row = std::max(used.last_row, area.last_row);
      if (!area.IsWholeRows()) used.last_column = std::max(used.last_column, area.last_column);
    }
  }
  return used;
}

CellPlace EndFrom(const CellBlock& block, XlDirection direction) {
  const Way way = WayOf(direction);
  const CellPlace from{block.area.first_row, block.area.first_column};
  const std::vector<Run> runs = RunsIn(block.At(LineOf(block.area, way)), way.is_down);
  const std::int32_t at = way.is_down ? from.row : from.column;
  const std::int32_t end =
      way.is_forward ? EndForward(runs, at, way.is_down ? kRows : kColumns) : EndBackward(runs, at);
  return way.is_down ? CellPlace{end, from.column} : CellPlace{from.row, end};
}

}  // namespace mirelo::calc
