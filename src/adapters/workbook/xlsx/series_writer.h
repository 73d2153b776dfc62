#pragma once

#include <cstddef>
#include <pugixml.hpp>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// Appends the element of a chart's series of this index.
void AppendSeries(pugi::xml_node group, const Chart& chart, std::size_t index, const Book& book);

}  // namespace mirelo::workbook
