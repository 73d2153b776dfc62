#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/formula_references.h"
#include "adapters/workbook/xlsx/package.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// A formula of a sheet's part.
struct SheetFormula {
  CellPlace place;
  std::shared_ptr<const FormulaReferences> references;  // as seen from its cell
  // Further cells of the file that hold results of it, as an array formula has them; and whether it may fill
  // cells besides, which do not stand in the file.
  std::vector<CellPlace> others;
  bool may_fill_more = false;
};

// Calls visit(formula) for each formula of a sheet's part. Errors as XmlPart.
void ForEachFormula(Package& package, const std::string& part,
                    const std::function<void(SheetFormula&&)>& visit);

}  // namespace mirelo::workbook
