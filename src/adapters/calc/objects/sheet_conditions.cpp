#include "adapters/calc/objects/sheet_conditions.h"

#include <algorithm>
#include <array>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/ConditionEntryType.hpp>
#include <com/sun/star/sheet/ConditionFormatOperator.hpp>
#include <com/sun/star/sheet/ConditionOperator.hpp>
#include <com/sun/star/sheet/XConditionEntry.hpp>
#include <com/sun/star/sheet/XConditionalFormats.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSheetConditionalEntries.hpp>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/properties.h"
#include "spreadsheet/errors.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;

namespace {

// An operator by each of its names. What was laid is read by the second of them, and laid by the third.
struct OperatorNames {
  XlFormatConditionOperator op;
  sal_Int32 read;
  css::sheet::ConditionOperator laid;
};
namespace names = css::sheet::ConditionFormatOperator;
constexpr std::array kOperators{
    OperatorNames{xlBetween, names::BETWEEN, css::sheet::ConditionOperator_BETWEEN},
    OperatorNames{xlNotBetween, names::NOT_BETWEEN, css::sheet::ConditionOperator_NOT_BETWEEN},
    OperatorNames{xlEqual, names::EQUAL, css::sheet::ConditionOperator_EQUAL},
    OperatorNames{xlNotEqual, names::NOT_EQUAL, css::sheet::ConditionOperator_NOT_EQUAL},
    OperatorNames{xlGreater, names::GREATER, css::sheet::ConditionOperator_GREATER},
    OperatorNames{xlLess, names::LESS, css::sheet::ConditionOperator_LESS},
    OperatorNames{xlGreaterEqual, names::GREATER_EQUAL, css::sheet::ConditionOperator_GREATER_EQUAL},
    OperatorNames{xlLessEqual, names::LESS_EQUAL, css::sheet::ConditionOperator_LESS_EQUAL},
};

css::sheet::ConditionOperator ToLay(sal_Int32 read) {
  const auto* known = std::ranges::find(kOperators, read, &OperatorNames::read);
  return known == kOperators.end() ? css::sheet::ConditionOperator_FORMULA : known->laid;
}

bool AreAlike(const SheetCondition& a, const SheetCondition& b) {
  return a.op == b.op && a.formula == b.formula && a.formula2 == b.formula2 && a.style == b.style;
}

css::beans::PropertyValue Named(std::string_view name, const Any& value) {
  css::beans::PropertyValue named;
  named.Name = OfficeText(name);
  named.Value = value;
  return named;
}

// Joins the conditions of one more format to those that were found. One that both have, on cells of their
// own each, is one condition.
void Join(std::vector<SheetCondition>& all, const std::vector<SheetCondition>& more) {
  std::vector<bool> is_taken(all.size(), false);
  for (const SheetCondition& condition : more) {
    std::size_t i = 0;
    while (i < is_taken.size() && (is_taken[i] || !AreAlike(all[i], condition))) ++i;
    if (i < is_taken.size()) {
      is_taken[i] = true;
      all[i].places.insert(all[i].places.end(), condition.places.begin(), condition.places.end());
    } else {
      all.push_back(condition);
    }
  }
}

AreaSet SharedAreas(const AreaSet& areas, const AreaSet& others) {
  AreaSet shared;
  for (const Area& area : areas) {
    for (const Area& other : others) {
      if (const auto both = Shared(area, other)) shared.push_back(*both);
    }
  }
  return shared;
}

std::vector<SheetCondition> ConditionsIn(const Reference<css::sheet::XConditionalFormat>& format) {
  std::vector<SheetCondition> conditions;
  const auto entries = As<css::container::XIndexAccess>(format);
  for (sal_Int32 i = 0; i < entries->getCount(); ++i) {
    const auto entry = As<css::sheet::XConditionEntry>(entries->getByIndex(i));
    if (entry->getType() != css::sheet::ConditionEntryType::CONDITION) continue;
    const Properties of_entry(entry);
    const auto text = [&](std::string_view name) { return TextOf(of_entry.Get(name, rtl::OUString())); };
    conditions.push_back({of_entry.Get("Operator", sal_Int32{0}),
                          text("Formula1"),
                          text("Formula2"),
                          text("StyleName"),
                          {{format, i}}});
  }
  return conditions;
}

}  // namespace

bool SheetCondition::ComparesValues() const {
  return std::ranges::find(kOperators, op, &OperatorNames::read) != kOperators.end();
}

