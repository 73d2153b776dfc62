#include "adapters/calc/objects/border_lines.h"

#include <algorithm>
#include <array>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/TableBorder2.hpp>

#include <string>

#include "adapters/calc/objects/gathered_formats.h"
#include "adapters/calc/objects/undo_aside.h"
#include "spreadsheet/line_kind.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;
using css::table::BorderLine2;
using css::table::TableBorder2;

namespace {

constexpr std::string_view kBorder = "TableBorder2";

// Where a line is in the office's border of a range.
struct Place {
  XlBordersIndex index;
  BorderLine2 TableBorder2::*line;
  sal_Bool TableBorder2::*is_valid;  // all along the range
  // The cells across an outer line, and which line of theirs it is.
  std::int32_t rows = 0;
  std::int32_t columns = 0;
  XlBordersIndex across = xlInsideVertical;

  bool IsOuter() const { return rows != 0 || columns != 0; }
};

constexpr std::array kPlaces{
    Place{xlEdgeLeft, &TableBorder2::LeftLine, &TableBorder2::IsLeftLineValid, 0, -1, xlEdgeRight},
    Place{xlEdgeRight, &TableBorder2::RightLine, &TableBorder2::IsRightLineValid, 0, 1, xlEdgeLeft},
    Place{xlEdgeTop, &TableBorder2::TopLine, &TableBorder2::IsTopLineValid, -1, 0, xlEdgeBottom},
    Place{xlEdgeBottom, &TableBorder2::BottomLine, &TableBorder2::IsBottomLineValid, 1, 0, xlEdgeTop},
    Place{xlInsideVertical, &TableBorder2::VerticalLine, &TableBorder2::IsVerticalLineValid},
    Place{xlInsideHorizontal, &TableBorder2::HorizontalLine, &TableBorder2::IsHorizontalLineValid},
};

const Place& PlaceOf(XlBordersIndex index) {
  const auto place = std::ranges::find(kPlaces, index, &Place::index);
  if (place == kPlaces.end()) throw Refusals::NotABorder();
  return *place;
}

// The widths of lines in 1/100 mm, as Calc's own dialog draws them.
struct Weight {
  std::int32_t weight;
  sal_Int16 width;
};
constexpr std::array kWeights{Weight{xlHairline, 2}, Weight{xlThin, 26}, Weight{xlMedium, 62},
                              Weight{xlThick, 88}};
constexpr sal_Int16 kLineOfDouble = 26;
constexpr sal_Int16 kBetweenDouble = 36;

struct StyleInOffice {
  std::int32_t style;
  sal_Int16 in_office;
};
namespace styles = css::table::BorderLineStyle;
// Of those that are the same in the office the first one is read.
constexpr std::array kStyles{
    StyleInOffice{xlContinuous, styles::SOLID},      StyleInOffice{xlDot, styles::DOTTED},
    StyleInOffice{xlDash, styles::DASHED},           StyleInOffice{xlDash, styles::FINE_DASHED},
    StyleInOffice{xlDashDot, styles::DASH_DOT},      StyleInOffice{xlDashDotDot, styles::DASH_DOT_DOT},
    StyleInOffice{xlSlantDashDot, styles::DASH_DOT}, StyleInOffice{xlDouble, styles::DOUBLE},
    StyleInOffice{xlDouble, styles::DOUBLE_THIN},
};

BorderLine LineFromOffice(const BorderLine2& line) {
  const auto width = std::max<sal_Int32>(line.OuterLineWidth, static_cast<sal_Int32>(line.LineWidth));
  if (width == 0) return {};
  const auto style = std::ranges::find(kStyles, line.LineStyle, &StyleInOffice::in_office);
  const std::int32_t known = style == kStyles.end() ? std::int32_t{xlContinuous} : style->style;
  const auto nearest = std::ranges::min_element(
      kWeights, {}, [&](const Weight& weight) { return std::abs(weight.width - width); });
  const std::uint8_t as_heavy = LineOf(known, nearest->weight);
  return {as_heavy != 0 ? as_heavy : ThinnestLine(known), line.Color == 0 ? kAutomatic : line.Color};
}

BorderLine2 LineInOffice(const BorderLine& line) {
  BorderLine2 drawn;
  if (line.line == 0) return drawn;
  const LineKind& kind = kLineKinds[line.line];
  const sal_Int16 width = std::ranges::find(kWeights, kind.weight, &Weight::weight)->width;
  drawn.Color = line.color == kAutomatic ? 0 : line.color;
  drawn.LineStyle = std::ranges::find(kStyles, kind.style, &StyleInOffice::style)->in_office;
  drawn.OuterLineWidth = width;
  drawn.LineWidth = static_cast<sal_uInt32>(width);
  if (kind.style == xlDouble) {
    drawn.OuterLineWidth = drawn.InnerLineWidth = kLineOfDouble;
    drawn.LineDistance = kBetweenDouble;
  }
  return drawn;
}

// The office's answer leaves out columns that nobody ever touched, which are always the last ones.
bool LeavesOutTheLastColumn(const CellBlock& block, const Place& place, const BorderLine& line) {
  const Area& area = block.area;
  if (line.line == 0 || place.columns != 0 || place.index == xlInsideVertical || area.Columns() == 1)
    return false;
  const auto last = block.At({area.first_row, area.last_column, area.last_row, area.last_column})
                        .Properties()
                        .Get(kBorder, TableBorder2());
  return !(last.*place.is_valid) || LineFromOffice(last.*place.line) != line;
}

// Nothing where it is not the same all along.
std::optional<BorderLine> HeldLine(const CellBlock& block, const Place& place) {
  const auto border = block.Properties().Get(kBorder, TableBorder2());
  if (!(border.*place.is_valid)) return std::nullopt;
  const BorderLine line = LineFromOffice(border.*place.line);
  return LeavesOutTheLastColumn(block, place, line) ? std::nullopt : std::optional(line);
}

std::optional<CellBlock> BlockAcross(const CellBlock& block, const Place& place) {
  if (!place.IsOuter()) return std::nullopt;
  Area across = block.area;
  if (place.rows != 0)
    across.first_row = across.last_row = (place.rows < 0 ? across.first_row : across.last_row) + place.rows;
  if (place.columns != 0)
    across.first_column = across.last_column =
        (place.columns < 0 ? across.first_column : across.last_column) + place.columns;
  if (!across.IsOnSheet()) return std::nullopt;
  return block.At(across);
}

// Nothing where it is not the same all along, whichever of its cells hold it.
std::optional<BorderLine> LineAllAlong(const CellBlock& block, const Place& place) {
  std::optional<BorderLine> line = HeldLine(block, place);
  if (line && line->line == 0) {
    if (const auto across = BlockAcross(block, place)) line = HeldLine(*across, PlaceOf(place.across));
  }
  return line;
}

bool IsHollow(const CellBlock& block, XlBordersIndex index) {
  return (index == xlInsideVertical && block.area.Columns() == 1) ||
         (index == xlInsideHorizontal && block.area.Rows() == 1);
}

void Hold(const CellBlock& block, const Place& place, const BorderLine2& line) {
  TableBorder2 border;
  border.*place.line = line;
  border.*place.is_valid = true;
  block.document().StayAside();
  block.Properties().Set(kBorder, border);
}

void TakeOffAcross(const CellBlock& block, const Place& place) {
  const auto across = BlockAcross(block, place);
  if (!across) return;
  const Place& across_place = PlaceOf(place.across);
  const auto held = HeldLine(*across, across_place);
  if (!held || held->line != 0) Hold(*across, across_place, BorderLine2());
}

}  // namespace

