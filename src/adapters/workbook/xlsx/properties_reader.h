#pragma once

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/xlsx/relationships.h"

namespace mirelo::workbook {

// The document's properties, from the parts that the package refers to.
DocumentProperties ReadProperties(Package& package, const Relationships& relationships);

}  // namespace mirelo::workbook
