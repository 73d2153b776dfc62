#include "adapters/workbook/xlsx/sheet_formulas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <pugixml.hpp>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/address.h"

namespace mirelo::workbook {

namespace {

constexpr std::size_t kMostLooks = std::size_t{1} << 26;  // for cells that array formulas fill

using References = std::shared_ptr<const FormulaReferences>;

References OpenReferences() {
  static const References kOpen =
      std::make_shared<const FormulaReferences>(FormulaReferences{{}, {}, {}, true});
  return kOpen;
}

void MoveBound(std::int32_t& bound, std::int32_t by, bool moves) {
  if (moves) bound += by;
}

// References as they are so many cells further. One that would leave the sheet comes back at its other side,
// so it counts as all of it.
References Moved(const References& references, std::int32_t rows, std::int32_t columns) {
  auto moved = std::make_shared<FormulaReferences>(*references);
  for (CellsReference& cells : moved->cells) {
    Area area = cells.area;
    MoveBound(area.first_row, rows, cells.moves_first_row);
    MoveBound(area.last_row, rows, cells.moves_last_row);
    MoveBound(area.first_column, columns, cells.moves_first_column);
    MoveBound(area.last_column, columns, cells.moves_last_column);
    if (area.first_row > area.last_row) std::swap(area.first_row, area.last_row);
    if (area.first_column > area.last_column) std::swap(area.first_column, area.last_column);
    cells.area = area.IsOnSheet() ? area : Area::Sheet();
  }
  return moved;
}

class FormulasOfSheet {
 public:
  explicit FormulasOfSheet(const std::function<void(SheetFormula&&)>& visit) : visit_(visit) {}

  void Read(pugi::xml_node rows) {
    CellPlace place{0, 0};
    ForEachChild(rows, "row", [&](pugi::xml_node row) {
      place = {Number<std::int32_t>(row, "r").value_or(place.row + 1), 0};
      PassArraysBefore(place.row);
      ForEachChild(row, "c", [&](pugi::xml_node cell) {
        place.column = ParseCellName(Attribute(cell, "r")).value_or(CellPlace{0, place.column + 1}).column;
        const pugi::xml_node formula = Child(cell, "f");
        if (formula) {
          ReadFormulaAt(place, formula, HasAttribute(cell, "cm"));
        } else if (!arrays_.empty()) {
          AddToArray(place);
        }
      });
    });
    PassArraysBefore(kRows + 1);
  }

 private:
  struct Master {
    CellPlace place;
    References references;
  };
  struct Array {
    Area area;
    SheetFormula formula;
  };

  void ReadFormulaAt(const CellPlace& place, pugi::xml_node node, bool may_grow) {
    const std::string_view type = Attribute(node, "t");
    SheetFormula formula{place, type == "shared" ? SharedAt(place, node) : Own(node), {}, may_grow};
    if (type != "array" && type != "dataTable") return visit_(std::move(formula));
    if (type == "dataTable") formula.references = OpenReferences();
    const auto area = ParseAddress(Attribute(node, "ref"));
    if (!area) formula.may_fill_more = true;
    arrays_.push_back({area.value_or(Area::Cell(place.row, place.column)), std::move(formula)});
  }

  References Own(pugi::xml_node node) {
    return std::make_shared<const FormulaReferences>(ReadFormula(Text(node, buffer_)));
  }

  // Of shared formulas the first cell has the text.
  References SharedAt(const CellPlace& place, pugi::xml_node node) {
    const std::string group(Attribute(node, "si"));
    if (!Text(node, buffer_).empty()) {
      References references = Own(node);
      masters_[group] = {place, references};
      return references;
    }
    const auto master = masters_.find(group);
    if (master == masters_.end()) return OpenReferences();
    const auto& [first, references] = master->second;
    looks_ += references->cells.size() + references->names.size() + references->functions.size() + 1;
    if (looks_ > kMostLooks) return OpenReferences();
    return Moved(references, place.row - first.row, place.column - first.column);
  }

  void AddToArray(const CellPlace& place) {
    if (looks_ > kMostLooks) return;
    for (Array& array : arrays_) {
      ++looks_;
      if (array.area.Holds(place.row, place.column)) return array.formula.others.push_back(place);
    }
  }

  void PassArraysBefore(std::int32_t row) {
    const auto is_open = [&](const Array& array) { return array.area.last_row >= row; };
    const auto passed = std::stable_partition(arrays_.begin(), arrays_.end(), is_open);
    for (auto array = passed; array != arrays_.end(); ++array) {
      SheetFormula& formula = array->formula;
      const auto filled = static_cast<std::int64_t>(formula.others.size()) + 1;
      if (array->area.Cells() != filled) formula.may_fill_more = true;
      visit_(std::move(formula));
    }
    arrays_.erase(passed, arrays_.end());
  }

  const std::function<void(SheetFormula&&)>& visit_;
  std::unordered_map<std::string, Master> masters_;  // by group
  std::vector<Array> arrays_;                        // that may fill cells to come
  std::size_t looks_ = 0;
  std::string buffer_;
};

}  // namespace

void ForEachFormula(Package& package, const std::string& part,
                    const std::function<void(SheetFormula&&)>& visit) {
  const XmlPart xml(package, part, "worksheet");
  FormulasOfSheet(visit).Read(Child(xml.root(), "sheetData"));
}

}  // namespace mirelo::workbook
