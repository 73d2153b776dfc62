#include "adapters/workbook/xlsx/stale_results.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/area_watch.h"
#include "adapters/workbook/xlsx/formula_references.h"
#include "adapters/workbook/xlsx/package.h"
#include "adapters/workbook/xlsx/relationships.h"
#include "adapters/workbook/xlsx/sheet_formulas.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "host/excel/constants.h"
#include "spreadsheet/address.h"

namespace mirelo::workbook {

namespace {

constexpr std::size_t kMostWatched = 4'000'000;  // pieces of areas; a formula beyond them counts as stale

class StaleFinder {
 public:
  StaleFinder(const Book& book, const Origin& origin, const Origin::Kept& kept)
      : book_(book), package_(origin.file(), origin.limits()) {
    for (const LoadedBook::Entry& entry : origin.entries()) {
      if (entry.sheet == nullptr || !kept.contains(entry.sheet.get())) continue;
      numbers_.emplace(entry.sheet.get(), sheets_.size());
      sheets_.push_back({entry.sheet.get(), entry.part, book.IndexOf(*entry.sheet), {}});
    }
  }

  StaleResults Find() {
    ReadNames();
    for (const KeptSheet& sheet : sheets_) ReadTables(sheet);
    for (const auto& [id, references] : definitions_) WatchOfName(id, references);
    for (std::size_t number = 0; number < sheets_.size(); ++number) ReadFormulas(number);
    Spread();
    return Stale();
  }

 private:
  using Id = AreaWatch::Who;

  struct KeptSheet {
    const Sheet* sheet;
    std::string part;
    std::size_t place;  // in the book
    AreaWatch watch;
  };

  // A formula in a cell, or what a name stands for.
  struct Node {
    std::int32_t sheet;  // kName of a name
    CellPlace place;
    std::int32_t spread;  // among spreads_, kNoSpread of most
    bool is_stale = false;
  };
  static constexpr std::int32_t kName = -1;
  static constexpr std::int32_t kNoSpread = -1;

  // The further cells that one formula fills.
  struct SpreadOut {
    std::vector<CellPlace> cells;
    bool may_be_more;
  };

  struct NameHash {
    std::size_t operator()(const std::string& text) const { return HashText(text); }
  };
  struct SameName {
    bool operator()(const std::string& a, const std::string& b) const { return EqualText(a, b); }
  };

  Id Add(Node node) {
    nodes_.push_back(node);
    return static_cast<Id>(nodes_.size() - 1);
  }

  void MarkStale(Id id) {
    if (std::exchange(nodes_[id].is_stale, true)) return;
    open_.push_back(id);
  }

  // Names of one spelling may belong to several sheets; each counts as all of them.
  Id NameCalled(std::string_view name) {
    const auto [entry, is_new] = names_.try_emplace(std::string(name), 0);
    if (is_new) {
      entry->second = Add({kName, {}, kNoSpread});
      watched_names_.emplace(entry->second, std::vector<Id>());
    }
    return entry->second;
  }

  void ReadNames() {
    const XmlPart xml(package_, Relationships(package_, "").FindType("officeDocument")->target, "workbook");
    ForEachChild(Child(xml.root(), "definedNames"), "definedName", [&](pugi::xml_node node) {
      const Id id = NameCalled(Attribute(node, "name"));
      FormulaReferences references = ReadFormula(Text(node));
      // One of macros, of which the text tells little.
      if (Flag(node, "function", false) || Flag(node, "vbProcedure", false) || Flag(node, "xlm", false))
        references.is_open = true;
      definitions_.emplace_back(id, std::move(references));
    });
  }

  // A table that cannot be read has no name that is known, so that formulas with it are stale.
  void ReadTables(const KeptSheet& sheet) {
    try {
      const Relationships relationships(package_, sheet.part);
      for (const Relationship& relationship : relationships.all()) {
        if (relationship.type != "table" || relationship.external) continue;
        const XmlPart xml(package_, relationship.target, "table");
        CellsReference cells;
        cells.first_sheet = sheet.sheet->name;
        cells.area = ParseAddress(Attribute(xml.root(), "ref")).value_or(Area::Sheet());
        for (const char* name : {"name", "displayName"}) {
          const std::string_view value = Attribute(xml.root(), name);
          if (!value.empty()) definitions_.push_back({NameCalled(value), {{cells}, {}, {}, false}});
        }
      }
    } catch (const RuntimeError& error) {
      if (error.Number() != host::excel::kApplicationError) throw;
    }
  }

  // Without a sheet of its own a name means that of whoever uses it, and addresses that move move with him.
  void WatchOfName(Id id, FormulaReferences references) {
    for (CellsReference& cells : references.cells) {
      if (cells.first_sheet.empty()) references.is_open = true;
      if (cells.Moves()) cells.area = Area::Sheet();
    }
    Watch(id, references, 0);
  }

