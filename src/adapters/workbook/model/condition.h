#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/workbook/model/area_set.h"
#include "adapters/workbook/model/style.h"
#include "host/excel/constants.h"

namespace mirelo::workbook {

// What a condition changes of a cell's look; what it does not name stays.
struct ConditionalLook {
  std::optional<bool> bold;
  std::optional<Color> color;  // of the letters
  friend bool operator==(const ConditionalLook&, const ConditionalLook&) = default;
};

// A look for the cells of some areas whose values compare with a value as the operator says.
struct Condition {
  AreaSet areas;
  host::excel::XlFormatConditionOperator op = host::excel::xlEqual;
  std::string formula;  // without a leading "="
  ConditionalLook look;
};

// The conditional formats of a sheet, from the first that is looked at to the last.
class Conditions {
 public:
  // Clients hold a condition whatever becomes of its cells.
  using List = std::vector<std::shared_ptr<Condition>>;

  const List& all() const { return list_; }
  // Those that reach at least one cell of the area.
  List Touching(const Area& area) const;

  std::shared_ptr<Condition> Add(Condition condition);
  // Takes the conditions away from the area's cells.
  void Clear(const Area& area);
  // Takes the area's cells out of the sheet; those below move up.
  void Delete(const Area& area);

 private:
  // Replaces the areas of each condition by change(areas), and forgets conditions without areas.
  template <class Change>
  void ChangeAreas(Change&& change);

  List list_;
};

}  // namespace mirelo::workbook
