#include "adapters/workbook/xlsx/series_cells.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "adapters/workbook/rules.h"
#include "automation/text.h"
#include "spreadsheet/address.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kGoneReference = "#REF!";

struct CellsOfSheet {
  std::string sheet;
  Area cells;
};

// "Sheet1!$A$1:$A$9", or with the name in apostrophes. Nothing for all else.
std::optional<CellsOfSheet> ParseReference(std::string_view formula) {
  const std::size_t mark = formula.rfind('!');
  if (mark == std::string_view::npos) return std::nullopt;
  const auto cells = ParseAddress(formula.substr(mark + 1));
  if (!cells || (cells->Rows() != 1 && cells->Columns() != 1)) return std::nullopt;
  std::string_view quoted = formula.substr(0, mark);
  if (quoted.size() < 2 || quoted.front() != '\'' || quoted.back() != '\'')
    return CellsOfSheet{std::string(quoted), *cells};
  quoted = quoted.substr(1, quoted.size() - 2);
  CellsOfSheet reference{"", *cells};
  for (std::size_t i = 0; i < quoted.size(); ++i) {
    if (quoted[i] == '\'' && i + 1 < quoted.size()) ++i;  // two stand for one
    reference.sheet += quoted[i];
  }
  return reference;
}

// The sheets by the names that the file gives them, each looked for once.
class SheetFinder {
 public:
  SheetFinder(const Book& book, const std::vector<std::string>& names) : book_(book), names_(names) {}

  std::shared_ptr<Sheet> Find(const std::string& name) {
    const auto [known, is_new] = found_.try_emplace(name);
    if (is_new) {
      const auto found = std::find_if(names_.begin(), names_.end(),
                                      [&](const std::string& other) { return EqualText(other, name); });
      if (found != names_.end())
        known->second = book_.sheets[static_cast<std::size_t>(found - names_.begin())];
    }
    return known->second;
  }

 private:
  const Book& book_;
  const std::vector<std::string>& names_;
  std::unordered_map<std::string, std::shared_ptr<Sheet>> found_;
};

}  // namespace

void BindSeries(const std::vector<UnboundSeries>& series, const Book& book,
                const std::vector<std::string>& names, Losses& losses) {
  SheetFinder sheets(book, names);
  for (const UnboundSeries& unbound : series) {
    if (unbound.formula.empty() || unbound.formula.find(kGoneReference) != std::string::npos) continue;
    const auto reference = ParseReference(unbound.formula);
    const std::shared_ptr<Sheet> sheet = reference ? sheets.Find(reference->sheet) : nullptr;
    if (sheet == nullptr) {
      losses.Add(unbound.sheet, "not kept of the chart \"" + unbound.title + "\": the cells of a series (" +
                                    unbound.formula + ").");
      continue;
    }
    ChartSeries& bound = unbound.chart->series[unbound.index];
    bound.values = reference->cells;
    bound.sheet = sheet;
  }
}

}  // namespace mirelo::workbook