BorderLines::BorderLines(CellBlock block, XlBordersIndex index) : block_(std::move(block)), index_(index) {
  PlaceOf(index);
}

void BorderLines::ForEach(const CellBlock& block, XlBordersIndex index, const Visit& visit) {
  const Area& area = block.area;
  if (IsHollow(block, index)) return visit(block, index, {});
  const Place& place = PlaceOf(index);
  if (const auto line = LineAllAlong(block, place)) return visit(block, index, *line);

  // Half of the lines, and the other half.
  const std::int32_t row = area.first_row + (area.Rows() - 1) / 2;
  const std::int32_t column = area.first_column + (area.Columns() - 1) / 2;
  const auto upper = [&](std::int32_t last) {
    return block.At({area.first_row, area.first_column, last, area.last_column});
  };
  const auto left = [&](std::int32_t last) {
    return block.At({area.first_row, area.first_column, area.last_row, last});
  };
  if (index == xlInsideVertical) {
    if (area.Columns() == 2) return ForEach(left(area.first_column), xlEdgeRight, visit);
    ForEach(left(std::max(column, area.first_column + 1)), index, visit);
    return ForEach(
        block.At({area.first_row, std::max(column, area.first_column + 1), area.last_row, area.last_column}),
        index, visit);
  }
  if (index == xlInsideHorizontal) {
    if (area.Rows() == 2) return ForEach(upper(area.first_row), xlEdgeBottom, visit);
    ForEach(upper(std::max(row, area.first_row + 1)), index, visit);
    return ForEach(
        block.At({std::max(row, area.first_row + 1), area.first_column, area.last_row, area.last_column}),
        index, visit);
  }
  if (place.columns != 0) {
    ForEach(upper(row), index, visit);
    return ForEach(block.At({row + 1, area.first_column, area.last_row, area.last_column}), index, visit);
  }
  ForEach(left(column), index, visit);
  ForEach(block.At({area.first_row, column + 1, area.last_row, area.last_column}), index, visit);
}

void BorderLines::Draw(const CellBlock& block, XlBordersIndex index, const Line& line) {
  if (IsHollow(block, index)) return;
  const Place& place = PlaceOf(index);
  Hold(block, place, LineInOffice(line));
  TakeOffAcross(block, place);
}

bool BorderLines::Gather(const std::function<void(Line&)>& change) const {
  const Document& document = block_.document();
  return document.AskAsItStands([&] {
    GatheredFormats& gathered = document.Gathered();
    if (gathered.HasLinesBesideThoseOf(block_)) gathered.Lay();  // they may lie along these
    GatheredFormats::BlockFormat& format = gathered.Of(block_);
    if (IsHollow(block_, index_)) return true;
    auto known = format.lines.find(index_);
    if (known == format.lines.end()) {
      const Place& place = PlaceOf(index_);
      const auto line = LineAllAlong(block_, place);
      if (!line) return false;
      const UndoAside aside(block_.document(), UndoAside::OfCells());
      TakeOffAcross(block_, place);
      known = format.lines.emplace(index_, *line).first;
    }
    change(known->second);
    TableBorder2 border;
    for (const auto& [index, line] : format.lines) {
      border.*PlaceOf(index).line = LineInOffice(line);
      border.*PlaceOf(index).is_valid = true;
    }
    format.properties.insert_or_assign(std::string(kBorder), Any(border));
    return true;
  });
}

}  // namespace mirelo::calc
