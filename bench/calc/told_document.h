#pragma once

#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <string>
#include <vector>

namespace mirelo {

namespace css = com::sun::star;

// What a document is, line by line, as far as Go makes it: the sheets in their order, their cells, formats,
// widths, heights, comments with their boxes, conditional formats and the number of their drawings.
std::vector<std::string> Told(const css::uno::Reference<css::sheet::XSpreadsheetDocument>& document);

}  // namespace mirelo
