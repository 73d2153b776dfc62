#include "adapters/workbook/xlsx/condition_reader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/style_names.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/address.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

constexpr std::size_t kLongestFormula = 8192;  // UTF-16 units

bool IsQuotedText(std::string_view formula) {
  if (formula.size() < 2 || formula.front() != '"' || formula.back() != '"') return false;
  const std::string_view inner = formula.substr(1, formula.size() - 2);
  for (std::size_t i = 0; i < inner.size(); ++i) {
    if (inner[i] == '"' && (i + 1 == inner.size() || inner[++i] != '"')) return false;
  }
  return true;
}

// Whether a formula is a value, which stays the same wherever cells move.
bool IsConstant(std::string_view formula) {
  const auto number = ParseWhole<double>(formula);
  return (number && std::isfinite(*number)) || IsQuotedText(formula) || formula == "TRUE" ||
         formula == "FALSE";
}

class ConditionReader {
 public:
  ConditionReader(SheetContext& context, const std::string& part, Sheet& sheet)
      : context_(context), part_(part), sheet_(sheet) {}

  void Read(pugi::xml_node worksheet) {
    ForEachChild(worksheet, "conditionalFormatting", [&](pugi::xml_node node) {
      const AreaSet areas = AreasOf(Attribute(node, "sqref"));
      ForEachChild(node, "cfRule", [&](pugi::xml_node rule) { ReadRule(rule, areas); });
    });
    std::stable_sort(found_.begin(), found_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (auto& [priority, condition] : found_) sheet_.conditions.Add(std::move(condition));
    if (others_ > 0) {
      context_.losses.Add(sheet_.name, "not kept: conditional formats other than comparisons with a value (" +
                                           std::string("rules: ") + std::to_string(others_) + ").");
    }
  }

 private:
  AreaSet AreasOf(std::string_view list) const {
    AreaSet areas;
    while (!list.empty()) {
      const std::size_t end = std::min(list.find(' '), list.size());
      const std::string_view text = list.substr(0, end);
      list.remove_prefix(std::min(end + 1, list.size()));
      if (text.empty()) continue;
      const auto area = ParseAddress(text);
      if (!area) throw Damaged(part_, "\"" + std::string(text.substr(0, 40)) + "\" is no area of cells");
      areas.push_back(*area);
    }
    return areas;
  }

  void ReadRule(pugi::xml_node rule, const AreaSet& areas) {
    context_.budget.TakeFormatRuns(areas.size() + 1, part_);
    if (found_.size() >= context_.package.limits().styles)
      throw Damaged(part_, "too many conditional formats");
    auto condition = ConditionOf(rule);
    if (!condition) {
      ++others_;
      return;
    }
    condition->areas = areas;
    const auto priority =
        Number<std::int32_t>(rule, "priority").value_or(std::numeric_limits<std::int32_t>::max());
    if (!areas.empty()) found_.emplace_back(priority, std::move(*condition));
  }

  // Nothing for a rule of another kind.
  std::optional<Condition> ConditionOf(pugi::xml_node rule) const {
    if (Attribute(rule, "type") != "cellIs") return std::nullopt;
    const auto op = NumberOf(kOperatorNames, Attribute(rule, "operator"));
    if (!op) return std::nullopt;
    std::vector<std::string> formulas;
    ForEachChild(rule, "formula", [&](pugi::xml_node node) { formulas.push_back(CleanText(Text(node))); });
    const bool has_two = *op == host::excel::xlBetween || *op == host::excel::xlNotBetween;
    const bool are_known = formulas.size() == (has_two ? 2u : 1u) &&
                           std::all_of(formulas.begin(), formulas.end(), [](const std::string& formula) {
                             return Utf16Length(formula) <= kLongestFormula && IsConstant(formula);
                           });
    if (!are_known) return std::nullopt;

    Condition condition;
    condition.op = *op;
    condition.formula1 = std::move(formulas.front());
    if (has_two) condition.formula2 = std::move(formulas.back());
    condition.format = FormatOf(rule);
    condition.stop_if_true = Flag(rule, "stopIfTrue", false);
    return condition;
  }

  DifferentialFormat FormatOf(pugi::xml_node rule) const {
    if (!HasAttribute(rule, "dxfId")) return {};
    const auto index = Number<std::size_t>(rule, "dxfId");
    if (!index || *index >= context_.differential_formats.size()) {
      throw Damaged(part_, "format \"" + std::string(Attribute(rule, "dxfId")) +
                               "\" of a conditional format does not exist");
    }
    return context_.differential_formats[*index];
  }

  SheetContext& context_;
  const std::string& part_;
  Sheet& sheet_;
  std::vector<std::pair<std::int32_t, Condition>> found_;  // with their priorities
  std::size_t others_ = 0;
};

}  // namespace

void ReadConditions(SheetContext& context, const std::string& part, pugi::xml_node worksheet, Sheet& sheet) {
  ConditionReader(context, part, sheet).Read(worksheet);
}

}  // namespace mirelo::workbook
