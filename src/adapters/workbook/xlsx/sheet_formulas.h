#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/workbook/model/area.h"
#include "adapters/workbook/xlsx/formula_references.h"
#include "adapters/workbook/xlsx/package.h"

namespace mirelo::workbook {

// A formula of a sheet's part.
struct SheetFormula {
  CellPlace place;
  std::shared_ptr<const FormulaReferences> references;  // as seen from its cell
  // The further cells of the file that hold its results, as those of an array formula; and whether there may
  // be others that the file does not have.
  std::vector<CellPlace> others;
  bool may_fill_more = false;
};

// Calls visit(formula) for each formula of a sheet's part. Errors as XmlPart.
void ForEachFormula(Package& package, const std::string& part,
                    const std::function<void(SheetFormula&&)>& visit);

}  // namespace mirelo::workbook