  void ReadFormulas(std::size_t number) {
    const auto sheet = static_cast<std::int32_t>(number);
    ForEachFormula(package_, sheets_[number].part, [&](SheetFormula&& formula) {
      const Id id = Add({sheet, formula.place, kNoSpread});
      if (!formula.others.empty() || formula.may_fill_more) {
        nodes_[id].spread = static_cast<std::int32_t>(spreads_.size());
        spreads_.push_back({std::move(formula.others), formula.may_fill_more});
      }
      Watch(id, *formula.references, number);
    });
  }

  void Watch(Id id, const FormulaReferences& references, std::size_t own_sheet) {
    bool is_stale = references.is_open;
    for (const CellsReference& cells : references.cells) {
      if (!is_stale) is_stale = !WatchCells(id, cells, own_sheet);
    }
    for (const std::string& name : references.names) {
      if (!is_stale) is_stale = !WatchName(id, name);
    }
    for (const std::string& name : references.functions) {
      if (!is_stale) WatchName(id, name);
    }
    if (is_stale) MarkStale(id);
  }

  // Whether all of the cells are on kept sheets.
  bool WatchCells(Id id, const CellsReference& cells, std::size_t own_sheet) {
    std::size_t first = own_sheet;
    if (!cells.first_sheet.empty()) {
      const auto found = KeptCalled(cells.first_sheet);
      if (!found) return false;
      first = *found;
    }
    if (cells.last_sheet.empty()) return WatchArea(id, cells.area, first);
    const auto last = KeptCalled(cells.last_sheet);
    if (!last) return false;
    const auto [from, to] = std::minmax({sheets_[first].place, sheets_[*last].place});
    for (std::size_t place = from; place <= to; ++place) {
      const auto number = numbers_.find(book_.sheets[place].get());
      if (number == numbers_.end() || !WatchArea(id, cells.area, number->second)) return false;
    }
    return true;
  }

  std::optional<std::size_t> KeptCalled(std::string_view name) const {
    const auto sheet = book_.FindSheet(name);
    const auto number = numbers_.find(sheet.get());
    if (number == numbers_.end()) return std::nullopt;
    return number->second;
  }

  bool WatchArea(Id id, const Area& area, std::size_t number) {
    AreaWatch& watch = sheets_[number].watch;
    const std::size_t before = watch.Size();
    if (watched_ >= kMostWatched) return false;
    watch.Add(area, id);
    watched_ += watch.Size() - before;
    return true;
  }

  bool WatchName(Id id, const std::string& name) {
    const auto found = names_.find(name);
    if (found == names_.end()) return false;
    watched_names_[found->second].push_back(id);
    return true;
  }

  void Spread() {
    while (!open_.empty()) {
      const Id id = open_.back();
      open_.pop_back();
      const Node& node = nodes_[id];
      if (node.sheet == kName) {
        MarkAll(std::exchange(watched_names_[id], {}));
        continue;
      }
      AreaWatch& watch = sheets_[static_cast<std::size_t>(node.sheet)].watch;
      MarkAll(watch.Take(node.place));
      if (node.spread == kNoSpread) continue;
      const SpreadOut& spread = spreads_[static_cast<std::size_t>(node.spread)];
      for (const CellPlace& cell : spread.cells) MarkAll(watch.Take(cell));
      if (spread.may_be_more) MarkAll(watch.TakeAll());
    }
  }

  void MarkAll(const std::vector<Id>& ids) {
    for (const Id id : ids) MarkStale(id);
  }

  StaleResults Stale() const {
    StaleResults stale;
    for (const Node& node : nodes_) {
      if (!node.is_stale || node.sheet == kName) continue;
      std::vector<CellPlace>& places = stale[sheets_[static_cast<std::size_t>(node.sheet)].sheet];
      places.push_back(node.place);
      if (node.spread == kNoSpread) continue;
      const auto& others = spreads_[static_cast<std::size_t>(node.spread)].cells;
      places.insert(places.end(), others.begin(), others.end());
    }
    for (auto& [sheet, places] : stale) {
      std::sort(places.begin(), places.end());
      places.erase(std::unique(places.begin(), places.end()), places.end());
    }
    return stale;
  }

  const Book& book_;
  Package package_;
  std::vector<KeptSheet> sheets_;
  std::unordered_map<const Sheet*, std::size_t> numbers_;  // in sheets_
  std::vector<Node> nodes_;
  std::vector<SpreadOut> spreads_;
  std::vector<std::pair<Id, FormulaReferences>> definitions_;  // of names
  std::unordered_map<std::string, Id, NameHash, SameName> names_;
  std::unordered_map<Id, std::vector<Id>> watched_names_;
  std::size_t watched_ = 0;
  std::vector<Id> open_;  // stale, and those who look at them not yet
};

}  // namespace

StaleResults FindStaleResults(const Book& book, const Origin& origin, const Origin::Kept& kept) {
  const bool are_all_kept = std::all_of(book.sheets.begin(), book.sheets.end(),
                                        [&](const auto& sheet) { return kept.contains(sheet.get()); });
  return are_all_kept ? StaleResults() : StaleFinder(book, origin, kept).Find();
}

}  // namespace mirelo::workbook
