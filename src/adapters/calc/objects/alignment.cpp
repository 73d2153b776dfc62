#include "adapters/calc/objects/alignment.h"

#include <array>
#include <com/sun/star/table/CellJustifyMethod.hpp>

#include "adapters/calc/objects/block_change.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/gathered_formats.h"
#include "host/excel/constants.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace css::table;

namespace {

struct AlignmentRow {
  std::int32_t alignment;
  OfficeAlignment in_office;
};

// Of those that are the same in the office the first one is read.
constexpr std::array kAlignments{
    AlignmentRow{xlHAlignGeneral, {CellHoriJustify_STANDARD, CellJustifyMethod::AUTO}},
    AlignmentRow{xlHAlignLeft, {CellHoriJustify_LEFT, CellJustifyMethod::AUTO}},
    AlignmentRow{xlHAlignCenter, {CellHoriJustify_CENTER, CellJustifyMethod::AUTO}},
    AlignmentRow{xlHAlignCenterAcrossSelection, {CellHoriJustify_CENTER, CellJustifyMethod::AUTO}},
    AlignmentRow{xlHAlignRight, {CellHoriJustify_RIGHT, CellJustifyMethod::AUTO}},
    AlignmentRow{xlHAlignFill, {CellHoriJustify_REPEAT, CellJustifyMethod::AUTO}},
    AlignmentRow{xlHAlignJustify, {CellHoriJustify_BLOCK, CellJustifyMethod::AUTO}},
    AlignmentRow{xlHAlignDistributed, {CellHoriJustify_BLOCK, CellJustifyMethod::DISTRIBUTE}},
};

}  // namespace

OfficeAlignment AlignmentInOffice(std::int32_t alignment) {
  for (const AlignmentRow& row : kAlignments) {
    if (row.alignment == alignment) return row.in_office;
  }
  throw spreadsheet::Refusals::NotAnAlignment();
}

void Align(const CellBlock& cells, const OfficeAlignment& alignment) {
  const Document& document = cells.document();
  // To ask takes a small part of the time of a change, which most columns of clients do not need. Of several
  // columns the office's answer leaves out those that nobody ever touched.
  const bool is_so_already = document.AskAsItStands([&] {
    GatheredFormats& gathered = document.Gathered();
    const bool is_laid_with_others = !gathered.Of(cells).properties.empty();
    if (!document.Gathers()) gathered.Lay();
    if (is_laid_with_others || cells.area.Columns() > 1) return false;
    const Properties properties = cells.Properties();
    return properties.Common<CellHoriJustify>("HoriJustify") == alignment.justify &&
           properties.Common<sal_Int32>("HoriJustifyMethod") == alignment.method;
  });
  if (is_so_already) return;
  FormatCells(cells, {{"HoriJustify", Any(alignment.justify)}, {"HoriJustifyMethod", Any(alignment.method)}});
}

Variant AlignmentOf(const Properties& cells) {
  const auto justify = cells.Common<CellHoriJustify>("HoriJustify");
  if (!justify) return {};
  const auto method = *justify == CellHoriJustify_BLOCK
                          ? cells.Get("HoriJustifyMethod", CellJustifyMethod::AUTO)
                          : CellJustifyMethod::AUTO;
  for (const AlignmentRow& row : kAlignments) {
    if (row.in_office.justify == *justify && row.in_office.method == method) return row.alignment;
  }
  return std::int32_t{xlHAlignGeneral};
}

}  // namespace mirelo::calc
