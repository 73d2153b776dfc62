#pragma once

#include <optional>
#include <vector>

#include "spreadsheet/area.h"

namespace mirelo::spreadsheet {

using AreaSet = std::vector<Area>;

// What is left of the areas without the cells of `gone`.
AreaSet Without(const AreaSet& areas, const Area& gone);

// Where areas lie after the cells of `gone` were taken out of the sheet and those below have moved up. An
// area that reaches the sheet's foot still reaches it.
AreaSet AfterDeletion(const AreaSet& areas, const Area& gone);

// The same for one area; nothing when all its cells are gone. An area of which only some columns would move
// stays where it is.
std::optional<Area> AfterDeletion(const Area& area, const Area& gone);

}  // namespace mirelo::spreadsheet
