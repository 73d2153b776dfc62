#include "adapters/calc/objects/gathered_formats.h"

#include <algorithm>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/undo_aside.h"
#include "spreadsheet/area_set.h"

namespace mirelo::calc {

using spreadsheet::Area;

namespace {

bool AreSame(const CellBlock& a, const CellBlock& b) { return a.sheet == b.sheet && a.area == b.area; }

bool ShareCells(const CellBlock& a, const CellBlock& b) {
  return a.sheet == b.sheet && spreadsheet::Shared(a.area, b.area).has_value();
}

Properties CellsOf(DocumentSheet& sheet, const spreadsheet::AreaSet& areas) {
  const auto ranges =
      As<css::sheet::XSheetCellRangeContainer>(As<css::lang::XMultiServiceFactory>(sheet.document().uno())
                                                   ->createInstance("com.sun.star.sheet.SheetCellRanges"));
  const auto tab = static_cast<sal_Int16>(sheet.Index() - 1);
  for (const Area& area : areas)
    ranges->addRangeAddress(
        {tab, area.first_column - 1, area.first_row - 1, area.last_column - 1, area.last_row - 1}, false);
  return Properties(ranges);
}

}  // namespace

// Cells of one sheet that get the same.
struct GatheredFormats::Alike {
  const BlockFormat* first;
  spreadsheet::AreaSet areas;

  bool Takes(const BlockFormat& format) const {
    return format.lines.empty() && first->lines.empty() && format.block.sheet == first->block.sheet &&
           format.properties == first->properties;
  }
  void Take(const Area& area) {
    Area& last = areas.back();
    if (last.first_row == area.first_row && last.last_row == area.last_row &&
        last.last_column + 1 == area.first_column) {
      last.last_column = area.last_column;
    } else {
      areas.push_back(area);
    }
  }
  Properties Cells() const {
    return areas.size() == 1 ? first->block.At(areas.front()).Properties()
                             : CellsOf(*first->block.sheet, areas);
  }
};

GatheredFormats::BlockFormat& GatheredFormats::Of(const CellBlock& block) {
  const auto known =
      std::ranges::find_if(formats_, [&](const BlockFormat& format) { return AreSame(format.block, block); });
  if (known != formats_.end()) return *known;
  if (std::ranges::any_of(formats_,
                          [&](const BlockFormat& format) { return ShareCells(format.block, block); }))
    Lay();
  block.CheckNotProtected();
  return formats_.emplace_back(BlockFormat{block});
}

bool GatheredFormats::HasLinesBesideThoseOf(const CellBlock& block) const {
  return std::ranges::any_of(formats_, [&](const BlockFormat& format) {
    return !format.lines.empty() && !AreSame(format.block, block);
  });
}

void GatheredFormats::Lay() {
  if (formats_.empty()) return;
  const std::vector<BlockFormat> formats = std::exchange(formats_, {});
  const std::vector<Alike> together = Together(formats);
  if (together.empty()) return;
  const UndoAside aside(document_, UndoAside::OfCells());
  for (const Alike& alike : together) {
    const auto& properties = alike.first->properties;
    css::uno::Sequence<rtl::OUString> names(static_cast<sal_Int32>(properties.size()));
    css::uno::Sequence<Any> values(names.getLength());
    sal_Int32 i = 0;
    for (const auto& [name, value] : properties) {
      names.getArray()[i] = OfficeText(name);
      values.getArray()[i++] = value;
    }
    document_.StayAside();
    alike.Cells().Set(names, values);
  }
}

std::vector<GatheredFormats::Alike> GatheredFormats::Together(const std::vector<BlockFormat>& formats) {
  std::vector<Alike> all;
  for (const BlockFormat& format : formats) {
    if (format.properties.empty()) continue;
    const auto alike = std::ranges::find_if(all, [&](const Alike& others) { return others.Takes(format); });
    if (alike == all.end()) {
      all.push_back({&format, {format.block.area}});
    } else {
      alike->Take(format.block.area);
    }
  }
  return all;
}

}  // namespace mirelo::calc