XlFormatConditionOperator SheetCondition::Operator() const {
  const auto* known = std::ranges::find(kOperators, op, &OperatorNames::read);
  if (known == kOperators.end()) throw Refused("This condition does not compare a cell's value.");
  return known->op;
}

std::vector<SheetCondition> SheetConditions::Touching(const Area& area) const {
  std::vector<SheetCondition> touching;
  for (const Format& format : Read()) {
    if (!SharedAreas(format.areas, {area}).empty()) Join(touching, format.conditions);
  }
  return touching;
}

void SheetConditions::Add(const Area& area, XlFormatConditionOperator op, const std::string& formula,
                          const std::string& style) const {
  const SheetCondition added{
      std::ranges::find(kOperators, op, &OperatorNames::op)->read, formula, "", style, {}};
  AreaSet left{area};
  for (Format& format : Read()) {
    const AreaSet parts = SharedAreas(format.areas, left);
    if (parts.empty()) continue;
    format.conditions.push_back(added);
    Lay(parts, format.conditions);
    for (const Area& part : parts) left = Without(left, part);
  }
  if (!left.empty()) Lay(left, {added});
}

void SheetConditions::Clear(const Area& area) const {
  const std::vector<Format> formats = Read();
  if (std::ranges::any_of(formats,
                          [&](const Format& format) { return !SharedAreas(format.areas, {area}).empty(); }))
    Lay({area}, {});
}

void SheetConditions::CutBeside(const Area& area) const {
  const Area band{1, area.first_column, kRows, area.last_column};
  for (const Format& format : Read()) {
    const AreaSet within = SharedAreas(format.areas, {band});
    AreaSet cut = Without(format.areas, band);
    if (within.empty() || cut.empty() || format.has_others) continue;
    cut.insert(cut.end(), within.begin(), within.end());
    Lay(cut, format.conditions);
  }
}

void SheetConditions::SetStyle(const SheetCondition& condition, const std::string& style) {
  for (const auto& [format, entry] : condition.places)
    Properties(As<css::container::XIndexAccess>(format)->getByIndex(entry))
        .Set("StyleName", OfficeText(style));
}

std::vector<SheetConditions::Format> SheetConditions::Read() const {
  const auto all = IfAs<css::sheet::XConditionalFormats>(Properties(sheet_->Get()).Get("ConditionalFormats"));
  std::vector<Format> formats;
  if (!all.is()) return formats;
  for (const auto& format : all->getConditionalFormats()) {
    const auto ranges = IfAs<css::sheet::XSheetCellRanges>(Properties(format).Get("Range"));
    if (!ranges.is()) continue;
    Format read{{}, ConditionsIn(format), false};
    read.has_others =
        std::cmp_not_equal(As<css::container::XIndexAccess>(format)->getCount(), read.conditions.size());
    for (const auto& range : ranges->getRangeAddresses())
      read.areas.push_back(
          {range.StartRow + 1, range.StartColumn + 1, range.EndRow + 1, range.EndColumn + 1});
    formats.push_back(std::move(read));
  }
  return formats;
}

// In place of all that the cells had.
void SheetConditions::Lay(const AreaSet& areas, const std::vector<SheetCondition>& conditions) const {
  const auto ranges =
      As<css::sheet::XSheetCellRangeContainer>(As<css::lang::XMultiServiceFactory>(sheet_->document().uno())
                                                   ->createInstance("com.sun.star.sheet.SheetCellRanges"));
  const auto tab = static_cast<sal_Int16>(sheet_->Index() - 1);
  for (const Area& area : areas)
    ranges->addRangeAddress(
        {tab, area.first_column - 1, area.first_row - 1, area.last_column - 1, area.last_row - 1}, false);
  const Properties cells(ranges);
  const auto entries = As<css::sheet::XSheetConditionalEntries>(cells.Get("ConditionalFormat"));
  entries->clear();
  for (const SheetCondition& condition : conditions) {
    const std::array values{Named("Operator", Any(ToLay(condition.op))),
                            Named("Formula1", Any(OfficeText(condition.formula))),
                            Named("Formula2", Any(OfficeText(condition.formula2))),
                            Named("StyleName", Any(OfficeText(condition.style)))};
    entries->addNew(css::uno::Sequence<css::beans::PropertyValue>(values.data(), values.size()));
  }
  sheet_->document().StayAside();
  cells.Set("ConditionalFormat", entries);
}

}  // namespace mirelo::calc
