#pragma once

#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <cstdint>

namespace mirelo {

namespace css = com::sun::star;

// Makes of a new document what Go of the benchmarks makes of it with so many histories, by the office's own
// interfaces and nothing else, in the quickest ways that are known: cells as one block a sheet, all
// properties of like cells in one call, no steps for undoing, and windows that stand still. Sheets are not
// copied: that takes longer than to make them, and doubles the boxes of comments.
void GoByHand(const css::uno::Reference<css::sheet::XSpreadsheetDocument>& document, std::int32_t histories);

}  // namespace mirelo
